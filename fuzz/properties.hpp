// What the fuzzers share: bytes taken as choices, and when a written job must read back as the same job.
#pragma once

#include <gjf/core/editor/gjf_editor.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quor::fuzz {

/// Ends the program, naming the property, unless it holds.
void hold(bool condition, const char* property);

/// Takes choices off an input, byte by byte; zeros once it is used up.
class Choices {
   public:
    Choices(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

    bool empty() const { return rest_.empty(); }
    std::uint8_t byte();
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : byte() % limit; }
    /// Takes a length and as many bytes.
    std::string text(std::size_t longest = 24);
    /// Takes a number: mostly small, sometimes huge, tiny or not finite.
    double number();
    /// Takes an integer: mostly from -2 to 9, sometimes at the ends of the range.
    int integer();

   private:
    std::string_view rest_;
};

/// Tells whether the layout of written jobs can carry this one: no Z-matrix, no coordinates that touch, and every text free
/// of what would be read as something else (quotes, comments, brackets, line breaks).
bool writer_carries(const input::gaussian::GJFEditor& editor);

/// Writes all that a round trip keeps as one text.
std::string all_of_job(const input::gaussian::GJFData& job);

/// Tells whether an editor's text can be written at a reasonable size: one bond of a checkpoint's molecule may name atom
/// 1,000,000, and is written with as many lines.
bool is_small(const input::gaussian::GJFData& job);

/// Holds that the job is written, read and written alike.
void hold_round_trip(const input::gaussian::GJFEditor& editor);

/// Holds that what an editor recorded, and the job as it is in the parts that it did not touch, give the job that it took.
void hold_record(const input::gaussian::GJFEditor& editor, const input::gaussian::GJFData& taken);

}  // namespace quor::fuzz
