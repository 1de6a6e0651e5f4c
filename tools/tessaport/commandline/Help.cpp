#include "tools/tessaport/commandline/Help.h"

#include <sstream>

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::size_t LineWidth = 100;
constexpr std::size_t NameWidth = 28;

constexpr const char* ExitCodes = R"(
Exit codes:
  0  ok
  1  failure
  2  wrong usage
  3  not found
  4  the sync application is not installed
  5  the sync application is not running
  6  an update is needed first
  7  in sync, and both versions of a file that had changed on both sides were kept
)";

std::string indented(const std::string& text)
{
    std::istringstream lines(text);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        result += "  " + line + '\n';
    return result;
}

/// The name in one column and the description, wrapped, in another.
std::string entry(const std::string& name, const std::string& description)
{
    std::string result = "  " + name;
    std::size_t column = result.size();
    const auto startLine = [&result, &column] {
        result += '\n' + std::string(NameWidth, ' ');
        column = NameWidth;
    };
    if (column + 1 >= NameWidth) {
        startLine();
    } else {
        result.append(NameWidth - column, ' ');
        column = NameWidth;
    }
    std::istringstream words(description);
    for (std::string word; words >> word; column += word.size()) {
        if (column + 1 + word.size() > LineWidth)
            startLine();
        if (column > NameWidth) {
            result += ' ';
            ++column;
        }
        result += word;
    }
    return result + '\n';
}

bool takesSeveral(const CLI::Option& option) { return option.get_items_expected_max() > 1; }

std::string argumentInUsage(const CLI::Option& option)
{
    std::string name = option.get_type_name();
    if (takesSeveral(option) && name.find("...") == std::string::npos)
        name += "...";
    return option.get_required() ? name : '[' + name + ']';
}

} // namespace

std::string fullName(const CLI::App& command)
{
    return command.get_parent() == nullptr ? command.get_name()
                                           : fullName(*command.get_parent()) + ' ' + command.get_name();
}

bool hasCommands(const CLI::App& command)
{
    return !command.get_subcommands([](const CLI::App*) { return true; }).empty();
}

std::string helpOf(const CLI::App& command)
{
    return command.get_formatter()->make_help(&command, fullName(command), CLI::AppFormatMode::Normal);
}

std::string usageOf(const CLI::App& command)
{
    std::string usage = fullName(command) + " [OPTIONS]";
    for (const CLI::Option* argument : command.get_options([](const CLI::Option* o) { return o->get_positional(); }))
        usage += ' ' + argumentInUsage(*argument);
    if (!hasCommands(command))
        return usage;
    return usage + (command.get_require_subcommand_min() > 0 ? " COMMAND" : " [COMMAND]");
}

std::string displayName(const CLI::Option& option)
{
    if (option.get_positional())
        return option.get_type_name();
    const std::string name = option.get_name(false, true);
    return option.get_items_expected_max() > 0 ? name + ' ' + option.get_type_name() : name;
}

HelpFormatter::HelpFormatter() { label("Positionals", "Arguments"); }

std::string HelpFormatter::make_help(const CLI::App* app, std::string, CLI::AppFormatMode mode) const
{
    std::ostringstream out;
    if (!app->get_footer().empty())
        out << "Examples:\n" << indented(app->get_footer()) << '\n';
    out << make_description(app) << "\nUsage: " << usageOf(*app) << '\n'
        << make_positionals(app) << make_groups(app, mode) << make_subcommands(app, mode);
    out << (app->get_parent() == nullptr ? ExitCodes
                                         : "\nOptions of every command, and exit codes: tessaport --help\n");
    return out.str();
}

std::string HelpFormatter::make_option(const CLI::Option* option, bool) const
{
    return entry(displayName(*option), option->get_description());
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const
{
    return entry(command->get_name(), command->get_description());
}

} // namespace Quorvex::Velmora::Tool
