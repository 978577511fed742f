// Holds text, jobs and editors together; writes the text anew, checks what it wrote, and saves.
#include <gjf/core/document/gjf_document.hpp>

#include <core/fs/write_text_file.hpp>
#include <gjf/core/document/section_following.hpp>
#include <gjf/core/editor/job_writer.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Tells whether a file still holds a text.
bool still_holds(const std::string& path, const std::string& text) {
    try {
        return read_whole_file(path) == text;
    } catch (const GJFParseException&) {
        return false;
    }
}

using Sections = std::vector<ExtraInputSection>;

// The steps of writing a job, each with the part that it is about.
struct RewritingStep {
    bool (*concerns)(const JobBefore& before);
    void (*rewrite)(JobRewriting& job);
};

template <JobPart... Parts>
bool any_of_parts(const JobBefore& before) {
    return (before.may_differ(Parts) || ...);
}

constexpr RewritingStep rewriting_steps[] = {
    {any_of_parts<JobPart::Link0>, rewrite_link0},
    {any_of_parts<JobPart::Route>, rewrite_route},
    {any_of_parts<JobPart::Overlays>, rewrite_overlays},
    {any_of_parts<JobPart::Title>, rewrite_title},
    {any_of_parts<JobPart::ChargeAndMultiplicity>, rewrite_charge_line},
    {any_of_parts<JobPart::Atom, JobPart::AtomCount>, rewrite_molecule},
    {any_of_parts<JobPart::ExtraInput>, rewrite_sections},
};

// A job that the text should hold. Its sections are those of its editor, unless they followed a change of atoms.
struct WantedJob {
    const GJFData* job;  // null for one that cannot be read
    std::optional<Sections> followed;

    const Sections& sections() const noexcept { return followed ? *followed : job->extra_inputs; }
};

}  // namespace

struct GJFDocument::Impl {
    struct Entry {
        std::unique_ptr<GJFEditor> editor;  // none for a job that cannot be read
        std::optional<std::size_t> place;   // among the layouts; absent for a job that was added
        std::uint64_t identity = 0;         // of the record that its editor began
        std::unique_ptr<GJFEditor> taken;   // the job as it was read, where it was put aside for another editor

        // Returns what the editor recorded of the job in the text; null when it may be any job.
        const EditRecord* record() const noexcept {
            const EditRecord* const record = editor == nullptr ? nullptr : editor->record();
            return record != nullptr && record->identity() == identity ? record : nullptr;
        }
    };

    std::string path;
    std::string text;
    std::vector<JobLayout> layouts;
    std::vector<ReadingFault> faults;  // for each layout the first that is not harmless
    std::vector<Entry> entries;
    JobLayout no_layout;
    ReadingFault no_fault;

    // Takes the jobs of the text.
    void take(std::vector<JobReading> readings) {
        for (JobReading& reading : readings) {
            Entry entry;
            entry.place = layouts.size();
            layouts.push_back(std::move(reading.layout));
            const auto fault = std::find_if_not(reading.faults.begin(), reading.faults.end(),
                                                [](const ReadingFault& each) { return each.harmless; });
            faults.push_back(fault == reading.faults.end() ? no_fault : std::move(*fault));
            if (fault == reading.faults.end()) {
                entry.editor = std::make_unique<GJFEditor>(std::move(reading.job));
                entry.identity = entry.editor->begin_record();
            }
            entries.push_back(std::move(entry));
        }
        if (entries.empty()) {
            throw GJFParseException("No valid jobs found in input");
        }
    }

    // Takes over the jobs of a changed text. Editors stay where they are, for who holds them.
    void become(Impl&& changed, std::string&& changed_text) noexcept {
        for (std::size_t i = 0; i < changed.entries.size(); ++i) {
            if (changed.entries[i].editor != nullptr) {
                std::swap(*entries[i].editor, *changed.entries[i].editor);
                changed.entries[i].editor.swap(entries[i].editor);
            }
        }
        entries = std::move(changed.entries);
        layouts = std::move(changed.layouts);
        faults = std::move(changed.faults);
        text = std::move(changed_text);
    }

    [[noreturn]] void refuse(const Entry& entry) const {
        throw GJFParseException("Job " + std::to_string(layouts[*entry.place].number) +
                                ": GJF Parse Error: " + faults[*entry.place].message);
    }

    GJFEditor& editor(std::size_t index) const {
        const Entry& found = entry(index);
        if (found.editor == nullptr) {
            refuse(found);
        }
        return *found.editor;
    }

    std::string_view body() const noexcept { return skip_byte_order_mark(text); }

    const Entry& entry(std::size_t index) const {
        if (index >= entries.size()) {
            throw GJFParseException("Invalid job index: " + std::to_string(index) +
                                    " (total jobs: " + std::to_string(entries.size()) + ")");
        }
        return entries[index];
    }

    bool is_unchanged() const noexcept {
        std::size_t next = 0;
        const auto as_read = [&next](const Entry& entry) {
            const EditRecord* const record = entry.record();
            return entry.place == next++ && (entry.editor == nullptr || (record != nullptr && record->empty()));
        };
        return entries.size() == layouts.size() && std::all_of(entries.begin(), entries.end(), as_read);
    }

    // Notes the changes of one job. What its text said is read again when no record tells it.
    WantedJob rewrite_job(const Entry& entry, const TextLines& lines, const GJFWriteOptions& options,
                          LineEdits& edits) const {
        const GJFEditor& editor = *entry.editor;
        const EditRecord* const record = entry.record();
        WantedJob wanted{&editor.get_data(), {}};
        if (record != nullptr && record->empty()) {
            return wanted;
        }
        std::vector<JobReading> again;
        if (record == nullptr && entry.taken == nullptr) {
            again = read_jobs_with_layout(text);
        }
        const GJFData& old = record != nullptr        ? record->before()
                             : entry.taken != nullptr ? entry.taken->get_data()
                                                      : again[*entry.place].job;
        const JobBefore before{old, layouts[*entry.place], record};
        AtomPlaces places = places_of(before.atom_count(), editor.atom_origins());
        if (before.may_differ(JobPart::AtomCount)) {
            wanted.followed = sections_to_write(editor, places, options.force);
        }
        JobRewriting job{lines,
                         before,
                         *wanted.job,
                         wanted.sections(),
                         editor.atom_origins(),
                         editor.given_options(),
                         std::move(places),
                         options.force,
                         edits};
        for (const RewritingStep& step : rewriting_steps) {
            if (step.concerns(before)) {
                step.rewrite(job);
            }
        }
        return wanted;
    }

    void remove_lines_of(std::size_t place, const TextLines& lines, LineEdits& edits) const {
        const LineRange& range = layouts[place].lines;
        const std::size_t separator = range.last < lines.size() ? range.last + 1 : range.first - 1;
        for (std::size_t line = range.first; line <= range.last; ++line) {
            edits.remove(line);
        }
        if (separator >= 1) {
            edits.remove(separator);
        }
    }

    // Puts a new job before a job that was there, or behind the last one; the first of all has no separator before it.
    void insert_lines_of(const Entry& added, const Entry* next, bool first, const TextLines& lines, LineEdits& edits) const {
        const std::string job_text = added.editor->to_gjf_string();
        const std::vector<std::string_view> job_lines = split_lines(without_trailing_breaks(job_text));
        if (next != nullptr) {
            const std::size_t line = layouts[*next->place].lines.first;
            for (const std::string_view text_line : job_lines) {
                edits.insert_before(line, std::string(text_line));
            }
            edits.insert_before(line, "");
            edits.insert_before(line, std::string(job_separator));
            return;
        }
        const std::size_t last = lines.size();
        if (!first && !is_blank_line(lines.line(last))) {
            edits.insert_after(last, "");
        }
        if (!first) {
            edits.insert_after(last, std::string(job_separator));
        }
        for (const std::string_view text_line : job_lines) {
            edits.insert_after(last, std::string(text_line));
        }
        edits.insert_after(last, "");
    }

    // A text with its changes, and the jobs as they are read from it.
    struct Rewritten {
        std::string text;
        std::vector<JobReading> readings;
    };

    // Writes the changes; nothing when there are none.
    std::optional<Rewritten> rewrite(const GJFWriteOptions& options) const {
        if (is_unchanged()) {
            return std::nullopt;
        }
        const TextLines lines(body());
        LineEdits edits;
        std::vector<WantedJob> wanted;
        std::vector<bool> kept(layouts.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (entries[i].place) {
                kept[*entries[i].place] = true;
                if (entries[i].editor == nullptr) {
                    wanted.push_back({nullptr, {}});
                    continue;
                }
                wanted.push_back(rewrite_job_named(i, lines, options, edits));
                continue;
            }
            wanted.push_back({&entries[i].editor->get_data(), {}});
            const auto next = std::find_if(entries.begin() + static_cast<std::ptrdiff_t>(i), entries.end(),
                                           [](const Entry& e) { return e.place.has_value(); });
            insert_lines_of(entries[i], next == entries.end() ? nullptr : &*next, i == 0, lines, edits);
        }
        for (std::size_t place = 0; place < layouts.size(); ++place) {
            if (!kept[place]) {
                remove_lines_of(place, lines, edits);
            }
        }
        if (edits.empty()) {
            return std::nullopt;
        }
        std::string result = with_edits(body(), edits.text_edits(lines));
        result.insert(0, text, 0, text.size() - body().size());
        std::vector<JobReading> read = read_jobs_with_layout(result);
        verify(read, wanted, options);
        return Rewritten{std::move(result), std::move(read)};
    }

    WantedJob rewrite_job_named(std::size_t index, const TextLines& lines, const GJFWriteOptions& options,
                                LineEdits& edits) const {
        try {
            return rewrite_job(entries[index], lines, options, edits);
        } catch (const GJFParseException& error) {
            if (entries.size() == 1) {
                throw;
            }
            throw GJFParseException("Job " + std::to_string(index + 1) + ": " + message_of(error));
        }
    }

    // Compares the jobs that the new text is read as with those that should be there.
    static void verify(const std::vector<JobReading>& read, const std::vector<WantedJob>& wanted,
                       const GJFWriteOptions& options) {
        if (read.size() != wanted.size()) {
            throw GJFParseException("The changed text would be read as " + std::to_string(read.size()) + " jobs, not " +
                                    std::to_string(wanted.size()));
        }
        for (std::size_t i = 0; i < read.size(); ++i) {
            if (wanted[i].job == nullptr) {
                continue;  // none of its lines was touched
            }
            const std::string where = wanted.size() > 1 ? "Job " + std::to_string(i + 1) + ": " : std::string();
            if (!read[i].error.empty()) {
                throw GJFParseException(where + "The changed text cannot be read: " + read[i].error);
            }
            const std::string difference =
                difference_between(read[i].job, *wanted[i].job, options.force ? nullptr : &wanted[i].sections());
            if (!difference.empty()) {
                throw GJFParseException(where + "The changed text would be read otherwise than meant: " + difference);
            }
        }
    }
};

GJFDocument::GJFDocument(std::string text) : impl_(std::make_unique<Impl>()) {
    impl_->text = std::move(text);
    impl_->take(read_jobs_with_layout(impl_->text));
    const std::vector<Impl::Entry>& entries = impl_->entries;
    if (std::none_of(entries.begin(), entries.end(), [](const Impl::Entry& entry) { return entry.editor != nullptr; })) {
        impl_->refuse(entries.front());
    }
}

GJFDocument GJFDocument::open(const std::string& path) {
    GJFDocument document(read_whole_file(path));
    document.impl_->path = path;
    return document;
}

GJFDocument::GJFDocument(GJFDocument&&) noexcept = default;
GJFDocument& GJFDocument::operator=(GJFDocument&&) noexcept = default;
GJFDocument::~GJFDocument() = default;

const std::string& GJFDocument::original_text() const noexcept { return impl_->text; }

const std::string& GJFDocument::path() const noexcept { return impl_->path; }

std::size_t GJFDocument::job_count() const noexcept { return impl_->entries.size(); }

GJFEditor& GJFDocument::job(std::size_t index) { return impl_->editor(index); }

const GJFEditor& GJFDocument::job(std::size_t index) const { return impl_->editor(index); }

bool GJFDocument::readable(std::size_t index) const { return impl_->entry(index).editor != nullptr; }

const ReadingFault& GJFDocument::fault(std::size_t index) const {
    const Impl::Entry& entry = impl_->entry(index);
    return entry.place ? impl_->faults[*entry.place] : impl_->no_fault;
}

void GJFDocument::set_job(std::size_t index, GJFEditor editor) {
    impl_->editor(index);
    Impl::Entry& entry = impl_->entries[index];
    if (const EditRecord* const record = entry.record(); record != nullptr && record->empty()) {
        entry.taken = std::make_unique<GJFEditor>(std::move(*entry.editor));
    }
    *entry.editor = std::move(editor);
}

const JobLayout& GJFDocument::layout(std::size_t index) const {
    const Impl::Entry& entry = impl_->entry(index);
    return entry.place ? impl_->layouts[*entry.place] : impl_->no_layout;
}

void GJFDocument::insert_job(std::size_t index, const GJFData& data) {
    if (index > impl_->entries.size()) {
        impl_->entry(index);
    }
    auto editor = std::make_unique<GJFEditor>(data);
    const std::vector<JobReading> read = read_jobs_with_layout(editor->to_gjf_string());
    if (read.size() != 1 || !read[0].error.empty() || !difference_between(read[0].job, data, &data.extra_inputs).empty()) {
        throw GJFParseException("The fixed layout cannot carry this job, so it cannot be added");
    }
    impl_->entries.insert(impl_->entries.begin() + static_cast<std::ptrdiff_t>(index),
                          Impl::Entry{std::move(editor), std::nullopt, 0, nullptr});
}

void GJFDocument::remove_job(std::size_t index) {
    impl_->entry(index);
    if (impl_->entries.size() == 1) {
        throw GJFParseException("The last job of a document cannot be removed");
    }
    impl_->entries.erase(impl_->entries.begin() + static_cast<std::ptrdiff_t>(index));
}

std::string GJFDocument::to_text(const GJFWriteOptions& options) const {
    std::optional<Impl::Rewritten> changed = impl_->rewrite(options);
    return changed ? std::move(changed->text) : impl_->text;
}

bool GJFDocument::take_changes(const GJFWriteOptions& options) {
    std::optional<Impl::Rewritten> changed = impl_->rewrite(options);
    if (changed) {
        Impl taken;
        taken.take(std::move(changed->readings));
        impl_->become(std::move(taken), std::move(changed->text));
    }
    return changed.has_value();
}

bool GJFDocument::save(const GJFWriteOptions& options) {
    if (impl_->path.empty()) {
        throw GJFParseException("This document was not opened from a file");
    }
    std::optional<Impl::Rewritten> changed = impl_->rewrite(options);
    if (!changed || changed->text == impl_->text) {
        return false;
    }
    if (!options.force && !still_holds(impl_->path, impl_->text)) {
        throw GJFParseException("File has changed since it was opened: " + impl_->path);
    }
    // What may fail is done before the file is written.
    Impl saved;
    saved.take(std::move(changed->readings));
    if (!quor::core::fs::write_text_file(impl_->path, changed->text)) {
        throw GJFParseException("Cannot write file: " + impl_->path);
    }
    impl_->become(std::move(saved), std::move(changed->text));
    return true;
}

void GJFDocument::save_as(const std::string& path, const GJFWriteOptions& options) const {
    if (!quor::core::fs::write_text_file(path, to_text(options))) {
        throw GJFParseException("Cannot write file: " + path);
    }
}

}  // namespace quor::input::gaussian
