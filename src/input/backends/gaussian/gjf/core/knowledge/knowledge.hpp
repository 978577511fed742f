// Tells what a word means, and whether the facts that checks rest upon are there.
#pragma once

#include <core/export.hpp>

#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Returns what keeps a table of facts from being read, with its path; empty when all are there. Without them checks are
/// silent on much, so that a job which passes was hardly checked.
QUOR_GJF_API std::string missing_knowledge();

/// What a word means. All texts are static, of one line, in ASCII.
struct WordDescription {
    std::string_view role;           ///< "keyword", "option", "method", "basis", "link0" or "section"
    std::string_view keyword;        ///< of an option: whose it is, with blanks between; else empty
    std::string_view word;           ///< in the vocabulary's preferred spelling
    std::string_view meaning;        ///< a sentence without its full stop
    std::string_view default_value;  ///< what holds without the word; empty where no source tells
    std::string_view source;         ///< where the meaning comes from
    bool is_certain = false;         ///< whether the source shows the meaning itself
};

/// Finds what a word means in a role: of a section its short name, of an option with its keyword. A keyword that is a method
/// too is found in both roles; r, u or ro before a method, and polarization functions behind a basis set, need no row of
/// their own. Words are asked for in the vocabulary's preferred spelling; null for one that nothing is known of.
QUOR_GJF_API const WordDescription* find_description(std::string_view role, std::string_view keyword, std::string_view word);

}  // namespace quor::input::gaussian
