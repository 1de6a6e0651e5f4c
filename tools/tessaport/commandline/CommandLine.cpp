#include "tools/tessaport/commandline/CommandLine.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "tools/tessaport/commandline/Help.h"
#include "tools/tessaport/commandline/Suggestion.h"
#include "tools/tessaport/commands/Commands.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

void addGlobalOptions(CLI::App& app, GlobalOptions& options)
{
    app.add_flag("--json", options.json, "Print JSON: lists as an array with one item on each line");
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
    app.set_version_flag("--version", "tessaport " VELMORA_TOOL_VERSION, "Print the tool's version");
}

std::string pathOf(const CLI::App& app)
{
    return app.get_parent() == nullptr ? app.get_name() : pathOf(*app.get_parent()) + ' ' + app.get_name();
}

/// The command that the user had got to when the line stopped making sense.
const CLI::App& deepestOf(const CLI::App& app)
{
    const auto parsed = app.get_subcommands();
    return parsed.empty() ? app : deepestOf(*parsed.back());
}

std::vector<std::string> commandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

void appendOptionNames(const CLI::App& app, std::vector<std::string>& names)
{
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    }
    if (app.get_parent() != nullptr)
        appendOptionNames(*app.get_parent(), names);
}

std::string withSuggestion(std::string text, const std::string& word, const std::vector<std::string>& candidates)
{
    if (const auto meant = closest(word, candidates))
        text += "; did you mean '" + *meant + "'?";
    return text;
}

std::string noSuchCommand(const CLI::App& app, const std::string& word)
{
    return withSuggestion("there is no command '" + pathOf(app) + ' ' + word + "'", word, commandNames(app));
}

std::string complaintAbout(const CLI::App& app, const CLI::App& command, const CLI::ParseError& error)
{
    const std::vector<std::string> extra = app.remaining(true);
    const bool wantsCommand = command.get_require_subcommand_min() > 0;
    const auto word = std::find_if(extra.begin(), extra.end(), [](const std::string& text) { return text[0] != '-'; });
    if (wantsCommand && word != extra.end())
        return noSuchCommand(command, *word);
    if (wantsCommand && extra.empty())
        return "a command is missing";
    if (!extra.empty() && extra.front().compare(0, 2, "--") == 0) {
        std::vector<std::string> names;
        appendOptionNames(command, names);
        return withSuggestion("there is no option '" + extra.front() + "'", extra.front(), names);
    }
    if (!extra.empty())
        return "'" + extra.front() + "' is not expected here";
    return error.what();
}

ExitCode reportUsage(const CLI::App& app, const CLI::ParseError& error, Output& output)
{
    const CLI::App& command = deepestOf(app);
    output.message(complaintAbout(app, command, error));
    output.rawMessage("See '" + pathOf(command) + " --help'.");
    return ExitCode::Usage;
}

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
    return command->help(command->get_parent() == nullptr ? "" : pathOf(*command->get_parent()));
}

void addHelpCommand(const CommandLine& line)
{
    const auto words = std::make_shared<std::vector<std::string>>();
    addCommand(line, "help", "Show what a command does and takes", "tessaport help service start",
        [words, &app = std::as_const(line.app)](Context& context) {
            context.output.write(helpOn(app, *words));
            return ExitCode::Ok;
        })
        .add_option("command", *words, "The command")
        ->type_name("COMMAND");
}

void addAllCommands(const CommandLine& line)
{
    addDemoCommand(line);
    addVersionCommand(line);
    addDrivesCommand(line);
    addListCommand(line);
    addTreeCommand(line);
    addStatCommand(line);
    addMakeFolderCommand(line);
    addAddCommands(line);
    addRemoveCommand(line);
    addSyncCommand(line);
    addClosedCommand(line);
    addPropertyCommand(line);
    addItemCommands(line);
    addIdCommands(line);
    addUrnCommand(line);
    addWhereCommand(line);
    addQuestionCommands(line);
    addRootCommand(line);
    addLogCommands(line);
    addChecksumCommand(line);
    addLinkifyCommand(line);
    addServiceCommands(line);
    addDoctorCommand(line);
    addCompletionCommand(line);
    addHelpCommand(line);
}

} // namespace

CLI::App& addCommand(const CommandLine& line, const std::string& name, const std::string& description,
    const std::string& examples, std::function<ExitCode(Context&)> run)
{
    CLI::App& command = *line.app.add_subcommand(name, description);
    command.footer(examples);
    command.group("Commands");
    command.callback([&context = line.context, &chosen = line.chosen, action = std::move(run)] {
        chosen = [&context, action] { return action(context); };
    });
    return command;
}

CLI::App& addGroup(
    const CommandLine& line, const std::string& name, const std::string& description, const std::string& examples)
{
    CLI::App& group = *line.app.add_subcommand(name, description);
    group.footer(examples);
    group.group("Commands");
    group.require_subcommand(1);
    return group;
}

ExitCode runCommandLine(const std::vector<std::string>& arguments, Context& context)
{
    CLI::App app("Work with the drives of the sync application Tessaport.\n", "tessaport");
    Action chosen;
    app.formatter(std::make_shared<ExamplesFirst>());
    app.footer("tessaport demo                 make a home with four drives and show it\n"
               "tessaport drives               list the drives\n"
               "tessaport tree PATH            show what is beneath a folder\n"
               "tessaport sync PATH            bring both sides up to date\n"
               "tessaport doctor               say what is wrong with the installation");
    // Paths may begin with a slash.
    app.allow_windows_style_options(false);
    app.fallthrough();
    app.require_subcommand(1);
    addGlobalOptions(app, context.options);
    addAllCommands({app, context, chosen});

    std::vector<std::string> reversed = arguments;
    std::reverse(reversed.begin(), reversed.end());
    try {
        app.parse(reversed);
    } catch (const CLI::CallForHelp&) {
        context.output.write(app.help());
        return ExitCode::Ok;
    } catch (const CLI::CallForVersion& version) {
        context.output.line(version.what());
        return ExitCode::Ok;
    } catch (const CLI::ParseError& error) {
        return reportUsage(app, error, context.output);
    }
    context.prepare();
    return chosen();
}

} // namespace Quorvex::Velmora::Tool
