// Reads a file whose name comes from somebody else: only what is a regular file, and no more than wanted.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace quor::core::fs {

enum class ReadOutcome : std::uint8_t { Read, Missing, NotRegular, Unreadable, TooLarge, Outside };

/// What came of reading a file; the text is empty unless it was read.
struct ReadFile {
    ReadOutcome outcome = ReadOutcome::Unreadable;
    std::string text = {};
};

/// Reads the file at a path whose last name is no symbolic link, if it is a regular file of at most `largest` bytes. A pipe
/// or a device is neither waited for nor read. Throws `std::bad_alloc` alone.
QUOR_GJF_API ReadFile read_regular_file(const std::string& path, std::size_t largest);

/// Who finds the file of a path: the kernel where it can, or this library, step by step.
enum class PathSteps : std::uint8_t { KernelsFirst, Ours };

/// Reads the file at a relative path below a folder as the function above does. Links are followed as long as they stay
/// below the folder; what leaves it on the way, as an absolute path or link does, or "..", is `Outside`, though it may come
/// back.
QUOR_GJF_API ReadFile read_regular_file_below(const std::string& folder, const std::string& path, std::size_t largest,
                                              PathSteps steps = PathSteps::KernelsFirst);

}  // namespace quor::core::fs
