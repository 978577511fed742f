// quor-gjf edit: changes job files, and nothing in them but what was to be changed.
#include "batch.hpp"
#include "commands.hpp"
#include "edit_operations.hpp"
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

struct EditArguments {
    BatchOptions batch;
    std::string folder;
    std::size_t job = 0;
    Where where;
    bool in_place = false;
    bool dry_run = false;
    bool diff = false;
    bool force = false;
    bool list_kinds = false;
    bool strict = false;
    bool no_check = false;
    bool allow_unknown = false;
    std::vector<EditOperation> operations;

    bool writes() const { return (in_place || !folder.empty()) && !dry_run; }
    bool prints_text() const { return !in_place && folder.empty() && !dry_run && !diff; }
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
std::string unreadable_jobs(const GJFDocument& document, const std::string& path) {
    std::string text;
    for (std::size_t i = 0; i < document.job_count(); ++i) {
        if (!document.readable(i)) {
            const ReadingFault& fault = document.fault(i);
            const std::size_t line = line_and_column(document.original_text(), fault.place.begin).line;
            text += printable(path) + ':' + std::to_string(line) + ": job " + std::to_string(i + 1) +
                    " cannot be read and stays as it is: " + printable(fault.message) + '\n';
        }
    }
    return text;
}

// Names the operation that takes out a section which nothing in the route asks for any more.
std::string with_removal(const std::string& message) {
    for (std::size_t i = 0; const auto kind = find_extra_input_kind(std::to_string(i)); ++i) {
        if (message.find("the section '" + std::string(extra_input_kind_name(*kind)) +
                         "', which would be read as the section '" +
                         extra_input_kind_name(ExtraInputSectionKind::Unknown)) != std::string::npos) {
            return message + "; --remove-section " + extra_input_short_name(*kind) + " takes it out";
        }
    }
    return message;
}

std::string edited_text(GJFDocument& document, const std::string& path, const EditArguments& arguments,
                        const ChosenJobs& chosen, std::vector<EditRemark>& remarks) {
    remarks = apply_operations(arguments.operations, document, path, {arguments.job, chosen});
    try {
        return document.to_text({arguments.force});
    } catch (const GJFParseException& error) {
        throw std::runtime_error(with_removal(bare_message(error.what())));
    }
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

// A file before and after its edit.
struct EditedFile {
    std::string before;
    std::string after;
    std::vector<EditRemark> remarks;
    bool refused = false;
};

// Says what the edit brings; with --strict, such a file is not written.
void check_change(const std::string& path, const EditArguments& arguments, EditedFile& file, FileResult& result) {
    const std::vector<EditRemark> found =
        arguments.no_check ? std::vector<EditRemark>() : remarks_of_change(path, file.before, file.after);
    file.remarks.insert(file.remarks.end(), found.begin(), found.end());
    file.refused = arguments.strict && !found.empty();
    if (file.refused) {
        result.err += printable(path) + ": not written, since " + counted(found.size(), "finding") + " would be new\n";
        result.code = exit_failure;
    }
}

// Reads and edits a file; fills what there is to say of it.
EditedFile edit_in_memory(const std::string& path, const EditArguments& arguments, FileResult& result) {
    EditedFile file;
    file.before = read_text(path);
    const ChosenJobs chosen(arguments.where, path, file.before);
    GJFDocument document(file.before);
    file.after = edited_text(document, path, arguments, chosen, file.remarks);
    result.err = chosen.has(0) ? unreadable_jobs(document, path) : std::string();
    result.code = result.err.empty() ? result.code : exit_failure;
    check_change(path, arguments, file, result);
    result.counts[changed_count] = file.refused || file.after == file.before ? 0 : 1;
    return file;
}

// Shows a file that was edited, as far as it is to be shown.
std::string shown(const std::string& path, const EditArguments& arguments, const EditedFile& file) {
    if (arguments.diff) {
        return unified_diff(path, file.before, file.after, output_has_colour());
    }
    if (arguments.prints_text()) {
        return file.after;
    }
    return arguments.dry_run && file.after != file.before ? printable(path) + '\n' : std::string();
}

FileResult edit_file(const std::string& path, const EditArguments& arguments, const EditOutput& output) {
    FileResult result;
    EditedFile file;
    {
        const Turn turn(output.turns);
        file = edit_in_memory(path, arguments, result);
    }
    if (!file.remarks.empty()) {
        result.in_order = [&output, remarks = file.remarks](FileResult&) {
            std::for_each(remarks.begin(), remarks.end(), [&](const EditRemark& each) { output.remarks.add(each); });
        };
    }
    if (file.refused) {
        return result;
    }
    const EditOutputs& outputs = output.outputs;
    if (!arguments.folder.empty()) {
        check_output(outputs.path_of(path), arguments.force);
    }
    result.out = shown(path, arguments, file);
    if (!arguments.writes()) {
        return result;
    }
    if (arguments.in_place) {
        replace_file(path, file.before, file.after, arguments.force, output.folders);
    } else {
        write_to_folder(outputs.path_of(path), file.after, arguments.force, output.folders);
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
    if (arguments.operations.empty()) {
        throw CLI::ValidationError("edit", "no operation is given");
    }
    if (arguments.prints_text() && names_several_files(paths)) {
        throw CLI::ValidationError("FILE",
                                   "several files are written with --in-place or -o alone; --diff and --dry-run show");
    }
    const bool reads_input = std::find(paths.begin(), paths.end(), "-") != paths.end();
    if (reads_input && (arguments.in_place || !arguments.folder.empty())) {
        throw CLI::ValidationError(arguments.in_place ? "--in-place" : "--output", "standard input has no place");
    }
}

int edit(const EditArguments& arguments) {
    if (arguments.list_kinds) {
        std::fputs(section_kind_list().c_str(), stdout);
        return exit_success;
    }
    check_arguments(arguments);
    const EditOutputs outputs(arguments.batch.paths, arguments.batch.walk, arguments.folder);
    const std::string conflict = arguments.in_place || !arguments.folder.empty() ? outputs.conflict() : std::string();
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
std::vector<EditOperation> operations_of(const CLI::App& command, bool unknown_too) {
    std::map<std::string, std::size_t> used;
    std::vector<EditOperation> operations;
    for (const CLI::Option* given : command.parse_order()) {
        const std::string name = given->get_name();
        const auto row = std::find_if(edit_options().begin(), edit_options().end(),
                                      [&](const EditOption& option) { return option.name == name; });
        if (row == edit_options().end()) {
            continue;
        }
        const std::string value = row->value == nullptr ? std::string() : given->results().at(used[name]++);
        try {
            operations.push_back(read_operation(*row, value, unknown_too));
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
    command.add_option("--job", arguments->job, "Change this job of each file alone, counted from 1 (default: all jobs)")
        ->check(CLI::Range(std::size_t{1}, std::size_t{1'000'000}))
        ->type_name("N");
    add_where_option(command, arguments->where);
    add_walk_options(command, arguments->batch.walk);
    CLI::Option* output = command
                              .add_option("-o,--output", arguments->folder,
                                          "Write all files, changed or not, to this folder (default: one file, to standard "
                                          "output)")
                              ->type_name("FOLDER");
    command.add_flag("--in-place", arguments->in_place, "Replace each file that changes")->excludes(output);
    add_colour_option(command);
    command.add_flag("--diff", arguments->diff, "Show the changes; nothing is written without --in-place or -o");
    command.add_flag("--dry-run", arguments->dry_run, "Write nothing; name the files that would change");
    command.add_flag("--force", arguments->force,
                     "Write although a section cannot follow the change, or would be read as another one; replace files "
                     "that are there already or have changed meanwhile");
    CLI::Option* strict = command.add_flag("--strict", arguments->strict,
                                           "Do not change a file in which check would find what it did not find before");
    command.add_flag("--no-check", arguments->no_check, "Do not check the changed jobs")->excludes(strict);
    command.add_flag("--allow-unknown", arguments->allow_unknown, "Take words that the vocabulary does not know");
    command.add_flag("--list-kinds", arguments->list_kinds, "List the kinds of sections with their names");
    add_thread_option(command, arguments->batch);
    command.callback([arguments, &command, &exit_code] {
        arguments->operations = operations_of(command, arguments->allow_unknown);
        exit_code = edit(*arguments);
    });
}

}  // namespace quor_gjf
