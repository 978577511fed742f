// Codes of the checker as they are given on a command line: whole, or cut short, as GJF-M.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quor_gjf {

/// Declares an option that takes codes, several times or with commas.
void add_code_option(CLI::App& command, const char* name, std::vector<std::string>& codes, const char* description);

/// Refuses what begins no code, naming the option that it was given to.
void require_codes(const char* option, const std::vector<std::string>& beginnings);

/// Prints the codes that begin as given, or all of them with none: their titles, or of a single one all that is known.
void print_codes(const std::vector<std::string>& beginnings, bool json);

}  // namespace quor_gjf
