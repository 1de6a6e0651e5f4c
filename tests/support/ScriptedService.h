// The test kit for tests of internals: answers and calls that no host can see, as JSON.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <velmora/testkit/ScriptedService.h>
#include "tests/support/ScriptedAnswers.h"

namespace Quorvex::Velmora::TestSupport
{

/// The state after a forced garbage collection: numbers of objects, and bytes of managed memory.
struct Collected {
    std::vector<int> items;
    std::vector<int> commands;
    std::vector<int> services;
    std::int64_t bytes = 0;
};

/// The scripted service of the build tree. Members have the names that the sync application gives them;
/// "TessaportService" is the constructor.
class ScriptedService
{
public:
    ScriptedService();

    /// What hosts see of it.
    TestKit::ScriptedService kit;

    /// Sets what a member returns from now on.
    void answer(const char* member, const Json& value);
    /// Sets what a member throws from now on.
    void fail(const char* member, const Json& failure);
    /// Sets several answers in order, the last one permanently. Each is {"value": …} or {"throw": …}.
    void answerInTurn(const char* member, const std::vector<Json>& answers);

    /// Returns the calls since the last time, each an object with "member", "service" (its number, from 1) and the
    /// arguments.
    [[nodiscard]] std::vector<Json> takeCalls();
    /// Returns the members called since the last time.
    [[nodiscard]] std::vector<std::string> takeCalledMembers();
    /// Returns the only call of a member since the last time; fails the test if there is not exactly one.
    [[nodiscard]] Json takeCall(const char* member);

    /// Switches the recording of calls on or off.
    void record(bool on);

    /// Collects garbage. Objects in current answers stay alive.
    [[nodiscard]] Collected collect();

    /// The string of a property value as managed code sees it.
    [[nodiscard]] std::wstring textOfValue(const Json& value);

    /// Restores the initial state: default answers, no calls, numbers from 1.
    void reset() { kit.reset(); }
};

/// The number of managed objects that the native side keeps alive.
[[nodiscard]] std::int64_t countHandles();

} // namespace Quorvex::Velmora::TestSupport
