#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/tessaport/app/Context.h"
#include "tools/tessaport/commandline/CommandSyntax.h"

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

    /// This command line for the commands that a group holds.
    [[nodiscard]] CommandLine inside(const CommandSyntax& group) const
    {
        return {group.app(), context, chosen, "Commands"};
    }
};

/// Declares a command. Help shows the examples first, and messages about wrong usage show the first of them.
///
/// @param run  called with the context if the user runs this command.
CommandSyntax addCommand(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run);

/// A declared command, and the values of its options. Both live as long as the command line.
template <class Options>
struct DeclaredCommand {
    CommandSyntax command;
    Options& options;
};

/// Declares a command that has options.
///
/// @param run  called with the context and the values of the options if the user runs this command.
template <class Options>
[[nodiscard]] DeclaredCommand<Options> addCommand(const CommandLine& line, const std::string& name,
    const std::string& description, const std::string& examples, ExitCode (*run)(Context&, const Options&))
{
    const auto options = std::make_shared<Options>();
    const CommandSyntax command = addCommand(
        line, name, description, examples, [options, run](Context& context) { return run(context, *options); });
    return {command, *options};
}

/// What a command that changes items is told.
struct ChangeOptions {
    std::vector<std::string> paths;
    bool dryRun = false;
};

/// Declares a command that only groups others.
CommandSyntax addGroup(
    const CommandLine& line, const std::string& name, const std::string& description, const std::string& examples);

/// Declares a command that groups others and does something on its own as well.
///
/// @param run  called with the context if the user names none of the commands in it.
CommandSyntax addGroup(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run);

/// Declares the command that shows help.
void addHelpCommand(const CommandLine& line);

/// Declares all commands and runs the one that the arguments name.
ExitCode runCommandLine(
    const std::vector<std::string>& arguments, Context& context, void (*declareCommands)(const CommandLine&));

} // namespace Quorvex::Velmora::Tool
