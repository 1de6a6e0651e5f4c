#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/commands/ServiceFaults.h"
#include "tools/tessaport/home/Faults.h"
#include "tools/tessaport/home/ServiceFile.h"
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
    ServiceFile(home).setState(state);
    if (context.options.json)
        context.output.line(toLine({{"home", toText(home.folder())}, {"state", state}}));
    else
        context.output.line("The local sync service in '" + toText(home.folder()) + "' is now " + state + ".");
    return ExitCode::Ok;
}

/// What is set for requests; nothing if there is no file.
Json faultsOf(const ServiceFile& file, const ServiceStateName& state, std::vector<RequestFault>& faults)
{
    if (state.code == ExitCode::NotInstalled)
        return Json::object();
    const Json content = file.content();
    faults = faultsIn(file, content);
    return faultsAsJson(content);
}

ExitCode showState(Context& context)
{
    const ServiceFile file(Home::locate());
    const ServiceStateName* const state = file.state();
    if (state == nullptr)
        throw Failure(ExitCode::Failure, "'" + toText(file.path()) +
                                             "' names no state of the service; write it again with "
                                             "'tessaport service start'");
    std::vector<RequestFault> faults;
    const Json set = faultsOf(file, *state, faults);
    const std::string home = toText(file.home().folder());
    if (context.options.json) {
        context.output.line(toLine({{"home", home}, {"state", state->name}, {"faults", set}}));
        return state->code;
    }
    const Colour colour = state->code == ExitCode::Ok ? Colour::Good : Colour::Bad;
    context.output.line(std::vector<Span>{{state->name, colour}, std::string(": ") + state->meaning});
    context.output.line("Home: " + home);
    for (const RequestFault& fault : faults)
        context.output.line(std::vector<Span>{{fault.request, Colour::Bad}, ' ' + descriptionOf(fault)});
    return state->code;
}

std::vector<std::string> stateNames()
{
    std::vector<std::string> names;
    for (const ServiceStateName& state : ServiceStates)
        names.emplace_back(state.name);
    return names;
}

} // namespace

void addServiceCommands(const CommandLine& line)
{
    const CommandSyntax group =
        addGroup(line, "service", "Start and stop the local sync service, let it fail, or show its state",
            "tessaport service                                  show the state, and what is set for requests\n"
            "tessaport service stop\n"
            "tessaport service delay getFolderContents 5s\n"
            "tessaport service fail sync \"quota exceeded\" --times 2",
            showState);
    const CommandLine inside = line.inside(group);
    addCommand(inside, "start", "Let the service answer requests", "tessaport service start",
        [](Context& context) { return changeState(context, "running"); });
    addCommand(inside, "stop", "Let requests fail as if the sync application did not run", "tessaport service stop",
        [](Context& context) { return changeState(context, "not-running"); });
    addCommand(inside, "status", "Show the state and what is set; ends with the code that requests would end with",
        "tessaport service status", showState);
    auto [command, state] =
        addCommand<std::string>(inside, "set-state", "Put the service into a state, to try how a host handles it",
            "tessaport service set-state forced-update", changeState);
    command.addOption("state", state, "The state").valueName("STATE").oneOf(stateNames()).required();
    addFaultCommands(inside);
}

} // namespace Quorvex::Velmora::Tool
