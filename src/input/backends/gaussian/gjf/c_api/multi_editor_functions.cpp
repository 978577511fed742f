// The C functions on all jobs of a file.
#include <gjf/c_api/error_frame.hpp>
#include <gjf/core/reader/gjf_parser.hpp>

#include <memory>

namespace {

using namespace quor::input::gaussian;
using namespace quor::input::gaussian::c_api;

}  // namespace

extern "C" {

quor_gjf_multi_editor* gjf_multi_editor_create_from_string(const char* content) noexcept {
    return guarded<quor_gjf_multi_editor*>(nullptr, nullptr, [&] {
        require(content != nullptr, "content is null");
        return std::make_unique<quor_gjf_multi_editor>(GJFParser::parse_string_multi(content)).release();
    });
}

quor_gjf_multi_editor* gjf_multi_editor_create_from_file(const char* filename) noexcept {
    return guarded<quor_gjf_multi_editor*>(nullptr, nullptr, [&] {
        require(filename != nullptr, "filename is null");
        return std::make_unique<quor_gjf_multi_editor>(GJFParser::parse_file_multi(filename)).release();
    });
}

void gjf_multi_editor_destroy(quor_gjf_multi_editor* editor) noexcept { delete editor; }

const char* gjf_multi_editor_last_error(const quor_gjf_multi_editor* editor) noexcept { return last_error_of(editor); }

int gjf_multi_editor_job_count(quor_gjf_multi_editor* editor) noexcept {
    return with_editor(editor, -1,
                       [](const GJFMultiEditor& jobs) { return to_int(jobs.job_count(), "job count does not fit in int"); });
}

int gjf_multi_editor_add_job_from_string(quor_gjf_multi_editor* editor, const char* content) noexcept {
    return with_editor(editor, -1, [&](GJFMultiEditor& jobs) {
        require(content != nullptr, "content is null");
        jobs.add_job(GJFParser::parse_string(content));
        return 0;
    });
}

int gjf_multi_editor_remove_job(quor_gjf_multi_editor* editor, int index) noexcept {
    return with_editor(editor, -1, [&](GJFMultiEditor& jobs) {
        jobs.remove_job(job_index(index));
        return 0;
    });
}

int gjf_multi_editor_to_string(quor_gjf_multi_editor* editor, char* buffer, int buffer_size) noexcept {
    return with_editor(editor, -1, [&](const GJFMultiEditor& jobs) {
        const OutputBuffer output = job_text_buffer(buffer, buffer_size);
        output.check();
        output.fill(jobs.to_gjf_string());
        return 0;
    });
}

int gjf_multi_editor_save_to_file(quor_gjf_multi_editor* editor, const char* filename) noexcept {
    return with_editor(editor, -1, [&](const GJFMultiEditor& jobs) {
        require(filename != nullptr, "filename is null");
        jobs.save_to_file(filename);
        return 0;
    });
}

quor_gjf_editor* gjf_multi_editor_clone_job(quor_gjf_multi_editor* editor, int index) noexcept {
    return with_editor(editor, static_cast<quor_gjf_editor*>(nullptr), [&](const GJFMultiEditor& jobs) {
        return std::make_unique<quor_gjf_editor>(jobs.job(job_index(index)).get_data()).release();
    });
}

quor_gjf_editor* gjf_multi_editor_get_job(quor_gjf_multi_editor* editor, int index) noexcept {
    return gjf_multi_editor_clone_job(editor, index);
}

int gjf_multi_editor_set_job(quor_gjf_multi_editor* editor, int index, const quor_gjf_editor* job) noexcept {
    return with_editor(editor, -1, [&](GJFMultiEditor& jobs) {
        require(job != nullptr, "job handle is null");
        jobs.job(job_index(index)).set_data(job->editor.get_data());
        return 0;
    });
}

}  // extern "C"
