// The tools that agents are offered: one row each, with what it takes and what it answers. Private to the room.
#pragma once

#include <gjf/core/protocol/messages.hpp>
#include <gjf/core/protocol/tool_server.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

enum class ArgumentKind { Text, Texts, TextOrTexts, Flag, Count };

struct ToolArgument {
    std::string name;
    ArgumentKind kind = ArgumentKind::Text;
    std::string description;
    bool required = false;
};

struct Tool {
    const char* name;
    const char* title;
    const char* description;
    std::vector<ToolArgument> arguments;
    const char* answer;  ///< the keys of its answer that are always there, as "file:string findings:array"
    Message (*run)(const Tool& tool, const Message& arguments, const ToolServerOptions& options);
};

/// Lists all tools; static.
const std::vector<Tool>& tools();

/// Returns the tool of a name; throws `RequestFault` when there is none.
const Tool& tool_named(const std::string& name);

/// Returns the JSON Schema of what a tool takes, and of what it answers.
Message input_schema(const Tool& tool);
Message output_schema(const Tool& tool);

/// Throws `RequestFault` for arguments that the schema does not allow.
void require_arguments(const Tool& tool, const Message& arguments);

}  // namespace quor::input::gaussian
