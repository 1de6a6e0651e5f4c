#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/home/Home.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/output/Table.h"
#include "tools/tessaport/text/Paths.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

ExitCode changeState(Context& context, const std::string& state)
{
    const Home home = Home::locate();
    home.setState(state);
    if (context.options.json)
        context.output.line(toLine({{"home", toText(home.folder())}, {"state", state}}));
    else
        context.output.line("The local sync service in '" + toText(home.folder()) + "' is now " + state + ".");
    return ExitCode::Ok;
}

ExitCode showState(Context& context)
{
    const Home home = Home::locate();
    const ServiceStateName* const state = home.state();
    if (state == nullptr)
        throw Failure(ExitCode::Failure, "'" + toText(home.serviceFile()) +
                                             "' names no state of the service; write it again with "
                                             "'tessaport service start'");
    if (context.options.json) {
        context.output.line(toLine({{"home", toText(home.folder())}, {"state", state->name}}));
    } else {
        const Colour colour = state->code == ExitCode::Ok ? Colour::Good : Colour::Bad;
        context.output.line(std::vector<Span>{{state->name, colour}, std::string(": ") + state->meaning});
        context.output.line("Home: " + toText(home.folder()));
    }
    return state->code;
}

CLI::Validator isState()
{
    std::vector<std::string> names;
    for (const ServiceStateName& state : ServiceStates)
        names.emplace_back(state.name);
    return CLI::IsMember(names).description("");
}

} // namespace

void addServiceCommands(const CommandLine& line)
{
    CLI::App& group = addGroup(line, "service", "Start and stop the local sync service, or show its state",
        "tessaport service status\n"
        "tessaport service stop\n"
        "tessaport service set-state requires-update");
    const CommandLine inside{group, line.context, line.chosen, "Commands"};
    addCommand(inside, "start", "Let the service answer requests", "tessaport service start",
        [](Context& context) { return changeState(context, "running"); });
    addCommand(inside, "stop", "Let requests fail as if the sync application did not run", "tessaport service stop",
        [](Context& context) { return changeState(context, "not-running"); });
    addCommand(inside, "status", "Show the state; ends with the code that requests would end with",
        "tessaport service status", showState);
    auto [command, state] =
        addCommand<std::string>(inside, "set-state", "Put the service into a state, to try how a host handles it",
            "tessaport service set-state forced-update", changeState);
    command.add_option("state", state, "The state")->type_name("STATE")->check(isState())->required();
}

} // namespace Quorvex::Velmora::Tool
