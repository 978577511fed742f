// The subcommands of quor-gjf: each is one file, and one row in the table of main.cpp.
#pragma once

namespace CLI {
class App;
}

namespace quor_gjf {

/// What the tool exits with: nothing wrong, something found or failed, wrong usage or input that cannot be opened.
enum ExitCode { exit_success = 0, exit_failure = 1, exit_usage = 2 };

/// Declares a subcommand's arguments; when it is chosen, its callback stores the exit code.
void add_report_command(CLI::App& command, int& exit_code);
void add_check_command(CLI::App& command, int& exit_code);
void add_find_command(CLI::App& command, int& exit_code);
void add_diagnose_command(CLI::App& command, int& exit_code);
void add_next_command(CLI::App& command, int& exit_code);
void add_retry_command(CLI::App& command, int& exit_code);
void add_diff_command(CLI::App& command, int& exit_code);
void add_convert_command(CLI::App& command, int& exit_code);
void add_outline_command(CLI::App& command, int& exit_code);
void add_route_command(CLI::App& command, int& exit_code);
void add_complete_command(CLI::App& command, int& exit_code);
void add_edit_command(CLI::App& command, int& exit_code);
void add_format_command(CLI::App& command, int& exit_code);
void add_split_command(CLI::App& command, int& exit_code);
void add_join_command(CLI::App& command, int& exit_code);
void add_schema_command(CLI::App& command, int& exit_code);
void add_lsp_command(CLI::App& command, int& exit_code);
void add_mcp_command(CLI::App& command, int& exit_code);
void add_completion_command(CLI::App& command, int& exit_code);

}  // namespace quor_gjf
