#include "tests/support/ScriptedService.h"

#include <stdexcept>

#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/testkit/Channel.h>
#include "tests/support/ScriptedRuntime.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using TestKit::order;

Json named(const char* name) { return {{"order", name}}; }

} // namespace

ScriptedService::ScriptedService() : kit(scriptedServiceOptions()) {}

void ScriptedService::answer(const char* member, const Json& value)
{
    answerInTurn(member, {Json::object({{"value", value}})});
}

void ScriptedService::fail(const char* member, const Json& failure)
{
    answerInTurn(member, {Json::object({{"throw", failure}})});
}

void ScriptedService::answerInTurn(const char* member, const std::vector<Json>& answers)
{
    order({{"order", "answer"}, {"member", member}, {"answers", answers}});
}

std::vector<Json> ScriptedService::takeCalls() { return order(named("calls")).get<std::vector<Json>>(); }

std::vector<std::string> ScriptedService::takeCalledMembers()
{
    std::vector<std::string> members;
    for (const Json& call : takeCalls())
        members.push_back(call["member"]);
    return members;
}

Json ScriptedService::takeCall(const char* member)
{
    std::vector<Json> found;
    for (Json& call : takeCalls()) {
        if (call["member"] == member)
            found.push_back(std::move(call));
    }
    if (found.size() != 1)
        throw std::logic_error(std::string(member) + " was called " + std::to_string(found.size()) + " times.");
    return found.front();
}

void ScriptedService::record(bool on) { order({{"order", "record"}, {"on", on}}); }

Collected ScriptedService::collect()
{
    const Json found = order(named("collect"));
    return {found["items"], found["commands"], found["services"], found["bytes"]};
}

std::wstring ScriptedService::textOfValue(const Json& value)
{
    return textOf(order({{"order", "text"}, {"value", value}}));
}

std::int64_t countHandles() { return Tessaport::ClrRuntime::ofProcess().entryPoints().countHandles(); }

} // namespace Quorvex::Velmora::TestSupport
