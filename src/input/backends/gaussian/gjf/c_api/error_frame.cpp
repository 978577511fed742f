// The last messages, per thread and per handle, and the caller's buffers.
#include <gjf/c_api/error_frame.hpp>

#include <cstring>
#include <limits>
#include <string>

namespace quor::input::gaussian::c_api {
namespace {

std::string& this_thread_error() noexcept {
    thread_local std::string error;
    return error;
}

// Stores a text; where memory does not suffice, the fallback, which is short enough to need none.
void store(std::string& target, const char* message, const char* fallback) noexcept {
    try {
        target.assign(message);
    } catch (const std::exception&) {
        target.assign(fallback);
    }
}

}  // namespace

void record_error(std::string* handle_error, const char* message, const char* fallback) noexcept {
    const char* text = message != nullptr ? message : "Unknown error";
    store(this_thread_error(), text, fallback);
    if (handle_error != nullptr) {
        store(*handle_error, text, fallback);
    }
}

void clear_error(std::string* handle_error) noexcept {
    this_thread_error().clear();
    if (handle_error != nullptr) {
        handle_error->clear();
    }
}

const char* thread_error() noexcept { return this_thread_error().c_str(); }

void OutputBuffer::fill(std::string_view text) const {
    require(text.find('\0') == std::string_view::npos, "text holds a null character, at which a C text ends");
    require(text.size() < static_cast<std::size_t>(size), too_small_message);
    std::memcpy(data, text.data(), text.size());
    data[text.size()] = '\0';
}

std::size_t job_index(int index) {
    require(index >= 0, "job index must not be negative");
    return static_cast<std::size_t>(index);
}

int to_int(std::size_t count, const char* message) {
    require(count <= static_cast<std::size_t>(std::numeric_limits<int>::max()), message);
    return static_cast<int>(count);
}

}  // namespace quor::input::gaussian::c_api

extern "C" {

const char* gjf_get_last_error(void) noexcept { return quor::input::gaussian::c_api::thread_error(); }

const char* gjf_editor_get_last_error(void) noexcept { return quor::input::gaussian::c_api::thread_error(); }

const char* quor_gjf_version(void) noexcept { return QUOR_GJF_PROJECT_VERSION; }

}  // extern "C"
