// Reads jobs for Python, and reads and writes files.
#include "job_handle.hpp"

#include "same_job.hpp"

#include <core/fs/write_text_file.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/reader/job_text.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

FaultPlace place_of(const JobReading& job) { return {job.error_line, job.error_column}; }

FaultPlace place_of_fault(const std::string& text) {
    const std::vector<JobReading> jobs = read_jobs_with_layout(text);
    const auto bad = std::find_if(jobs.begin(), jobs.end(), [](const JobReading& job) { return !job.error.empty(); });
    return bad == jobs.end() ? FaultPlace() : place_of(*bad);
}

// A number beyond its range is malformed text like any other.
template <class Read>
auto read_guarded(const std::string& text, Read read) {
    try {
        return read(text);
    } catch (const std::out_of_range& error) {
        throw MalformedText(GJFParseException(error.what()).what(), place_of_fault(text));
    } catch (const GJFParseException& error) {
        throw MalformedText(error.what(), place_of_fault(text));
    }
}

bool is_read_whole(const JobReading& reading) { return reading.error.empty(); }

// Reads the first job. What cannot be read is told as the class interface does.
GJFData first_job(const std::string& text) {
    std::vector<JobReading> readings = read_jobs_with_layout(text);
    const bool readable = !readings.empty() && readings.front().layout.number == 1 && is_read_whole(readings.front());
    return readable ? std::move(readings.front().job) : read_guarded(text, GJFParser::parse_string);
}

bool is_blank(std::string_view text) { return text.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos; }

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

// A number that was written with fewer digits than it has stays as it is.
void keep_digits(CoordinateValue& text, double& value, const CoordinateValue& old_text, double old_value) {
    if (old_text.text.empty() && text.value && value != old_value) {
        text = CoordinateValue{};
        value = old_value;
    }
}

// Reads one job of a text; the others of it may not be readable.
JobHandle read_job_of(std::string text, std::size_t index) {
    const Source source = std::make_shared<SourceText>(std::move(text));
    GJFData data = first_job(source->job_text(index));
    return {GJFEditor(std::move(data)), source, index};
}

JobHandle reread(const JobHandle& written, const JobHandle& read) {
    if (!read.readable()) {
        return read;
    }
    GJFData data = read.editor.get_data();
    const std::vector<AtomCoord>& atoms = written.editor.get_data().geom.atoms;
    for (std::size_t i = 0; i < std::min(atoms.size(), data.geom.atoms.size()); ++i) {
        keep_digits(data.geom.atoms[i].x_ref, data.geom.atoms[i].x, atoms[i].x_ref, atoms[i].x);
        keep_digits(data.geom.atoms[i].y_ref, data.geom.atoms[i].y, atoms[i].y_ref, atoms[i].y);
        keep_digits(data.geom.atoms[i].z_ref, data.geom.atoms[i].z, atoms[i].z_ref, atoms[i].z);
    }
    JobHandle job = read;
    job.editor.set_data(std::move(data));
    return job;
}

// Leaves a file alone that holds the text already.
void save_over(const SaveTarget& target, const std::string& text, const std::vector<Source>& known) {
    std::string there;
    bool is_known = false;
    try {
        there = read_file_text(target.path);
        is_known = std::any_of(known.begin(), known.end(),
                               [&](const Source& source) { return source != nullptr && source->text == there; });
    } catch (const GJFParseException&) {
        // It is gone, which is a change as well.
    }
    if (!is_known && !target.force) {
        const bool several = std::any_of(
            known.begin(), known.end(), [](const Source& source) { return source != nullptr && source->pieces.size() > 1; });
        throw WriteError(GJFParseException("File has changed since it was opened: " + target.path).what() +
                         std::string(several ? " (jobs that were read together are saved together)" : ""));
    }
    if (!is_known || there != text) {
        write_file_text(target.path, text);
    }
}

}  // namespace

SourceText::SourceText(std::string whole) : text(std::move(whole)) {
    if (!may_hold_several_jobs(text)) {
        return;
    }
    for (std::string& piece : GJFParser::split_by_link1(text)) {
        if (!is_blank(pieces.empty() ? without_byte_order_mark(piece) : std::string_view(piece))) {
            pieces.push_back(std::move(piece));
        }
    }
    if (pieces.size() == 1 && pieces.front().size() >= text.size()) {
        pieces.clear();  // no separator line after all
    }
}

JobHandle read_first_job(std::string text) {
    GJFData data = first_job(text);
    return {GJFEditor(std::move(data)), std::make_shared<SourceText>(std::move(text)), 0};
}

std::vector<JobHandle> read_all_jobs(std::string text) {
    std::vector<JobReading> readings = read_jobs_with_layout(text);
    if (std::none_of(readings.begin(), readings.end(), is_read_whole)) {
        read_guarded(text, GJFParser::parse_string_multi);  // throws what it says of such a text
    }
    const Source source = std::make_shared<SourceText>(std::move(text));
    std::vector<JobHandle> jobs;
    jobs.reserve(readings.size());
    for (JobReading& reading : readings) {
        JobHandle& job = jobs.emplace_back(JobHandle{GJFEditor(GJFData{}), source, jobs.size()});
        if (is_read_whole(reading)) {
            job.editor = GJFEditor(std::move(reading.job));
        }
        job.fault = std::move(reading.error);
        job.fault_place = place_of(reading);
    }
    return jobs;
}

void JobHandle::refuse_unreadable() const {
    if (!readable()) {
        const GJFParseException of_job("Job " + std::to_string(index + 1) + ": " + GJFParseException(fault).what());
        throw MalformedText(of_job.what(), fault_place);
    }
}

std::string read_file_text(const std::string& path) { return read_whole_file(path); }

void write_file_text(const std::string& path, std::string_view text) {
    if (!quor::core::fs::write_text_file(path, text)) {
        throw GJFParseException("Cannot write file: " + path);
    }
}

bool is_as_read(const JobHandle& job) {
    if (job.source == nullptr) {
        return false;
    }
    const GJFData read = first_job(job.source->job_text(job.index));
    return first_difference(job.editor.get_data(), read, JobComparison::Coordinates::AsText) == nullptr;
}

JobHandle save_job(const JobHandle& job, const SaveTarget& target) {
    const bool over = target.is_own && job.source != nullptr;
    const bool among_others = over && !job.source->pieces.empty();
    const WrittenJob written = write_job(job, among_others, target.force);
    const std::string& text = written.text;
    const bool backed = job.source != nullptr && (target.is_own || target.becomes_own);
    // What may fail is done before the file is written.
    JobHandle saved = job;
    if (backed) {
        const std::size_t index = among_others ? job.index : 0;
        saved = reread(job, written.data ? JobHandle{GJFEditor(*written.data), std::make_shared<SourceText>(text), index}
                                         : read_job_of(text, index));
    }
    over ? save_over(target, text, {job.source}) : write_file_text(target.path, text);
    return saved;
}

Source save_jobs(std::vector<JobHandle>& jobs, const Source& source, const SaveTarget& target) {
    JobPointers pointers;
    std::vector<Source> known{source};
    for (const JobHandle& job : jobs) {
        pointers.push_back(&job);
        known.push_back(job.source);
    }
    const std::string text = file_text(pointers, target.force);
    std::vector<JobHandle> saved = jobs;
    Source now = source;
    if (source != nullptr && (target.is_own || target.becomes_own)) {
        now = std::make_shared<SourceText>(text);
        const std::vector<JobHandle> read = jobs.empty() ? jobs : read_all_jobs(text);
        for (std::size_t i = 0; i < saved.size(); ++i) {
            saved[i] = reread(jobs[i], read.at(i));
            saved[i].source = now;
        }
    }
    source != nullptr&& target.is_own ? save_over(target, text, known) : write_file_text(target.path, text);
    jobs = std::move(saved);
    return now;
}

}  // namespace quor_python
