#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <future>
#include <thread>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

struct StateCase {
    const char* state;
    int exitCode;
    const char* word;
};

class State : public ToolTest
{
protected:
    State() { makeDemo(); }

    /// The tool writes a new file beside the old one before it replaces that.
    [[nodiscard]] bool isBeingReplaced() const
    {
        const std::filesystem::directory_iterator entries(home);
        return std::any_of(
            begin(entries), end(entries), [](const auto& entry) { return entry.path().extension() == ".new"; });
    }
};

/// Opens a file that the programs which are started do not inherit.
std::FILE* openForReading(const std::filesystem::path& file)
{
#ifdef _WIN32
    return _wfopen(file.c_str(), L"rbN");
#else
    return std::fopen(file.c_str(), "rbe");
#endif
}

class EachState : public State, public testing::WithParamInterface<StateCase>
{
};

TEST_P(EachState, DecidesHowRequestsEnd)
{
    expectOk({"service", "set-state", GetParam().state});

    for (const auto& arguments : std::vector<std::vector<std::string>>{{"version"}, {"drives"}, {"ls"}, {"tree"},
             {"stat", readme()}, {"mkdir", readme()}, {"add", readme(), readme()}, {"rm", "-y", readme()}, {"sync"},
             {"sync", "--one", readme()}, {"props", readme()}, {"commands", readme()}, {"run", "sync", readme()},
             {"id", readme()}, {"resolve", "x"}, {"where", readme()}, {"where", "--id", "x"}, {"urn", readme()},
             {"root"}, {"root", "--first"}, {"can-add-file", readme()}, {"offline"}, {"in-workspace", readme()},
             {"exists", readme()}, {"check"}, {"closed", "--process", "1", readme()}, {"doctor"}}) {
        const ChildResult finished = run(arguments);

        EXPECT_EQ(finished.exitCode, GetParam().exitCode) << arguments[0] << '\n' << finished.errors;
        if (arguments[0] != "doctor") {
            EXPECT_THAT(finished.errors, HasSubstr(GetParam().word)) << arguments[0];
            EXPECT_EQ(finished.output, "") << arguments[0];
        }
    }
}

TEST_P(EachState, IsShownByStatusWithItsExitCode)
{
    expectOk({"service", "set-state", GetParam().state});

    const ChildResult finished = run({"service", "status", "--json"});

    EXPECT_EQ(finished.exitCode, GetParam().exitCode);
    EXPECT_EQ(nlohmann::json::parse(finished.output)["state"], GetParam().state);
}

TEST_P(EachState, IsLeftByServiceStart)
{
    expectOk({"service", "set-state", GetParam().state});
    expectOk({"service", "start"});

    expectOk({"drives"});
}

INSTANTIATE_TEST_SUITE_P(All, EachState,
    testing::Values(StateCase{"not-running", 5, "not running"}, StateCase{"not-installed", 4, "not installed"},
        StateCase{"requires-update", 6, "update"}, StateCase{"forced-update", 6, "update"},
        StateCase{"api-requires-update", 6, "update"}),
    [](const auto& info) {
        std::string name = info.param.state;
        for (char& c : name)
            c = c == '-' ? '_' : c;
        return name;
    });

TEST_F(State, StopsAndStarts)
{
    expectOk({"service", "stop"});
    EXPECT_EQ(run({"drives"}).exitCode, 5);

    expectOk({"service", "start"});
    expectOk({"drives"});
    expectOk({"service", "status"});
}

TEST_F(State, DamagedFileIsNamedWithTheRemedy)
{
    for (const std::string content : {"", "{", "[]", "{\"state\": 7}", "{\"state\": \"asleep\"}"}) {
        writeFile(home / "service.json", content);

        const ChildResult status = run({"service", "status"});
        EXPECT_EQ(status.exitCode, 1);
        EXPECT_THAT(status.errors, HasSubstr(text(home / "service.json")));
        EXPECT_THAT(status.errors, HasSubstr("tessaport service start"));
        EXPECT_EQ(run({"drives"}).exitCode, 1);
    }
    expectOk({"service", "start"});
    expectOk({"drives"});
}

TEST_F(State, IsReadWithAByteOrderMark)
{
    writeFile(home / "service.json", "\xEF\xBB\xBF{\"state\": \"running\"}");

    expectOk({"service", "status"});
}

TEST_F(State, NeedsAHome)
{
    const ChildResult finished = run({"--home", text(folder / "none"), "service", "start"});

    EXPECT_EQ(finished.exitCode, 4);
    EXPECT_THAT(finished.errors, HasSubstr("tessaport demo"));
    EXPECT_FALSE(std::filesystem::exists(folder / "none"));
}

TEST_F(State, IsReplacedInOneStepAndLeavesNoTemporaryFile)
{
    expectOk({"service", "stop"});

    EXPECT_EQ(readFile(home / "service.json"), "{\"state\":\"not-running\"}\n");
    EXPECT_FALSE(isBeingReplaced());
}

#ifndef _WIN32 // Windows has no such files.
TEST_F(State, ALinkOrAPipeInThePlaceOfTheTemporaryFileIsNotWrittenTo)
{
    const std::filesystem::path temporary = home / ".service.json.new";
    writeFile(folder / "outside", "mine");
    for (const bool isLink : {true, false}) {
        if (isLink)
            std::filesystem::create_symlink(folder / "outside", temporary);
        else
            ASSERT_EQ(mkfifo(temporary.c_str(), 0600), 0);

        const ChildResult finished = run({"service", "stop"});

        EXPECT_TRUE(finished.exitedWith(0)) << finished.description();
        EXPECT_EQ(readFile(folder / "outside"), "mine");
        EXPECT_EQ(readFile(home / "service.json"), "{\"state\":\"not-running\"}\n");
        EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(home / "service.json")));
        EXPECT_FALSE(isBeingReplaced());
    }
}
#endif

// Whoever changes a file holds its lock, so what a killed tool left under the name is no one's.
TEST_F(State, WhatAKilledToolLeftIsRemovedByTheNextChange)
{
    for (const char* const left : {".service.json.new", ".drives.json.new", ".drives.new"})
        writeFile(home / left, "half");

    expectOk({"service", "stop"});
    expectOk({"service", "start"});
    expectOk({"drive", "set", "Harbour Project", "--offline", "yes"});

    EXPECT_FALSE(isBeingReplaced());
}

TEST_F(State, AFileThatIsTooLargeIsRefusedWithoutBeingRead)
{
    std::filesystem::resize_file(home / "service.json", 4ULL << 30U);

    const ChildResult finished = run({"service", "stop"});

    EXPECT_TRUE(finished.exitedWith(1)) << finished.description();
    EXPECT_THAT(finished.errors, testing::HasSubstr("service.json' is larger than 64 MB"));
}

TEST_F(State, IsReplacedAlthoughAReaderHasItOpenForAMoment)
{
    std::FILE* const reader = openForReading(home / "service.json");
    ASSERT_NE(reader, nullptr);
    std::atomic<bool> hasEnded = false;
    const auto closed = std::async(std::launch::async, [&] {
        while (!hasEnded && !isBeingReplaced())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        std::fclose(reader);
    });

    const ChildResult finished = run({"service", "stop"});
    hasEnded = true;

    EXPECT_EQ(finished.exitCode, 0) << finished.errors;
    EXPECT_EQ(run({"service", "status"}).exitCode, 5);
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
