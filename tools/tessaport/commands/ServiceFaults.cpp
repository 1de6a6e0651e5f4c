#include "tools/tessaport/commands/ServiceFaults.h"

#include <algorithm>
#include <functional>
#include <limits>

#include "tools/tessaport/home/Faults.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Duration.h"
#include "tools/tessaport/text/Paths.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

struct DelayOptions {
    std::string request;
    std::string delay;
};

struct FailOptions {
    std::string request;
    std::string text;
    std::string kind = PlainFailure;
    int times = 0;
};

/// Changes the faults of the home and shows what is set for a request then.
ExitCode change(Context& context, const std::string& request, const std::function<void(Json&)>& edit)
{
    const ServiceFile file(Home::locate());
    std::vector<RequestFault> faults;
    Json changed;
    file.change([&](Json& content) {
        // Unknown entries are refused before anything is changed.
        faultsIn(file, content);
        edit(content);
        faults = faultsIn(file, content);
        changed = faultsAsJson(content);
    });
    const auto fault = std::find_if(
        faults.begin(), faults.end(), [&](const RequestFault& candidate) { return candidate.request == request; });
    const std::string home = toText(file.home().folder());
    if (context.options.json)
        context.output.line(toLine({{"home", home}, {"faults", changed}}));
    else if (fault == faults.end())
        context.output.line("Nothing is set for " + request + " in '" + home + "' now.");
    else
        context.output.line("In '" + home + "', " + request + " now " + descriptionOf(*fault) + '.');
    return ExitCode::Ok;
}

ExitCode delay(Context& context, const DelayOptions& options)
{
    const std::string request = requestNamed(options.request);
    const auto duration = parseDuration(options.delay);
    if (!duration || duration->count() == 0)
        throw Failure(ExitCode::Usage, "'" + options.delay +
                                           "' is no delay; give a whole number with ms, s or min, at most a day: "
                                           "250ms, 5s, 2min");
    return change(context, request, [&](Json& content) { setDelay(content, request, *duration); });
}

ExitCode fail(Context& context, const FailOptions& options)
{
    const std::string request = requestNamed(options.request);
    RequestFailure failure{options.text, options.kind, std::nullopt};
    if (options.times > 0)
        failure.times = options.times;
    return change(context, request, [&](Json& content) { setFailure(content, request, failure); });
}

ExitCode clear(Context& context, const std::string& typed)
{
    if (!typed.empty()) {
        const std::string request = requestNamed(typed);
        return change(context, request, [&](Json& content) { clearFault(content, request); });
    }
    const ServiceFile file(Home::locate());
    file.change(clearFaults);
    const std::string home = toText(file.home().folder());
    if (context.options.json)
        context.output.line(toLine({{"home", home}, {"faults", Json::object()}}));
    else
        context.output.line("No request in '" + home + "' is delayed or fails on purpose now.");
    return ExitCode::Ok;
}

std::vector<std::string> kindNames()
{
    std::vector<std::string> names;
    for (const FailureKind& kind : failureKinds())
        names.emplace_back(kind.name);
    return names;
}

CommandOption addRequest(CommandSyntax command, std::string& request, const char* description)
{
    return command.addOption("request", request, description).valueName("REQUEST");
}

} // namespace

void addFaultCommands(const CommandLine& line)
{
    auto [delayCommand, delayed] = addCommand<DelayOptions>(line, "delay",
        "Let a request answer late, to try how a host waits", "tessaport service delay getFolderContents 5s", delay);
    addRequest(delayCommand, delayed.request, "The request, such as getFolderContents or sync").required();
    delayCommand.addOption("delay", delayed.delay, "How long it waits: 250ms, 5s, 2min").valueName("TIME").required();

    auto [failCommand, failing] =
        addCommand<FailOptions>(line, "fail", "Let a request fail, to try how a host reports it",
            "tessaport service fail sync \"quota exceeded\" --times 2\n"
            "tessaport service fail getDrives \"not now\" --as not-running",
            fail);
    addRequest(failCommand, failing.request, "The request, such as getFolderContents or sync").required();
    failCommand.addOption("text", failing.text, "The message of the failure").valueName("TEXT").required();
    failCommand.addOption("--times", failing.times, "Fail this many times (default: until 'tessaport service clear')")
        .valueName("N")
        .from1To(std::numeric_limits<int>::max());
    failCommand.addOption("--as", failing.kind, "The exception: error, or the one of a state (default: error)")
        .valueName("KIND")
        .oneOf(kindNames());

    auto [clearCommand, cleared] = addCommand<std::string>(line, "clear", "Let requests answer as usual again",
        "tessaport service clear\n"
        "tessaport service clear sync",
        clear);
    addRequest(clearCommand, cleared, "The request (default: all of them)");
}

} // namespace Quorvex::Velmora::Tool
