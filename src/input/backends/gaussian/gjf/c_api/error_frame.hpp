// The frame of every C function: it checks the handle, runs the operation, and turns every failure into a message and a
// result. Private to the room.
#pragma once

#include <gjf/c_api/handles.hpp>

#include <exception>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quor::input::gaussian::c_api {

/// A failure with a fixed message that a C function itself reports. Made without allocating.
class ArgumentError : public std::exception {
   public:
    explicit ArgumentError(const char* message) noexcept : message_(message) {}
    const char* what() const noexcept override { return message_; }

   private:
    const char* message_;
};

/// Throws an `ArgumentError` unless a condition holds.
inline void require(bool condition, const char* message) {
    if (!condition) {
        throw ArgumentError(message);
    }
}

/// Stores a message for the calling thread and, unless it is null, in a handle's text.
///
/// A null message stores "Unknown error"; where a message cannot be stored, `fallback` is stored instead.
void record_error(std::string* handle_error, const char* message, const char* fallback = "C API error") noexcept;

/// Empties the messages of the calling thread and of a handle.
void clear_error(std::string* handle_error) noexcept;

/// Returns the calling thread's message.
const char* thread_error() noexcept;

/// Runs an operation; any exception is recorded, and `failure` returned.
template <typename Result, typename Operation>
Result guarded(std::string* handle_error, Result failure, Operation operation) noexcept {
    try {
        Result result = operation();
        clear_error(handle_error);
        return result;
    } catch (const std::exception& error) {
        record_error(handle_error, error.what());
    } catch (...) {
        record_error(handle_error, "Unknown C++ exception");
    }
    return failure;
}

/// Whether a document drops the text whose size it told.
enum class KeptText { Goes, Stays };

/// Runs an operation on a handle's editor, as `guarded` does; a null handle is recorded for the thread.
template <typename Handle, typename Result, typename Operation>
Result with_editor(Handle* handle, Result failure, Operation operation, KeptText kept = KeptText::Goes) noexcept {
    if (handle == nullptr) {
        record_error(nullptr, Handle::null_message, "handle is null");
        return failure;
    }
    if (kept == KeptText::Goes) {
        handle->forget_text();
    }
    return guarded(&handle->last_error, failure, [&] { return operation(handle->editor); });
}

/// The same for a function that returns nothing.
template <typename Handle, typename Operation>
void change_editor(Handle* handle, Operation operation) noexcept {
    with_editor(handle, 0, [&](auto& editor) {
        operation(editor);
        return 0;
    });
}

/// Returns a handle's message, or the thread's for a null handle.
template <typename Handle>
const char* last_error_of(const Handle* handle) noexcept {
    return handle != nullptr ? handle->last_error.c_str() : thread_error();
}

/// The buffer of a caller, and the messages about it.
struct OutputBuffer {
    char* data;
    int size;
    const char* invalid_message;
    const char* too_small_message;

    /// Throws unless the buffer can hold an empty text; leaves it holding one.
    void check() const {
        require(data != nullptr && size >= 1, invalid_message);
        data[0] = '\0';
    }
    /// Copies a text and its NUL into a checked buffer; throws, leaving it empty, when they do not fit.
    void fill(std::string_view text) const;
};

/// The buffer that job text goes into.
inline OutputBuffer job_text_buffer(char* data, int size) noexcept {
    return {data, size, "GJF output buffer is invalid", "GJF output buffer is too small"};
}

/// Returns the index of a job as a size; throws for a negative one.
std::size_t job_index(int index);

/// Returns a count as an int; throws with a message when it does not fit.
int to_int(std::size_t count, const char* message);

}  // namespace quor::input::gaussian::c_api
