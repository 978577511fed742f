// Reads a file whose name comes from somebody else: only what is a regular file, and no more than wanted.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace quor::core::fs {

enum class ReadOutcome : std::uint8_t { Read, Missing, NotRegular, Unreadable, TooLarge };

/// What came of reading a file; the text is empty unless it was read.
struct ReadFile {
    ReadOutcome outcome = ReadOutcome::Unreadable;
    std::string text = {};
};

/// Reads the file at a path whose last name is no symbolic link, if it is a regular file of at most `largest` bytes. A pipe
/// or a device is neither waited for nor read. Throws `std::bad_alloc` alone.
QUOR_GJF_API ReadFile read_regular_file(const std::string& path, std::size_t largest);

}  // namespace quor::core::fs
