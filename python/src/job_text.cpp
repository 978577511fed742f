// Makes the text of jobs and of files of jobs.
#include "job_handle.hpp"

#include <gjf/core/document/fixed_layout.hpp>
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_text.hpp>

#include <cstddef>
#include <optional>
#include <utility>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

std::string fixed_layout(const GJFEditor& editor) {
    if (const std::optional<LayoutLoss> loss = find_layout_loss(editor)) {
        throw WriteError("Cannot write the job without loss: " + loss->reason);
    }
    return editor.to_gjf_string();
}

// Makes a text; what the library refuses is a write error with its message, or by force made in another way.
template <class Make, class Otherwise>
auto made(bool force, Make make, Otherwise otherwise) {
    try {
        return make();
    } catch (const GJFParseException& error) {
        if (!force) {
            throw WriteError(error.what());
        }
    } catch (const WriteError&) {
        if (!force) {
            throw;
        }
    }
    return otherwise();
}

// A route is written by its meaning, which a job out of a pickle does not hold.
void give(GJFDocument& document, std::size_t index, const JobHandle& job) {
    GJFEditor editor = job.editor;
    editor.ensure_parsed_keywords();
    document.set_job(index, std::move(editor));
}

// Makes something of the document over a job's source, or over its piece of it, that holds the job as it is now.
template <class Make>
auto from_document(const JobHandle& job, bool among_others, Make make) {
    const std::size_t index = among_others ? job.index : 0;
    GJFDocument document(among_others ? job.source->text : job.source->job_text(job.index));
    give(document, index, job);
    return make(document, index);
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
    GJFDocument document(source.text);
    std::vector<bool> kept(document.job_count(), false);
    for (const JobHandle* job : jobs) {
        if (job->source != nullptr) {
            if (job->readable()) {
                give(document, job->index, *job);
            }
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

WrittenJob write_job(const JobHandle& job, bool among_others, bool force) {
    const auto as_text = [&] {
        return WrittenJob{among_others ? source_text(job, force) : job_text(job, force), std::nullopt};
    };
    if (job.source == nullptr || !job.readable()) {
        return as_text();
    }
    const auto with_data = [&](GJFDocument& document, std::size_t index) {
        document.take_changes({force});
        return WrittenJob{document.original_text(), document.job(index).get_data()};
    };
    return made(
        force, [&] { return from_document(job, among_others, with_data); }, as_text);
}

std::string job_text(const JobHandle& job, bool force) {
    if (!job.readable()) {
        return job.source->job_text(job.index);
    }
    const auto fixed = [&] { return fixed_layout(job.editor); };
    if (job.source == nullptr) {
        return fixed();
    }
    const auto text = [&](GJFDocument& document, std::size_t) { return document.to_text({force}); };
    return made(
        force, [&] { return from_document(job, false, text); }, fixed);
}

std::string source_text(const JobHandle& job, bool force) {
    const auto text = [&](GJFDocument& document, std::size_t) { return document.to_text({force}); };
    const auto by_jobs = [&] {
        std::vector<JobHandle> jobs = read_all_jobs(job.source->text);
        jobs.at(job.index) = job;
        JobPointers pointers;
        for (const JobHandle& each : jobs) {
            pointers.push_back(&each);
        }
        return joined(pointers, force);
    };
    return made(
        force, [&] { return from_document(job, true, text); }, by_jobs);
}

std::string file_text(const JobPointers& jobs, bool force) {
    const Source source = common_source(jobs);
    const auto by_jobs = [&] { return joined(jobs, force); };
    // One job of several goes by its own text: the others may not even be readable.
    if (source == nullptr || (jobs.size() == 1 && source->pieces.size() > 1)) {
        return by_jobs();
    }
    return made(
        force, [&] { return rewritten_source(*source, jobs, force); }, by_jobs);
}

}  // namespace quor_python
