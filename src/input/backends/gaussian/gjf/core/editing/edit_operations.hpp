// The operations by which job files are edited: one row an option of the tool, each read whole before any text is touched.
#pragma once

#include <core/export.hpp>
#include <gjf/core/editor/gjf_editor.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// What an operation works on. Jobs that take this from a checkpoint are passed over.
enum class EditTarget { Head, TitleAndCharge, Atoms };

/// Where the job that an edit changes stands, and what the edit has to say of it.
struct EditContext {
    const std::string& path;
    std::size_t job = 0;               ///< its number, from 1
    std::vector<std::string> remarks;  ///< without the name of the operation
};

/// Changes one job; returns false when the job has nothing of what the edit names. Throws when the change is refused.
using Edit = std::function<bool(GJFEditor& job, EditContext& context)>;

/// Gives the text of a file that a value names, as in basis=@FILE; empty where no file may be opened.
using TextSource = std::function<std::string(const std::string& path)>;

/// One kind of operation.
struct EditOption {
    const char* name;         ///< as on the command line
    const char* value;        ///< what its value is, null for an option without one
    const char* description;  ///< for --help
    EditTarget target;
    Edit (*read)(const std::string& value);  ///< throws `std::runtime_error` for a value that it cannot read
    /// What makes a route of the value, in front of it, so that its words can be looked up; null for a value without any.
    const char* route_before = nullptr;
    /// In the place of `read` where the value may name a file.
    Edit (*read_with_files)(const std::string& value, const TextSource& files) = nullptr;
};

/// Lists all operations, those on the head of a job first; static.
QUOR_GJF_API const std::vector<EditOption>& edit_options();

/// Returns the operation of a name, as "--method"; null when there is none.
QUOR_GJF_API const EditOption* find_edit_option(const std::string& name);

/// One operation as asked for.
struct EditOperation {
    const EditOption* option = nullptr;
    std::string value;
    Edit edit;
};

/// How operations are read.
struct EditReading {
    bool unknown_words = false;  ///< takes words that the vocabulary does not know
    TextSource files;
};

/// Reads an operation; throws `std::runtime_error` for a value that cannot be read, and for one with a word that the
/// vocabulary does not know.
QUOR_GJF_API EditOperation read_operation(const EditOption& option, const std::string& value,
                                          const EditReading& reading = {});

}  // namespace quor::input::gaussian
