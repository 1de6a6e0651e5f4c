#include "tools/tessaport/commandline/Help.h"

#include <sstream>

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr const char* ExitCodes = R"(
Exit codes:
  0  ok
  1  failure
  2  wrong usage
  3  not found
  4  the sync application is not installed
  5  the sync application is not running
  6  an update is needed first
)";

std::string indented(const std::string& text)
{
    std::istringstream lines(text);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        result += "  " + line + '\n';
    return result;
}

} // namespace

ExamplesFirst::ExamplesFirst()
{
    label("Positionals", "Arguments");
    label("Subcommands", "Commands");
    label("SUBCOMMAND", "COMMAND");
    label("OPTIONS", "OPTIONS");
    column_width(28);
}

std::string ExamplesFirst::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const
{
    if (mode == CLI::AppFormatMode::Sub)
        return make_expanded(app);
    std::ostringstream out;
    if (!app->get_footer().empty())
        out << "Examples:\n" << indented(app->get_footer()) << '\n';
    out << make_description(app) << make_usage(app, name) << make_positionals(app) << make_groups(app, mode)
        << make_subcommands(app, CLI::AppFormatMode::Normal);
    out << (app->get_parent() == nullptr ? ExitCodes
                                         : "\nOptions that every command takes, and exit codes: tessaport --help\n");
    return out.str();
}

} // namespace Quorvex::Velmora::Tool
