// What an editor changed since a record was begun: which parts of its job, and what these held before.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/job/job_comparison.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quor::input::gaussian {

/// Keeps what the parts of a job held before they were first touched, so that a writer need look at no others.
///
/// A touched part may hold the same as before. Atoms are told by their origins (`GJFEditor::atom_origins`); atoms that were
/// added, removed or put in another order touch `JobPart::AtomCount`, and with it `JobPart::ExtraInput`, whose texts may
/// name them. A Z-matrix is touched by no edit.
class QUOR_GJF_API EditRecord {
   public:
    /// Begins a record of a job with so many atoms; `identity` names the text that it starts from.
    EditRecord(std::uint64_t identity, std::size_t atom_count);
    EditRecord(const EditRecord& other);
    EditRecord(EditRecord&& other) noexcept;
    EditRecord& operator=(const EditRecord& other);
    EditRecord& operator=(EditRecord&& other) noexcept;
    ~EditRecord();

    std::uint64_t identity() const noexcept { return identity_; }
    bool empty() const noexcept { return parts_ == 0; }
    bool touched(JobPart part) const noexcept { return (parts_ & bit(part)) != 0; }
    /// Returns the job as it was: the parts that were touched alone, without atoms.
    const GJFData& before() const noexcept { return before_; }
    /// Returns an atom as it was; null for one that was not touched.
    const AtomCoord* atom_before(std::size_t origin) const noexcept;

    /// Keeps a part of a job, unless it was kept before.
    void keep(JobPart part, const GJFData& job);
    /// The same for an atom; one that the job did not have is passed over.
    void keep_atom(std::size_t origin, const AtomCoord& atom);

   private:
    static constexpr std::uint32_t bit(JobPart part) noexcept { return 1U << static_cast<unsigned>(part); }

    std::uint64_t identity_;
    std::size_t atom_count_;
    std::uint32_t parts_ = 0;
    GJFData before_;
    std::vector<std::uint32_t> slots_;  // for each origin its place in `atoms_`, from 1; empty as long as no atom is kept
    std::vector<AtomCoord> atoms_;
};

}  // namespace quor::input::gaussian
