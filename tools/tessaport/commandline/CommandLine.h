// How commands are declared, and how the command line is read.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// What to run once the command line is read.
using Action = std::function<ExitCode()>;

/// The command line while commands are declared on it.
struct CommandLine {
    CLI::App& app;
    Context& context;
    Action& chosen;
};

/// Declares a command. Help shows the examples first.
///
/// @param run  called with the context when the user asks for this command.
CLI::App& addCommand(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run);

/// Declares a command that only groups others.
CLI::App& addGroup(
    const CommandLine& line, const std::string& name, const std::string& description, const std::string& examples);

/// Declares all commands and runs the one that the arguments name.
ExitCode runCommandLine(const std::vector<std::string>& arguments, Context& context);

} // namespace Quorvex::Velmora::Tool
