// The forms in which `quor-gjf check` tells findings to other programs. Each is written file by file, so that memory does
// not grow with their number: a head, the parts of the files with a separator between, and a foot.
#pragma once

#include <gjf/core/check/checker.hpp>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quor_gjf {

/// What is told of one file.
struct ToldFile {
    const std::string& path;
    std::string_view text;
    const std::vector<quor::input::gaussian::Finding>& findings;
    quor::input::gaussian::Severity fail_on;  ///< what JUnit calls a failure begins here
    std::string problem = {};                 ///< why the file cannot be read; nothing is found in it then
};

/// What rules of sites tell, by their codes.
using SiteRules = std::map<std::string, std::string>;

struct CheckFormat {
    const char* name;
    std::string (*head)();
    std::string (*part)(const ToldFile& file);  ///< may be empty
    const char* separator;
    std::string (*foot)(const SiteRules& told);  ///< null where the parts are no document
};

/// Returns a format by its name: json, gcc, github, gitlab, sarif or junit; null for text and for what is none.
const CheckFormat* find_check_format(std::string_view name);

// The formats that are JSON documents.
std::string sarif_head();
std::string sarif_part(const ToldFile& file);
/// Gives the rules, which are known to the last when all files were looked at.
std::string sarif_foot(const SiteRules& told);
std::string gitlab_part(const ToldFile& file);

/// Finds lines of a text by number; findings mostly come in the order of lines, so the walk goes on where it ended.
class NumberedLines {
   public:
    explicit NumberedLines(std::string_view text) noexcept : text_(text) {
        text_.remove_prefix(text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0);
    }

    std::string_view line(std::size_t number) noexcept;

   private:
    std::string_view text_;
    std::size_t number_ = 1;
    std::size_t begin_ = 0;
};

/// A stretch of one line in characters, from 1; `end` is not included.
struct CharacterRange {
    std::size_t line = 1;
    std::size_t begin = 1;
    std::size_t end = 1;
};

/// Returns where a finding stands, in code points: of a whole line, all of it; of the whole text, its first place.
CharacterRange characters_of(std::size_t line, std::size_t column, std::size_t length, NumberedLines& lines);

/// Gives each finding of a file a mark that stays when lines are put before it: a hash of path, code, message, and how many
/// like it were before.
std::vector<std::string> fingerprints(const std::string& path, const std::vector<quor::input::gaussian::Finding>& findings);

}  // namespace quor_gjf
