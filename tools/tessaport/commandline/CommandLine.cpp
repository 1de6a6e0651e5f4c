#include "tools/tessaport/commandline/CommandLine.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <CLI/CLI.hpp>

#include "tools/tessaport/commandline/Help.h"
#include "tools/tessaport/commandline/Usage.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

void addGlobalOptions(CLI::App& app, GlobalOptions& options)
{
    const CommandSyntax syntax(app);
    syntax.addFlag("--json", options.json, "Print JSON: lists as an array with one item on each line");
    syntax.addOption("--color", options.color, "When to print colours: auto, always or never")
        .valueName("WHEN")
        .oneOf({"auto", "always", "never"})
        .lastOnly();
    syntax.addFlag("--no-color", options.noColor, "Print without colours, as when NO_COLOR is set");
    syntax.addFlag("-v,--verbose", options.verbose, "Show the library's log lines on standard error");
    syntax
        .addOption("--home", options.home, "Home of the local sync service (default: TESSAPORT_HOME, else the user's)")
        .valueName("DIR")
        .lastOnly();
    syntax
        .addOption("--api-folder", options.apiFolder,
            "Folder that holds Quorvex.Tessaport.API.dll (default: the local sync service)")
        .valueName("DIR")
        .lastOnly();
    syntax.addOption("--dotnet-root", options.dotnetRoot, "Folder of the .NET installation (default: the one found)")
        .valueName("DIR")
        .lastOnly();
    app.set_version_flag("-V,--version", "tessaport " VELMORA_TOOL_VERSION, "Print the tool's version");
}

ExitCode reportUsage(
    const CLI::App& app, const std::vector<std::string>& arguments, const CLI::ParseError& error, Output& output)
{
    output.message(complaintAbout(app, arguments, error));
    output.note("See '" + fullName(deepestOf(app)) + " --help'.");
    return ExitCode::Usage;
}

bool namesNoCommand(const CLI::App& app) { return app.get_subcommands().empty() && app.remaining(true).empty(); }

/// @throws Failure when a word names no command.
std::string helpOn(const CLI::App& app, const std::vector<std::string>& words)
{
    const CLI::App* command = &app;
    for (const std::string& word : words) {
        const auto found =
            command->get_subcommands([&word](const CLI::App* inner) { return inner->get_name() == word; });
        if (found.empty())
            throw Failure(ExitCode::Usage, noSuchCommand(*command, word));
        command = found.front();
    }
    return helpOf(*command);
}

} // namespace

CommandSyntax addCommand(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run)
{
    CLI::App& command = *line.app.add_subcommand(name, description);
    command.footer(examples);
    command.group(line.group);
    command.callback([&context = line.context, &chosen = line.chosen, action = std::move(run)] {
        chosen = [&context, action] { return action(context); };
    });
    return CommandSyntax(command);
}

CommandSyntax addGroup(
    const CommandLine& line, const std::string& name, const std::string& description, const std::string& examples)
{
    CLI::App& group = *line.app.add_subcommand(name, description);
    group.footer(examples);
    group.group(line.group);
    group.require_subcommand(1);
    return CommandSyntax(group);
}

CommandSyntax addGroup(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run)
{
    CLI::App& group = addGroup(line, name, description, examples).app();
    group.require_subcommand(0, 1);
    group.callback([&group, &context = line.context, &chosen = line.chosen, action = std::move(run)] {
        if (group.get_subcommands().empty())
            chosen = [&context, action] { return action(context); };
    });
    return CommandSyntax(group);
}

void addHelpCommand(const CommandLine& line)
{
    const auto words = std::make_shared<std::vector<std::string>>();
    addCommand(line, "help", "Show the commands, or what one does and takes",
        "tessaport help\n"
        "tessaport help service start",
        [words, &app = std::as_const(line.app)](Context& context) {
            context.output.write(helpOn(app, *words));
            return ExitCode::Ok;
        })
        .addOption("command", *words, "The command")
        .valueName("COMMAND");
}

ExitCode runCommandLine(
    const std::vector<std::string>& arguments, Context& context, void (*declareCommands)(const CommandLine&))
{
    CLI::App app("Work with the drives of the sync application Tessaport.", "tessaport");
    Action chosen;
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_help_flag("-h,--help", "Show this help");
    app.footer("tessaport demo                 make a home with four drives and show it\n"
               "tessaport drives               list the drives\n"
               "tessaport tree PATH            show what is in a folder\n"
               "tessaport sync PATH            bring both sides up to date\n"
               "tessaport doctor               say what is wrong with the installation");
    // Paths may begin with a slash.
    app.allow_windows_style_options(false);
    app.fallthrough();
    app.require_subcommand(1);
    addGlobalOptions(app, context.options);
    declareCommands({app, context, chosen, "Commands"});

    std::vector<std::string> reversed = arguments;
    std::reverse(reversed.begin(), reversed.end());
    try {
        app.parse(reversed);
    } catch (const CLI::CallForHelp&) {
        context.output.write(helpOf(deepestOf(app)));
        return ExitCode::Ok;
    } catch (const CLI::CallForVersion& version) {
        context.output.line(version.what());
        return ExitCode::Ok;
    } catch (const CLI::ParseError& error) {
        if (!namesNoCommand(app))
            return reportUsage(app, arguments, error, context.output);
        context.output.write(helpOf(app));
        return ExitCode::Usage;
    }
    context.prepare();
    return chosen();
}

} // namespace Quorvex::Velmora::Tool
