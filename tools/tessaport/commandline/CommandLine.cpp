#include "tools/tessaport/commandline/CommandLine.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "tools/tessaport/commandline/Help.h"
#include "tools/tessaport/commandline/Usage.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

void addGlobalOptions(CLI::App& app, GlobalOptions& options)
{
    app.add_flag("--json", options.json, "Print JSON: lists as an array with one item on each line");
    app.add_option("--color", options.color, "When to print colours: auto, always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember(std::vector<std::string>{"auto", "always", "never"}).description(""))
        ->take_last();
    app.add_flag("--no-color", options.noColor, "Print without colours, as when NO_COLOR is set");
    app.add_flag("-v,--verbose", options.verbose, "Show the library's log lines on standard error");
    app.add_option("--home", options.home, "Home of the local sync service (default: TESSAPORT_HOME, else the user's)")
        ->type_name("DIR")
        ->take_last();
    app.add_option("--api-folder", options.apiFolder,
           "Folder that holds Quorvex.Tessaport.API.dll (default: the local sync service)")
        ->type_name("DIR")
        ->take_last();
    app.add_option("--dotnet-root", options.dotnetRoot, "Folder of the .NET installation (default: the one found)")
        ->type_name("DIR")
        ->take_last();
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

CLI::App& addCommand(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run)
{
    CLI::App& command = *line.app.add_subcommand(name, description);
    command.footer(examples);
    command.group(line.group);
    command.callback([&context = line.context, &chosen = line.chosen, action = std::move(run)] {
        chosen = [&context, action] { return action(context); };
    });
    return command;
}

CLI::Option* addPath(CLI::App& command, std::string& path, const std::string& description)
{
    return command.add_option("path", path, description)->type_name("PATH");
}

CLI::Option* addPaths(CLI::App& command, std::vector<std::string>& paths, const std::string& description)
{
    return command.add_option("path", paths, description)->type_name("PATH");
}

CLI::Option* addDryRun(CLI::App& command, bool& dryRun)
{
    return command.add_flag("-n,--dry-run", dryRun, "Only show what would be done");
}

CLI::App& addGroup(
    const CommandLine& line, const std::string& name, const std::string& description, const std::string& examples)
{
    CLI::App& group = *line.app.add_subcommand(name, description);
    group.footer(examples);
    group.group(line.group);
    group.require_subcommand(1);
    return group;
}

CLI::App& addGroup(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run)
{
    CLI::App& group = addGroup(line, name, description, examples);
    group.require_subcommand(0, 1);
    group.callback([&group, &context = line.context, &chosen = line.chosen, action = std::move(run)] {
        if (group.get_subcommands().empty())
            chosen = [&context, action] { return action(context); };
    });
    return group;
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
        .add_option("command", *words, "The command")
        ->type_name("COMMAND");
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
