// The Link 0 keys that Gaussian has, one row each: how a key may be written, what its value is, where the job model keeps
// it.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/control_section.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// What stands behind the "=" of a Link 0 line; nothing behind a flag, which has no "=".
enum class Link0Form : std::int32_t { Text = 0, Count = 1, Cores = 2, Memory = 3, Flag = 4 };

/// One Link 0 key, without its "%". All texts are static, in lower case.
struct Link0Key {
    std::string_view name;         ///< as it is written into a file
    std::string_view layout_name;  ///< as the fixed layout writes it
    Link0Form form = Link0Form::Text;
    bool in_model = false;  ///< has a member in ControlSection; the others stand in `other_link0_lines`
    std::optional<std::string> ControlSection::*text =
        nullptr;  ///< null for the processor count and for what is not in the model

    bool is_spelt_out(std::string_view lower_case) const noexcept { return lower_case == name || lower_case == layout_name; }
};

/// A Link 0 line taken apart; views into it.
struct Link0Words {
    std::string_view key;      ///< behind "%"; empty for a line that does not begin with it
    std::string_view value;    ///< behind "=", or behind the blank that stands in its place
    bool is_assigned = false;  ///< whether "=" stands behind the key
};

/// Takes a line apart; blanks around its words, and a comment, do not matter.
QUOR_GJF_API Link0Words link0_words(std::string_view line) noexcept;

/// Returns the checkpoint file that the value of %chk or %oldchk names: without quotes, with .chk at its end.
QUOR_GJF_API std::string checkpoint_path(std::string_view value);

/// Returns all keys; those in the model first, in the order in which they are written.
QUOR_GJF_API const std::vector<Link0Key>& link0_keys();

/// Returns the key that is spelt so, in any letter case, or the only one that begins so, of five letters at least, which
/// Gaussian takes for it and the job model keeps as a line; null for any other text.
QUOR_GJF_API const Link0Key* find_link0_key(std::string_view spelling);

/// Returns the value that the job model holds of a key in the model.
QUOR_GJF_API std::optional<std::string> link0_value(const ControlSection& control, const Link0Key& key);

/// Returns the value that a job gives a key: the model's, or that of the last line which spells the key otherwise, such as
/// "%nprocs=8"; of a processor count its leading digits.
QUOR_GJF_API std::optional<std::string> find_link0_value(const ControlSection& control, const Link0Key& key);

/// Sets the member of a key in the model. Of a processor count the leading digits are taken; without any it stays as it is.
QUOR_GJF_API void store_link0(ControlSection& control, const Link0Key& key, std::string_view value);

/// Sets a key: its member in the model, in place of lines that spell it otherwise; or its line, which is added when there is
/// none. `value` is not looked at for a flag.
QUOR_GJF_API void set_link0(ControlSection& control, const Link0Key& key, std::string_view value);

/// Takes a key out, under each of its spellings.
QUOR_GJF_API void unset_link0(ControlSection& control, const Link0Key& key);

}  // namespace quor::input::gaussian
