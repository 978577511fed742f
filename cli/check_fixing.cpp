// Applies fixes to a file through the library, and tells of them.
#include "check_fixing.hpp"

#include "check_codes.hpp"
#include "output.hpp"
#include "plain_text.hpp"
#include "terminal.hpp"
#include "unified_diff.hpp"

#include <CLI/CLI.hpp>

namespace quor_gjf {

using namespace quor::input::gaussian;

FixCounts& FixCounts::operator+=(const FixCounts& other) noexcept {
    safe += other.safe;
    unsafe += other.unsafe;
    applied += other.applied;
    return *this;
}

void add_fix_options(CLI::App& command, FixArguments& arguments) {
    command.add_flag("--fix", arguments.fix,
                     "Mend what has a safe fix, in the files; of standard input, print the mended text");
    command.add_flag("--unsafe-fixes", arguments.unsafe, "With --fix or --diff: apply the likely fixes too");
    command.add_flag("--diff", arguments.diff, "Show what the fixes would change; nothing is written");
    add_code_option(command, "--fixable", arguments.fixable, "Fix these codes alone; a code may be cut short");
    add_code_option(command, "--unfixable", arguments.unfixable,
                    "Do not fix these codes; of --fixable and --unfixable the one that names more of a code holds");
}

void check_fix_options(const FixArguments& arguments) {
    require_codes("--fixable", arguments.fixable);
    require_codes("--unfixable", arguments.unfixable);
}

FixedFile fix_file(const std::string& path, const std::string& name, const std::string& content,
                   const FixArguments& arguments, const std::function<bool(const Finding&)>& wanted,
                   const CheckOptions& check, quor::core::fs::FolderFlushes& folders) {
    FixOptions options;
    options.unsafe = arguments.unsafe;
    options.check = check;
    options.applies = [&](const Finding& finding) {
        return wanted(finding) && is_chosen(finding.code, arguments.fixable, arguments.unfixable);
    };
    FixedText fixed = fix_text(content, options);
    FixedFile file;
    file.applied = fixed.applied.size();
    for (const FixReport& dropped : fixed.dropped) {
        file.err += printable(name) + ':' + std::to_string(dropped.line) +
                    ": not fixed, since more would be found: " + printable(dropped.title) + " [" + dropped.code + "]\n";
    }
    if (arguments.diff) {
        file.out = unified_diff(name, content, fixed.text, output_has_colour());
    } else if (path == "-") {
        file.out = fixed.text;
    } else {
        replace_file(path, content, fixed.text, false, folders);
    }
    file.text = std::move(fixed.text);
    file.findings = std::move(fixed.findings);
    return file;
}

FixCounts count_fixes(const std::vector<Finding>& findings, const FixArguments& arguments) {
    FixCounts counts;
    for (const Finding& finding : findings) {
        const Fix* fix =
            is_chosen(finding.code, arguments.fixable, arguments.unfixable) ? applicable_fix(finding, true) : nullptr;
        if (fix != nullptr) {
            ++(fix->safety == FixSafety::Safe ? counts.safe : counts.unsafe);
        }
    }
    return counts;
}

std::string fix_summary(const FixCounts& counts, const FixArguments& arguments) {
    std::string text;
    if (arguments.works()) {
        text = counted(counts.applied, "finding") + (arguments.diff ? " would be fixed\n" : " fixed\n");
    }
    if (const std::size_t all = counts.safe + counts.unsafe; all > 0 && !arguments.works()) {
        text += counted(all, "finding") + " can be fixed: " + std::to_string(counts.safe) + " safe, " +
                std::to_string(counts.unsafe) + " with --unsafe-fixes\n";
    } else if (counts.unsafe > 0 && !arguments.unsafe) {
        text += counted(counts.unsafe, "finding") + " can be fixed with --unsafe-fixes\n";
    }
    return text;
}

}  // namespace quor_gjf
