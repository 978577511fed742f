// Writes output files through the library's whole-file writing.
#include "output.hpp"

#include "commands.hpp"
#include "input.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <system_error>

namespace quor_gjf {
namespace {

int tell(const std::string& input, const std::exception& error, int exit_code) {
    std::fprintf(stderr, "%s: %s\n", printable(input).c_str(),
                 printable(quor::input::gaussian::bare_message(error.what())).c_str());
    return exit_code;
}

}  // namespace

void check_output(const std::string& path, bool force) {
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::symlink_status(path, error).type();
    const bool holds_something = type == std::filesystem::file_type::regular || type == std::filesystem::file_type::symlink;
    if (holds_something && !force) {
        throw OutputExists(path + " exists; --force replaces it");
    }
    if (type == std::filesystem::file_type::directory) {
        throw OutputExists(path + " is a folder");
    }
}

void write_output(const std::string& path, const std::string& text, bool force) {
    if (path.empty() || path == "-") {
        if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
            throw std::runtime_error("Cannot write the output");
        }
        return;
    }
    quor::core::fs::FolderFlushes folders;
    write_file(path, text, force, folders);
}

void write_file(const std::string& path, const std::string& text, bool force, quor::core::fs::FolderFlushes& folders) {
    check_output(path, force);
    if (!quor::core::fs::write_text_file(path, text, folders)) {
        throw std::runtime_error("Cannot write file: " + path);
    }
}

void replace_file(const std::string& path, const std::string& before, const std::string& after, bool force,
                  quor::core::fs::FolderFlushes& folders) {
    if (after == before) {
        return;
    }
    if (!force && read_text(path) != before) {
        throw std::runtime_error("the file has changed since it was read; --force writes it all the same");
    }
    write_file(path, after, true, folders);
}

int guarded(const std::string& input, const std::function<int()>& work) {
    try {
        return work();
    } catch (const UnreadableInput& error) {
        return tell(input, error, exit_usage);
    } catch (const OutputExists& error) {
        return tell(input, error, exit_usage);
    } catch (const std::exception& error) {
        return tell(input, error, exit_failure);
    }
}

}  // namespace quor_gjf
