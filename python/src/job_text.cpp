// Makes the text of jobs and of files of jobs.
#include "job_handle.hpp"
#include "same_job.hpp"

#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_text.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

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
        const GJFData again = GJFParser::parse_string(text);
        if (const char* part = first_difference(editor.get_data(), again, JobComparison::Coordinates::AsWritten)) {
            refuse(part);
        }
    } catch (const WriteError&) {
        throw;
    } catch (const std::exception& error) {
        throw WriteError(std::string("Cannot write the job without loss: its text would not read back (") + error.what() +
                         ")");
    }
    return text;
}

// Makes the text of a document; what the library refuses is a write error with its message.
template <class Make>
std::string refusing(Make make) {
    try {
        return make();
    } catch (const GJFParseException& error) {
        throw WriteError(error.what());
    }
}

// A route is written by its meaning, which a job out of a pickle does not hold.
void give(GJFDocument& document, std::size_t index, const JobHandle& job) {
    GJFEditor editor = job.editor;
    editor.ensure_parsed_keywords();
    document.set_job(index, std::move(editor));
}

std::string rewritten(const JobHandle& job, bool force) {
    return refusing([&] {
        GJFDocument document(job.source->job_text(job.index));
        give(document, 0, job);
        return document.to_text({force});
    });
}

// Returns the source that all jobs come from that were read, when they stand in its order and none stands twice.
Source common_source(const JobPointers& jobs) {
    const JobHandle* last = nullptr;
    for (const JobHandle* job : jobs) {
        if (job->source == nullptr) {
            continue;
        }
        if (last != nullptr && (job->source != last->source || job->index <= last->index)) {
            return nullptr;
        }
        last = job;
    }
    return last == nullptr ? nullptr : last->source;
}

// Jobs that are no more among those of a source are taken out of its document, others are put in.
std::string rewritten_source(const SourceText& source, const JobPointers& jobs, bool force) {
    return refusing([&] {
        GJFDocument document(source.text);
        std::vector<bool> kept(document.job_count(), false);
        for (const JobHandle* job : jobs) {
            if (job->source != nullptr) {
                give(document, job->index, *job);
                kept[job->index] = true;
            }
        }
        for (std::size_t i = kept.size(); i-- > 0;) {
            if (!kept[i]) {
                document.remove_job(i);
            }
        }
        for (std::size_t i = 0; i < jobs.size(); ++i) {
            if (jobs[i]->source == nullptr) {
                fixed_layout(jobs[i]->editor);  // says what would be lost
                document.insert_job(i, jobs[i]->editor.get_data());
            }
        }
        return document.to_text({force});
    });
}

// Joins texts of jobs, each closed by a blank line.
std::string joined(const JobPointers& jobs, bool force) {
    std::string text;
    std::string line_end = "\n";
    for (const JobHandle* job : jobs) {
        std::string piece = job_text(*job, force);
        if (job->source == nullptr && job != jobs.back()) {
            piece.erase(piece.find_last_not_of("\r\n") + 1);
        }
        if (text.empty()) {
            text = std::move(piece);
            line_end = text.find("\r\n") != std::string::npos ? "\r\n" : "\n";
            continue;
        }
        text += text.back() == '\n' ? "" : line_end;
        const std::size_t before = text.size() - (text.size() >= 2 && text[text.size() - 2] == '\r' ? 2 : 1);
        text += before > 0 && text[before - 1] == '\n' ? "" : line_end;
        text += std::string(job_separator) + line_end;
        text += without_byte_order_mark(piece);
    }
    return text;
}

}  // namespace

std::string job_text(const JobHandle& job, bool force) {
    if (job.source == nullptr) {
        return fixed_layout(job.editor);
    }
    try {
        return rewritten(job, force);
    } catch (const WriteError&) {
        if (!force) {
            throw;
        }
    }
    return fixed_layout(job.editor);
}

std::string source_text(const JobHandle& job, bool force) {
    try {
        return refusing([&] {
            GJFDocument document(job.source->text);
            give(document, job.index, job);
            return document.to_text({force});
        });
    } catch (const WriteError&) {
        if (!force) {
            throw;
        }
    }
    std::vector<JobHandle> jobs = read_all_jobs(job.source->text);
    jobs.at(job.index) = job;
    JobPointers pointers;
    for (const JobHandle& each : jobs) {
        pointers.push_back(&each);
    }
    return joined(pointers, force);
}

std::string file_text(const JobPointers& jobs, bool force) {
    const Source source = common_source(jobs);
    // One job of several goes by its own text: the others may not even be readable.
    if (source == nullptr || (jobs.size() == 1 && source->pieces.size() > 1)) {
        return joined(jobs, force);
    }
    try {
        return rewritten_source(*source, jobs, force);
    } catch (const WriteError&) {
        if (!force) {
            throw;
        }
    }
    return joined(jobs, force);
}

}  // namespace quor_python
