// What the writer leaves out: comments, what the job model does not hold of a line, and what the fixed columns cannot hold.
#include "faithful.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

using Lines = std::vector<std::string_view>;

std::string at_line(std::size_t line, const std::string& what) { return "line " + std::to_string(line) + ": " + what; }

// Finds the "!" that begins a comment: the first outside quotes. A quote that nothing closes quotes nothing.
std::size_t comment_begin(std::string_view line) noexcept {
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '!') {
            return i;
        }
        const bool quote = line[i] == '"' || line[i] == '\'';
        const std::size_t close = quote ? line.find(line[i], i + 1) : std::string_view::npos;
        i = close == std::string_view::npos ? i : close;
    }
    return std::string_view::npos;
}

// Tells for each line of a job whether it is kept as text, comments and all.
std::vector<bool> kept_lines(const JobLayout& layout) {
    std::vector<bool> kept(layout.lines.last - layout.lines.first + 1, false);
    const auto keep = [&](const LineRange& range) {
        for (std::size_t line = range.first; !range.empty() && line <= range.last; ++line) {
            kept[line - layout.lines.first] = true;
        }
    };
    keep(layout.overlays);
    keep(layout.title);
    for (const SectionLayout& section : layout.sections) {
        if (section.kind != ExtraInputSectionKind::Connectivity) {
            keep(section.lines);
        }
    }
    return kept;
}

std::string lost_comment(const JobLayout& layout, const Lines& lines) {
    const std::vector<bool> kept = kept_lines(layout);
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const std::size_t number = layout.lines.first + i;
        if (!kept[i] && number <= lines.size() && comment_begin(lines[number - 1]) != std::string_view::npos) {
            return at_line(number, "the comment would be lost; --drop-comments writes the job without comments");
        }
    }
    return {};
}

// Of a Link 0 value that stands twice the job keeps the last, of a processor count its leading digits.
std::string lost_link0(const JobReading& reading, const Lines& lines) {
    std::map<std::string, std::size_t> seen;
    for (const std::size_t number : reading.layout.link0_lines) {
        const auto [written, value, is_assigned] = link0_words(lines[number - 1]);
        const Link0Key* known = find_link0_key(written);
        if (known == nullptr || !known->in_model || !known->is_spelt_out(SimpleYAMLParser::to_lower(std::string(written))) ||
            !is_assigned || value.empty()) {
            continue;  // kept as a whole line
        }
        const std::string key(known->layout_name);
        if (const auto [entry, first] = seen.try_emplace(key, number); !first) {
            return at_line(entry->second, "%" + key + " would be lost, since it is set again below");
        }
        const std::optional<std::int32_t>& count = reading.job.control.nproc;
        if (key == "nproc" && (!count || value != std::to_string(*count))) {
            return at_line(number, "the processor count is no plain number");
        }
    }
    return {};
}

bool label_is_whole(std::string_view label, const AtomInfo& info) noexcept {
    const std::size_t open = label.find('(');
    if (open == std::string_view::npos) {
        return info.params.empty();
    }
    const std::size_t close = label.find(')', open);
    const std::string_view list = label.substr(open + 1, close - open - 1);
    const auto items = static_cast<std::size_t>(std::count(list.begin(), list.end(), ',')) + 1;
    return close + 1 == label.size() && items == info.params.size();
}

std::string lost_of_atoms(const JobReading& reading, const Lines& lines) {
    const std::vector<AtomCoord>& atoms = reading.job.geom.atoms;
    for (std::size_t i = 0; i < atoms.size() && i < reading.layout.atoms.size(); ++i) {
        const std::size_t number = reading.layout.atoms[i];
        const AtomLineFields fields = atom_line_fields(lines[number - 1], 0);
        if (!label_is_whole(fields.label.in(lines[number - 1]), atoms[i].info)) {
            return at_line(number, "the fixed layout cannot carry a part of the atom label");
        }
        if (!fields.rest.empty()) {
            return at_line(number, "the fixed layout cannot carry what stands behind the coordinates and the layer");
        }
    }
    return {};
}

std::string lost_of_molecule(const JobReading& reading, const Lines& lines) {
    const GeomSection& geom = reading.job.geom;
    const std::string where = "job " + std::to_string(reading.layout.number) + ": ";
    if (geom.format == GeometryFormat::ZMatrix) {
        return where + "the molecule is a Z-matrix, which the fixed layout cannot carry";
    }
    if (geom.atoms.empty() && !geom.molecule_lines.empty()) {
        return at_line(reading.layout.molecule.first, "the line behind charge and multiplicity would be lost");
    }
    const std::vector<std::size_t> touching = GJFEditor(reading.job).atoms_with_touching_coordinates();
    if (!touching.empty()) {
        return at_line(reading.layout.atoms[touching.front()], "the coordinates of atom " +
                                                                   std::to_string(touching.front() + 1) +
                                                                   " are too long for the fixed layout and would touch");
    }
    return lost_of_atoms(reading, lines);
}

// What a part is called in a message.
constexpr std::array<std::pair<JobPart, const char*>, 7> part_names = {{
    {JobPart::Link0, "Link 0"},
    {JobPart::Overlays, "overlays"},
    {JobPart::Format, "molecule"},
    {JobPart::AtomCount, "molecule"},
    {JobPart::Atom, "molecule"},
    {JobPart::Variables, "molecule"},
    {JobPart::ExtraInput, "extra input"},
}};

}  // namespace

std::vector<std::string_view> lines_of(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string loss_in_writing(const JobReading& reading, const Lines& lines, bool comments_may_go) {
    if (!reading.error.empty()) {
        return at_line(reading.error_line, reading.error);
    }
    std::string loss = lost_of_molecule(reading, lines);
    if (loss.empty()) {
        loss = lost_link0(reading, lines);
    }
    return loss.empty() && !comments_may_go ? lost_comment(reading.layout, lines) : loss;
}

std::string difference(const GJFData& a, const GJFData& b) {
    const std::optional<JobDifference> difference = find_difference(a, b);
    if (!difference) {
        return {};
    }
    const auto name = std::find_if(part_names.begin(), part_names.end(),
                                   [&](const auto& entry) { return entry.first == difference->part; });
    return name == part_names.end() ? job_part_name(difference->part) : name->second;
}

}  // namespace quor_gjf
