#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// What to run after the command line has been read.
using Action = std::function<ExitCode()>;

/// The command line while commands are declared on it.
struct CommandLine {
    CLI::App& app;
    Context& context;
    Action& chosen;
    std::string group; ///< The heading in the help under which the commands appear.

    /// This command line with another heading.
    [[nodiscard]] CommandLine under(std::string heading) const { return {app, context, chosen, std::move(heading)}; }
};

/// Declares a command. Help shows the examples first, and messages about wrong usage show the first of them.
///
/// @param run  called with the context if the user runs this command.
CLI::App& addCommand(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run);

/// Declares a command that only groups others.
CLI::App& addGroup(
    const CommandLine& line, const std::string& name, const std::string& description, const std::string& examples);

/// Declares the command that shows help.
void addHelpCommand(const CommandLine& line);

/// Declares all commands and runs the one that the arguments name.
ExitCode runCommandLine(
    const std::vector<std::string>& arguments, Context& context, void (*declareCommands)(const CommandLine&));

} // namespace Quorvex::Velmora::Tool
