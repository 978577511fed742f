// Reads jobs for Python and makes their text.
#include "job_handle.hpp"

#include "same_job.hpp"

#include <core/fs/write_text_file.hpp>
#include <gjf/core/editor/gjf_multi_editor.hpp>
#include <gjf/core/reader/gjf_parser.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

// A number beyond its range is malformed text like any other.
template <class Read>
auto read_guarded(Read read) {
    try {
        return read();
    } catch (const std::out_of_range& error) {
        throw GJFParseException(error.what());
    }
}

bool is_blank(const std::string& text) { return text.find_first_not_of(" \t\r\n") == std::string::npos; }

// Tells whether a text may have separator lines at all. Coordinates have no "k", so that nearly nothing is looked at twice.
bool may_hold_several_jobs(std::string_view text) {
    for (const char letter : {'k', 'K'}) {
        for (std::size_t at = text.find(letter); at != std::string_view::npos; at = text.find(letter, at + 1)) {
            if (text.substr(at + 1, 3) == "1--") {
                return true;
            }
        }
    }
    return false;
}

std::string without_last_line_breaks(std::string text) {
    text.erase(text.find_last_not_of("\r\n") + 1);
    return text;
}

[[noreturn]] void refuse(const char* part) {
    throw WriteError(std::string("Cannot write the job without loss: the fixed layout cannot carry its ") + part);
}

// Counts the fields of a molecule line; the parameters of a label are part of it.
std::size_t field_count(std::string_view line) {
    std::size_t count = 0;
    int depth = 0;
    bool in_field = false;
    for (const char c : line.substr(0, line.find('!'))) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        const bool separates = depth <= 0 && (c == ' ' || c == '\t' || c == ',' || c == '\r');
        count += !separates && !in_field ? 1 : 0;
        in_field = !separates;
    }
    return count;
}

// Link atoms stand behind the layer, where the job model does not look.
bool has_link_atom(const std::string& line) {
    GeomSection geom;
    try {
        geom = GJFParser::parse_geometry_section({"0 1", line});
    } catch (const std::exception&) {
        return false;  // no atom line
    }
    if (geom.atoms.size() != 1 || !geom.atoms.front().layer) {
        return false;
    }
    const std::size_t held = geom.atoms.front().freeze ? 6 : 5;
    return field_count(line) > held;
}

bool has_link_atoms(const GeomSection& geom) {
    const bool layered = std::any_of(geom.atoms.begin(), geom.atoms.end(), [](const AtomCoord& atom) { return atom.layer; });
    return layered && std::any_of(geom.molecule_lines.begin(), geom.molecule_lines.end(), has_link_atom);
}

std::string fixed_layout(const GJFEditor& editor) {
    const GeomSection& geom = editor.get_data().geom;
    if (geom.format == GeometryFormat::ZMatrix) {
        refuse("Z-matrix");
    }
    if (has_link_atoms(geom)) {
        refuse("link atoms");
    }
    if (const std::size_t count = editor.atoms_with_touching_coordinates().size(); count > 0) {
        throw WriteError("Cannot write the job without loss: the coordinates of " + std::to_string(count) +
                         " atoms are too wide for their columns; use_numeric_coordinates() writes them with six decimals");
    }
    std::string text = editor.to_gjf_string();
    try {
        const GJFData again = read_guarded([&] { return GJFParser::parse_string(text); });
        if (const char* part = first_difference(editor.get_data(), again, Coordinates::AsWritten)) {
            refuse(part);
        }
    } catch (const GJFParseException& error) {
        throw WriteError(std::string("Cannot write the job without loss: its text would not read back (") + error.what() +
                         ")");
    }
    return text;
}

}  // namespace

JobHandle read_first_job(std::string text) {
    GJFData data = read_guarded([&] { return GJFParser::parse_string(text); });
    if (!may_hold_several_jobs(text)) {
        return {GJFEditor(std::move(data)), std::move(text), false};
    }
    std::vector<std::string> pieces = GJFParser::split_by_link1(text);
    if (pieces.size() == 1) {
        return {GJFEditor(std::move(data)), std::move(text), false};
    }
    const bool others =
        std::any_of(pieces.begin() + 1, pieces.end(), [](const std::string& piece) { return !is_blank(piece); });
    return {GJFEditor(std::move(data)), std::move(pieces.front()), others};
}

std::vector<JobHandle> read_all_jobs(const std::string& text) {
    GJFMultiData data = read_guarded([&] { return GJFParser::parse_string_multi(text); });
    std::vector<JobHandle> jobs;
    jobs.reserve(data.jobs.size());
    for (GJFData& job : data.jobs) {
        jobs.push_back({GJFEditor(std::move(job)), {}, data.jobs.size() > 1});
    }
    std::vector<std::string> pieces = GJFParser::split_by_link1(text);
    if (pieces.size() == 1) {
        jobs.front().source = text;
        return jobs;
    }
    std::size_t next = 0;
    for (std::string& piece : pieces) {
        if (!is_blank(piece) && next < jobs.size()) {
            jobs[next++].source = std::move(piece);
        }
    }
    return jobs;
}

std::string read_file_text(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (file == nullptr) {
        throw GJFParseException("Cannot open file: " + path);
    }
    std::string text;
    // A pipe does not tell its size, and a folder opens but does not read: the end is where reading ends.
    char block[1 << 16];
    for (std::size_t count = 0; (count = std::fread(block, 1, sizeof block, file.get())) > 0;) {
        text.append(block, count);
    }
    if (std::ferror(file.get()) != 0) {
        throw GJFParseException("Cannot open file: " + path);
    }
    return text;
}

void write_file_text(const std::string& path, std::string_view text) {
    if (!quor::core::fs::write_text_file(path, text)) {
        throw GJFParseException("Cannot write file: " + path);
    }
}

bool is_as_read(const JobHandle& job) {
    if (job.source.empty()) {
        return false;
    }
    const GJFData read = GJFParser::parse_string(job.source);
    return first_difference(job.editor.get_data(), read, Coordinates::AsText) == nullptr;
}

std::string job_text(const JobHandle& job) { return is_as_read(job) ? job.source : fixed_layout(job.editor); }

std::string file_text(const std::vector<JobHandle>& jobs) {
    if (jobs.size() == 1) {
        return job_text(jobs.front());
    }
    std::string text;
    for (const JobHandle& job : jobs) {
        text += text.empty() ? "" : "\n\n--Link1--\n";
        text += without_last_line_breaks(job_text(job));
    }
    text += text.empty() ? "" : "\n\n\n";
    return text;
}

}  // namespace quor_python
