// One parsed job, and a file of several.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/control_section.hpp>
#include <gjf/core/job/extra_input_section.hpp>
#include <gjf/core/job/geometry.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// One job: a plain value that owns all it holds. Queries are read-only and never throw for something that is not there.
struct QUOR_GJF_API GJFData {
    GJFData();
    GJFData(const GJFData& other);
    GJFData(GJFData&& other) noexcept;
    GJFData& operator=(const GJFData& other);
    GJFData& operator=(GJFData&& other) noexcept;
    ~GJFData();

    ControlSection control;
    std::optional<std::string> extra_overlays;  ///< non-standard overlay input, when the route asks for it
    std::string title;                          ///< title lines joined with line feeds; empty with geom=allcheck
    GeomSection geom;
    std::vector<ExtraInputSection> extra_inputs;  ///< the sections after the molecule specification, in file order

    /// Returns the index of the first section of a kind, or -1.
    std::int32_t find_extra_input_index(ExtraInputSectionKind kind) const;
    /// Returns the indices of all sections of a kind, in order.
    std::vector<std::int32_t> find_extra_input_indices(ExtraInputSectionKind kind) const;
    /// Returns the bond list of the first connectivity section, or null when there is none or it holds text.
    const ConnectivitySection* connectivity() const noexcept;
    /// Returns the text of a section; throws `std::out_of_range` for an index at or past the end.
    std::string extra_input_text(std::size_t index) const;
};

/// The jobs of one file, in file order.
struct QUOR_GJF_API GJFMultiData {
    GJFMultiData();
    GJFMultiData(const GJFMultiData& other);
    GJFMultiData(GJFMultiData&& other) noexcept;
    GJFMultiData& operator=(const GJFMultiData& other);
    GJFMultiData& operator=(GJFMultiData&& other) noexcept;
    ~GJFMultiData();

    std::vector<GJFData> jobs;
};

}  // namespace quor::input::gaussian
