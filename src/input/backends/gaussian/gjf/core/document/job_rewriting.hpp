// The steps that write the changed parts of one job into its text. Private to the room.
//
// Each step compares one part of the job as it stood in the text with the job as it should be, and notes the lines to
// change.
#pragma once

#include <gjf/core/document/line_edits.hpp>
#include <gjf/core/editor/edit_record.hpp>
#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Where the atoms of a job went, counted from 0.
struct AtomPlaces {
    static constexpr std::size_t gone = static_cast<std::size_t>(-1);

    std::vector<std::size_t> places;  ///< for each atom that was read: its place now, or `gone`
    std::size_t count = 0;            ///< of atoms now
    bool renumbered = false;          ///< whether an atom is gone or stands in another place
    bool added = false;

    std::size_t old_count() const noexcept { return places.size(); }
};

/// One job as it stood in the text: whole, or as far as a record says that it was touched.
struct JobBefore {
    const GJFData& job;  ///< with a record: what it kept, and no atoms
    const JobLayout& layout;
    const EditRecord* record;

    bool may_differ(JobPart part) const noexcept { return record == nullptr || record->touched(part); }
    std::size_t atom_count() const noexcept { return layout.atoms.size(); }
    /// Returns an atom; null for one that the record does not say to be touched.
    const AtomCoord* atom(std::size_t index) const noexcept {
        return record == nullptr ? &job.geom.atoms[index] : record->atom_before(index);
    }
};

/// One job that is written anew: what it was, what should be there, and the lines to change.
struct JobRewriting {
    const TextLines& lines;
    const JobBefore before;
    const GJFData& after;
    const std::vector<ExtraInputSection>& sections;  ///< those that should be there, in place of those of `after`
    const std::vector<std::size_t>& origins;         ///< of the atoms of `after`
    const std::vector<GivenOption>& given_options;   ///< as `GJFEditor::given_options`
    AtomPlaces places;
    bool force = false;
    LineEdits& edits;
};

void rewrite_link0(JobRewriting& job);
void rewrite_route(JobRewriting& job);
void rewrite_overlays(JobRewriting& job);
void rewrite_title(JobRewriting& job);
void rewrite_charge_line(JobRewriting& job);
void rewrite_molecule(JobRewriting& job);
void rewrite_sections(JobRewriting& job);
/// Writes the rows of a connectivity section whose bonds or atoms changed.
void rewrite_connectivity(JobRewriting& job, const LineRange& lines, const ConnectivitySection& bonds);

/// Replaces a range of lines by a text, keeping the lines that are the same at its beginning and end.
void replace_lines(JobRewriting& job, const LineRange& range, const std::string& text);

/// Renumbers the atoms that a section of some kind names. Throws when it names them in a form that cannot be read, or that
/// the change of the molecule makes meaningless; with `force` the text stays as it is then.
std::string renumber_section(ExtraInputSectionKind kind, const std::string& text, const AtomPlaces& places, bool force);

/// Tells what differs between a job that was read and the one that should be there; empty when nothing does. The sections
/// that should be there are given apart; without them they are not compared.
std::string difference_between(const GJFData& read, const GJFData& wanted, const std::vector<ExtraInputSection>* sections);

}  // namespace quor::input::gaussian
