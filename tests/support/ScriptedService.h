// The sync application as a test wants it: what it answers, and what it was asked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/ScriptedAnswers.h"

namespace Quorvex::Velmora::TestSupport
{

/// What is left after a forced garbage collection: numbers of objects, and bytes of managed memory.
struct Collected {
    std::vector<int> items;
    std::vector<int> commands;
    std::vector<int> services;
    std::int64_t bytes = 0;
};

/// Starts the runtime with the scripted service, in the state of a fresh one. Members are named as the sync
/// application names them, "TessaportService" being its constructor.
class ScriptedService
{
public:
    ScriptedService();

    /// What a member returns from now on.
    void answer(const char* member, const Json& value);
    /// What a member throws from now on.
    void fail(const char* member, const Json& failure);
    /// Several answers one after the other, the last one for good. Each is {"value": …} or {"throw": …}.
    void answerInTurn(const char* member, const std::vector<Json>& answers);

    /// The calls since the last time, each an object with "member", "service" (its number, from 1) and the arguments.
    [[nodiscard]] std::vector<Json> takeCalls();
    /// The members called since the last time.
    [[nodiscard]] std::vector<std::string> takeCalledMembers();
    /// The one call of that member among those since the last time; fails the test when there is not exactly one.
    [[nodiscard]] Json takeCall(const char* member);

    /// Switches the recording of calls.
    void record(bool on);

    /// Collects garbage. Objects in current answers are alive.
    [[nodiscard]] Collected collect();

    /// The text of a property value as the service's own process sees it.
    [[nodiscard]] std::wstring textOfValue(const Json& value);

    /// Default answers, no calls, numbers from 1.
    void reset();
};

/// How many managed objects the native side keeps alive.
[[nodiscard]] std::int64_t countHandles();

} // namespace Quorvex::Velmora::TestSupport
