// The C functions on documents, which keep every byte that did not change.
#include <gjf/c_api/error_frame.hpp>

#include <memory>

namespace {

using namespace quor::input::gaussian;
using namespace quor::input::gaussian::c_api;

GJFWriteOptions options_from(int force) noexcept { return {force != 0}; }

// Returns the text as it is now, which is made once for its size and the copy.
const std::string& text_of(quor_gjf_document& document, int force) {
    const bool forced = force != 0;
    if (!document.text || document.text_is_forced != forced) {
        document.text = document.editor.to_text(options_from(force));
        document.text_is_forced = forced;
    }
    return *document.text;
}

}  // namespace

extern "C" {

quor_gjf_document* gjf_document_create_from_string(const char* content) noexcept {
    return guarded<quor_gjf_document*>(nullptr, nullptr, [&] {
        require(content != nullptr, "content is null");
        return std::make_unique<quor_gjf_document>(GJFDocument(content)).release();
    });
}

quor_gjf_document* gjf_document_open(const char* filename) noexcept {
    return guarded<quor_gjf_document*>(nullptr, nullptr, [&] {
        require(filename != nullptr, "filename is null");
        return std::make_unique<quor_gjf_document>(GJFDocument::open(filename)).release();
    });
}

void gjf_document_destroy(quor_gjf_document* document) noexcept { delete document; }

const char* gjf_document_last_error(const quor_gjf_document* document) noexcept { return last_error_of(document); }

int gjf_document_job_count(quor_gjf_document* document) noexcept {
    return with_editor(document, -1,
                       [](const GJFDocument& jobs) { return to_int(jobs.job_count(), "job count does not fit in int"); });
}

quor_gjf_editor* gjf_document_job(quor_gjf_document* document, int index) noexcept {
    return with_editor(document, static_cast<quor_gjf_editor*>(nullptr), [&](GJFDocument& jobs) {
        const std::size_t job = job_index(index);
        GJFEditor& editor = jobs.job(job);
        document->jobs.resize(jobs.job_count());
        std::unique_ptr<quor_gjf_editor>& handle = document->jobs[job];
        if (handle == nullptr) {
            handle = std::make_unique<quor_gjf_editor>(editor, *document);
        }
        return handle.get();
    });
}

int gjf_document_readable(quor_gjf_document* document, int index) noexcept {
    return with_editor(document, -1, [&](const GJFDocument& jobs) { return jobs.readable(job_index(index)) ? 1 : 0; });
}

int gjf_document_fault(quor_gjf_document* document, int index, char* buffer, int buffer_size) noexcept {
    return with_editor(document, -1, [&](const GJFDocument& jobs) {
        const OutputBuffer output{buffer, buffer_size, "fault output buffer is invalid", "fault output buffer is too small"};
        output.check();
        const std::size_t job = job_index(index);
        const ReadingFault& fault = jobs.fault(job);
        const std::size_t line = jobs.readable(job) ? 0 : line_and_column(jobs.original_text(), fault.place.begin).line;
        const int number = to_int(line, "line number does not fit in int");
        output.fill(fault.message);
        return number;
    });
}

int gjf_document_text_size(quor_gjf_document* document, int force) noexcept {
    return with_editor(
        document, -1,
        [&](const GJFDocument&) { return to_int(text_of(*document, force).size() + 1, "text size does not fit in int"); },
        KeptText::Stays);
}

int gjf_document_to_string(quor_gjf_document* document, int force, char* buffer, int buffer_size) noexcept {
    return with_editor(
        document, -1,
        [&](const GJFDocument&) {
            const OutputBuffer output = job_text_buffer(buffer, buffer_size);
            output.check();
            output.fill(text_of(*document, force));
            document->forget_text();
            return 0;
        },
        KeptText::Stays);
}

int gjf_document_save(quor_gjf_document* document, int force) noexcept {
    return with_editor(document, -1, [&](GJFDocument& jobs) { return jobs.save(options_from(force)) ? 1 : 0; });
}

int gjf_document_save_as(quor_gjf_document* document, const char* filename, int force) noexcept {
    return with_editor(document, -1, [&](const GJFDocument& jobs) {
        require(filename != nullptr, "filename is null");
        jobs.save_as(filename, options_from(force));
        return 0;
    });
}

}  // extern "C"
