// What `quor-gjf check` does about the fixes of findings: counts them, shows them, applies them.
#pragma once

#include "batch.hpp"

#include <core/fs/write_text_file.hpp>
#include <gjf/gjf.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quor_gjf {

struct FixArguments {
    bool fix = false;
    bool unsafe = false;
    bool diff = false;
    std::vector<std::string> fixable;  // codes, or how they begin
    std::vector<std::string> unfixable;

    bool works() const { return fix || diff; }
};

/// Declares --fix, --unsafe-fixes, --diff, --fixable and --unfixable.
void add_fix_options(CLI::App& command, FixArguments& arguments);
/// Refuses codes that are none.
void check_fix_options(const FixArguments& arguments);

/// A file after the fixes.
struct FixedFile {
    std::string text;                                      ///< as it stands in the file now: with --diff, the old one
    std::vector<quor::input::gaussian::Finding> findings;  ///< of the mended text
    std::string out;  ///< what standard output gets: a difference, or the text of standard input
    std::string err;  ///< the fixes that were dropped
    std::size_t applied = 0;
};

/// Mends a text and, without --diff, writes it to its file, which is told of by its name. `wanted` tells which
/// findings are looked at.
FixedFile fix_file(const std::string& path, const std::string& name, const std::string& content,
                   const FixArguments& arguments, const std::function<bool(const quor::input::gaussian::Finding&)>& wanted,
                   const quor::input::gaussian::CheckOptions& check, quor::core::fs::FolderFlushes& folders);

/// Counts the fixes that findings still offer.
FixCounts count_fixes(const std::vector<quor::input::gaussian::Finding>& findings, const FixArguments& arguments);

/// Returns what is said of all fixes at the end, a line with its line end; empty for none.
std::string fix_summary(const FixCounts& counts, const FixArguments& arguments);

}  // namespace quor_gjf
