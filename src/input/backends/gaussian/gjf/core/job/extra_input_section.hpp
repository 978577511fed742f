// One input section after the molecule specification: text, or a bond list.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/connectivity_section.hpp>
#include <gjf/core/job/extra_input_kind.hpp>

#include <cstddef>
#include <string>
#include <variant>

namespace quor::input::gaussian {

/// One trailing section of a job. Text is the section's lines joined with line feeds, without the blank line that ends it.
struct QUOR_GJF_API ExtraInputSection {
    /// Makes an empty text of kind `Unknown`.
    ExtraInputSection();
    /// Makes a section as `assign_text` does.
    ExtraInputSection(ExtraInputSectionKind section_kind, const std::string& section_text);
    ExtraInputSection(const ExtraInputSection& other);
    ExtraInputSection(ExtraInputSection&& other) noexcept;
    ExtraInputSection& operator=(const ExtraInputSection& other);
    ExtraInputSection& operator=(ExtraInputSection&& other) noexcept;
    ~ExtraInputSection();

    ExtraInputSectionKind kind = ExtraInputSectionKind::Unknown;
    std::variant<std::string, ConnectivitySection> content;

    static ExtraInputSection from_connectivity(ConnectivitySection connectivity);

    /// Sets kind and text; text of kind `Connectivity` is read into bonds. Throws `GJFParseException` when that fails, which
    /// leaves the section as it was.
    void assign_text(ExtraInputSectionKind section_kind, const std::string& section_text);
    void assign_connectivity(ConnectivitySection connectivity);

    /// Tells whether the kind is `Connectivity`, whichever content is held.
    bool is_connectivity() const noexcept;
    /// Returns the bond list held, or null when the content is text.
    const ConnectivitySection* connectivity() const noexcept;
    ConnectivitySection* mutable_connectivity() noexcept;

    /// Returns the body as text; a bond list up to the highest atom that has a bond.
    std::string text() const;
    /// Returns the body as text; a bond list with `atom_count` lines.
    std::string text(std::size_t atom_count) const;
};

}  // namespace quor::input::gaussian
