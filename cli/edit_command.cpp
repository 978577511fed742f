// quor-gjf edit: changes job files, and nothing in them but what was to be changed.
#include "batch.hpp"
#include "commands.hpp"
#include "edit_outputs.hpp"
#include "edit_remarks.hpp"
#include "input.hpp"
#include "output.hpp"
#include "plain_text.hpp"
#include "section_names.hpp"
#include "terminal.hpp"
#include "unified_diff.hpp"
#include "where.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

constexpr std::size_t flushes_at_once = 24;  // a disk takes longer for one than for its share of many
constexpr std::size_t changed_count = 0;     // the place in FileResult::counts

// Reads a file that a value names.
std::string text_of_file(const std::string& path) {
    try {
        return read_text(path);
    } catch (const UnreadableInput& error) {
        throw UnreadableInput(path + ": " + error.what());
    }
}

struct EditArguments {
    BatchOptions batch;
    std::string output;
    EditPlan plan;
    bool in_place = false;
    bool dry_run = false;
    bool diff = false;
    bool list_kinds = false;
    bool no_check = false;
    EditReading reading{false, text_of_file};

    bool writes() const { return (in_place || !output.empty()) && !dry_run; }
    bool prints_text() const { return !in_place && output.empty() && !dry_run && !diff; }
};

// Holds one of the turns in which files are worked on.
class Turn {
   public:
    explicit Turn(std::counting_semaphore<>& turns) : turns_(turns) { turns_.acquire(); }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() { turns_.release(); }

   private:
    std::counting_semaphore<>& turns_;
};

// Names the jobs that cannot be read, which stay as they are.
std::string unreadable_jobs(const EditedText& edited, const std::string& path) {
    std::string text;
    for (const UnreadableJob& job : edited.unreadable) {
        text += printable(path) + ':' + std::to_string(job.line) + ": job " + std::to_string(job.job) +
                " cannot be read and stays as it is: " + printable(job.message) + '\n';
    }
    return text;
}

void write_to_folder(const std::string& output, const std::string& text, bool force,
                     quor::core::fs::FolderFlushes& folders) {
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(output).parent_path(), error);
    write_file(output, text, force, folders);
}

// Where files go, and who may work: no more than `turns` at once, while others wait for the disk.
struct EditOutput {
    const EditOutputs& outputs;
    std::counting_semaphore<>& turns;
    quor::core::fs::FolderFlushes& folders;
    EditRemarks& remarks;
};

// A file before its edit, and what became of it.
struct EditedFile {
    std::string before;
    EditedText edited;

    bool changes() const { return edited.text != before; }
};

// Reads and edits a file; fills what there is to say of it. With --strict, one in which more is found is not written.
EditedFile edit_in_memory(const std::string& path, const EditArguments& arguments, FileResult& result) {
    EditedFile file{read_text(path), {}};
    file.edited = edit_text(file.before, arguments.plan, path);
    result.err = unreadable_jobs(file.edited, path);
    if (file.edited.refused) {
        result.err +=
            printable(path) + ": not written, since " + counted(file.edited.findings.size(), "finding") + " would be new\n";
    }
    result.code = result.err.empty() ? result.code : exit_failure;
    result.counts[changed_count] = file.changes() ? 1 : 0;
    return file;
}

std::vector<EditRemark> remarks_of(const std::string& path, const EditedText& edited) {
    std::vector<EditRemark> remarks;
    for (const std::string& text : edited.remarks) {
        remarks.push_back({printable(text), printable(path)});
    }
    std::transform(edited.findings.begin(), edited.findings.end(), std::back_inserter(remarks),
                   [&](const Finding& finding) { return remark_of(path, finding); });
    return remarks;
}

// Shows a file that was edited, as far as it is to be shown.
std::string shown(const std::string& path, const EditArguments& arguments, const EditedFile& file) {
    if (arguments.diff) {
        return unified_diff(path, file.before, file.edited.text, output_has_colour());
    }
    if (arguments.prints_text()) {
        return file.edited.text;
    }
    return arguments.dry_run && file.changes() ? printable(path) + '\n' : std::string();
}

FileResult edit_file(const std::string& path, const EditArguments& arguments, const EditOutput& output) {
    FileResult result;
    EditedFile file;
    {
        const Turn turn(output.turns);
        file = edit_in_memory(path, arguments, result);
    }
    if (const std::vector<EditRemark> remarks = remarks_of(path, file.edited); !remarks.empty()) {
        result.in_order = [&output, remarks](FileResult&) {
            std::for_each(remarks.begin(), remarks.end(), [&](const EditRemark& each) { output.remarks.add(each); });
        };
    }
    if (file.edited.refused) {
        return result;
    }
    const EditOutputs& outputs = output.outputs;
    if (!arguments.output.empty()) {
        check_output(outputs.path_of(path), arguments.plan.force);
    }
    result.out = shown(path, arguments, file);
    if (!arguments.writes()) {
        return result;
    }
    if (arguments.in_place) {
        replace_file(path, file.before, file.edited.text, arguments.plan.force, output.folders);
    } else {
        write_to_folder(outputs.path_of(path), file.edited.text, arguments.plan.force, output.folders);
    }
    return result;
}

FileResult edit_file_or_tell(const std::string& path, const EditArguments& arguments, const EditOutput& output) {
    try {
        return edit_file(path, arguments, output);
    } catch (const OutputExists& error) {
        FileResult result;
        result.err = printable(path) + ": " + printable(error.what()) + '\n';
        result.code = exit_usage;
        return result;
    }
}

void check_arguments(const EditArguments& arguments) {
    const std::vector<std::string>& paths = arguments.batch.paths;
    if (paths.empty()) {
        throw CLI::RequiredError("FILE");
    }
    if (arguments.plan.operations.empty()) {
        throw CLI::ValidationError("edit", "no operation is given");
    }
    if (arguments.prints_text() && names_several_files(paths)) {
        throw CLI::ValidationError("FILE",
                                   "several files are written with --in-place or -o alone; --diff and --dry-run show");
    }
    const bool reads_input = std::find(paths.begin(), paths.end(), "-") != paths.end();
    if (reads_input && (arguments.in_place || !arguments.output.empty())) {
        throw CLI::ValidationError(arguments.in_place ? "--in-place" : "--output", "standard input has no place");
    }
}

int edit(const EditArguments& arguments) {
    if (arguments.list_kinds) {
        std::fputs(section_kind_list().c_str(), stdout);
        return exit_success;
    }
    check_arguments(arguments);
    const EditOutputs outputs(arguments.batch.paths, arguments.batch.walk, arguments.output);
    const std::string conflict = arguments.in_place || !arguments.output.empty() ? outputs.conflict() : std::string();
    if (!conflict.empty()) {
        throw CLI::ValidationError("FILE", conflict);
    }
    require_vocabulary();
    std::size_t changed = 0;
    std::size_t unchanged = 0;
    std::size_t failed = 0;
    std::counting_semaphore<> turns(static_cast<std::ptrdiff_t>(thread_count(arguments.batch)));
    quor::core::fs::FolderFlushes folders;
    EditRemarks remarks;
    const EditOutput output{outputs, turns, folders, remarks};
    Batch batch;
    batch.waiting = arguments.writes() ? flushes_at_once : 0;
    batch.work = [&](const std::string& path) { return edit_file_or_tell(path, arguments, output); };
    batch.note = [&](const FileResult& result) {
        ++(result.counts[changed_count] != 0 ? changed : result.code != exit_success ? failed : unchanged);
    };
    const int exit_code = run_batch(arguments.batch, batch);
    folders.flush();  // before it is told that they are changed
    std::fputs(remarks.text().c_str(), stderr);
    if (!arguments.prints_text()) {
        const std::size_t files = changed + unchanged + failed;
        std::fprintf(stderr, "%zu %s: %zu %s, %zu unchanged, %zu failed\n", files, files == 1 ? "file" : "files", changed,
                     arguments.writes() ? "changed" : "would change", unchanged, failed);
    }
    return exit_code;
}

// Declares an option for each operation. Those of a configuration file would change files that nobody thinks of.
void add_operations(CLI::App& command) {
    for (const EditOption& row : edit_options()) {
        CLI::Option* option = row.value == nullptr
                                  ? command.add_flag(row.name, row.description)
                                  : command.add_option(row.name, row.description)->type_name(row.value)->expected(1);
        if (row.value != nullptr) {
            option->take_all()->allow_extra_args(false);
        }
        option->group("Operations, in their order")->configurable(false);
    }
}

// Reads the operations in the order in which they were given.
std::vector<EditOperation> operations_of(const CLI::App& command, const EditReading& reading) {
    std::map<std::string, std::size_t> used;
    std::vector<EditOperation> operations;
    for (const CLI::Option* given : command.parse_order()) {
        const std::string name = given->get_name();
        const EditOption* option = find_edit_option(name);
        if (option == nullptr) {
            continue;
        }
        const std::string value = option->value == nullptr ? std::string() : given->results().at(used[name]++);
        try {
            operations.push_back(read_operation(*option, value, reading));
        } catch (const std::exception& error) {
            throw CLI::ValidationError(name, printable(bare_message(error.what())));
        }
    }
    return operations;
}

}  // namespace

void add_edit_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<EditArguments>();
    command.add_option("FILE", arguments->batch.paths,
                       "Job files; folders with all *.gjf, *.com, *.gau and *.inp below them; - reads standard input");
    add_operations(command);
    command
        .add_option("--job", arguments->plan.job, "Change this job of each file alone, counted from 1 (default: all jobs)")
        ->check(CLI::Range(std::size_t{1}, std::size_t{1'000'000}))
        ->type_name("N");
    add_where_option(command, arguments->plan.where);
    add_walk_options(command, arguments->batch.walk);
    CLI::Option* output = command
                              .add_option("-o,--output", arguments->output,
                                          "Write one file to this one, or all, changed or not, to this folder (default: one "
                                          "file, to standard output)")
                              ->type_name("OUT");
    command.add_flag("--in-place", arguments->in_place, "Replace each file that changes")->excludes(output);
    add_colour_option(command);
    command.add_flag("--diff", arguments->diff, "Show the changes; nothing is written without --in-place or -o");
    command.add_flag("--dry-run", arguments->dry_run, "Write nothing; name the files that would change");
    command.add_flag("--force", arguments->plan.force,
                     "Write although a section cannot follow the change, or would be read as another one; replace files "
                     "that are there already or have changed meanwhile");
    CLI::Option* strict = command.add_flag("--strict", arguments->plan.strict,
                                           "Do not change a file in which check would find what it did not find before");
    command.add_flag("--no-check", arguments->no_check, "Do not check the changed jobs")->excludes(strict);
    command.add_flag("--allow-unknown", arguments->reading.unknown_words, "Take words that the vocabulary does not know");
    command.add_flag("--list-kinds", arguments->list_kinds, "List the kinds of sections with their names");
    add_thread_option(command, arguments->batch);
    command.callback([arguments, &command, &exit_code] {
        arguments->plan.checks = !arguments->no_check;
        arguments->plan.included_files = NamedFiles::Opened;
        arguments->plan.operations = operations_of(command, arguments->reading);
        exit_code = edit(*arguments);
    });
}

}  // namespace quor_gjf
