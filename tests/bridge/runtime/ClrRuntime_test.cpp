// The start, step by step, on a fake host whose steps fail as the test wants.
#include "velmora/bridge/runtime/ClrRuntime.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/api/Exceptions.h>
#include "tests/bridge/runtime/FakeBridge.h"
#include "tests/bridge/runtime/FakeHostFxr.h"
#include "tests/bridge/runtime/Installation.h"
#include "tests/bridge/runtime/RuntimeStart.h"

using namespace Quorvex::Velmora;
using namespace Quorvex::Velmora::Tessaport;
using namespace Quorvex::Velmora::TestSupport;
using testing::HasSubstr;

namespace
{

constexpr std::uint32_t RuntimeFailedToStart = 0x80008089;
constexpr std::uint32_t InvalidState = 0x800080a3;

HostingStatus statusOf(std::uint32_t code) { return {static_cast<std::int32_t>(code), "words of the host"}; }

class Starting : public RuntimeStart
{
protected:
    Starting() : RuntimeStart(std::make_unique<FakeHostFxr>(script)) { script.startBridge = startFakeBridge; }

    HostScript script;
};

class HostingCodes : public Starting, public testing::WithParamInterface<std::uint32_t>
{
protected:
    void expectMessageFor(std::uint32_t code, const std::string& message) const
    {
        EXPECT_THAT(message, HasSubstr(hexadecimal(code)));
        EXPECT_THAT(message, HasSubstr("'" + bridge.u8string() + "'"));
        EXPECT_THAT(message, HasSubstr("'" + folder.path().u8string() + "'"));
        EXPECT_THAT(message, HasSubstr("words of the host"));
        EXPECT_THAT(message, testing::AnyOf(HasSubstr("Install the .NET runtime"),
                                 HasSubstr("Repair or reinstall .NET"), HasSubstr("Reinstall this library"),
                                 HasSubstr("Restart this process"), HasSubstr("start it here first")));
        EXPECT_EQ(code == RuntimeFailedToStart || code == InvalidState,
            message.find("Restart this process") != std::string::npos)
            << message;
    }

    // Where the fake looks for .NET, which the message must name.
    void pointToFolder()
    {
        std::filesystem::create_directories(folder.path() / "host" / "fxr");
        runtime.setOptions({{}, folder.path()});
    }
};

class SuccessCodes : public Starting, public testing::WithParamInterface<std::int32_t>
{
};

std::string nameOfCode(const testing::TestParamInfo<std::uint32_t>& info) { return hexadecimal(info.param); }

} // namespace

TEST_P(HostingCodes, WhileOpeningAreReportedAndTheNextStartSucceeds)
{
    pointToFolder();
    script.open = statusOf(GetParam());

    expectMessageFor(GetParam(), failureOfStart());
    EXPECT_EQ(script.started, 0);

    script.open = {};
    expectSuccess();
}

TEST_P(HostingCodes, WhileStartingAreReportedAndTheNextStartSucceeds)
{
    pointToFolder();
    script.start = statusOf(GetParam());

    expectMessageFor(GetParam(), failureOfStart());
    EXPECT_EQ(bridgeScript.started, 0);

    script.start = {};
    expectSuccess();
}

INSTANTIATE_TEST_SUITE_P(Starting, HostingCodes, testing::Range(FirstCode, LastCode + 1), nameOfCode);

TEST_P(SuccessCodes, OfBothStepsAreAccepted)
{
    script.open.code = GetParam();
    script.start.code = GetParam();

    expectSuccess();
}

INSTANTIATE_TEST_SUITE_P(Starting, SuccessCodes, testing::Values(0, 1, 2));

TEST_F(Starting, ReportsUndocumentedCodes)
{
    for (const std::uint32_t code : {3U, 0x80008080U, 0x800080a8U, 0x80070002U, 0xFFFFFFFFU}) {
        script.start = statusOf(code);

        EXPECT_THAT(failureOfStart(), HasSubstr(hexadecimal(code)));
    }
}

TEST_F(Starting, HappensOnce)
{
    const TessaportEntryPoints& first = runtime.entryPoints();
    const TessaportEntryPoints& second = runtime.entryPoints();

    EXPECT_EQ(&first, &second);
    EXPECT_EQ(script.opened, 1);
    EXPECT_EQ(script.started, 1);
    EXPECT_EQ(bridgeScript.started, 1);
    EXPECT_EQ(bridgeScript.repliesReleased, 1);
}

TEST_F(Starting, HappensOnceWhenManyThreadsNeedItAtOnce)
{
    constexpr int Threads = 64;
    std::atomic<int> underWay{0};
    // The first start continues only when all other threads are about to wait for it.
    script.whileStarting = [&] {
        while (underWay < Threads)
            std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    };

    std::atomic<const TessaportEntryPoints*> found{nullptr};
    std::atomic<int> others{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i) {
        threads.emplace_back([&] {
            ++underWay;
            const TessaportEntryPoints* const table = &runtime.entryPoints();
            const TessaportEntryPoints* const first = found.exchange(table);
            others += first != nullptr && first != table ? 1 : 0;
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(script.opened, 1);
    EXPECT_EQ(script.started, 1);
    EXPECT_EQ(bridgeScript.started, 1);
    EXPECT_EQ(others, 0);
}

TEST_F(Starting, PassesTheLocationsToTheHostAndTheBridge)
{
    const std::filesystem::path api = folder.path() / "api";
    std::filesystem::create_directories(folder.path() / "host" / "fxr");
    runtime.setOptions({api, folder.path()});

    expectSuccess();

    EXPECT_EQ(script.dotnetRoot, folder.path());
    EXPECT_EQ(script.bridgeFolder, bridge);
    EXPECT_EQ(std::filesystem::path(bridgeScript.apiFolder), api);
    EXPECT_EQ(bridgeScript.version, EntryPointsVersion);
    EXPECT_EQ(bridgeScript.size, sizeof(TessaportEntryPoints));
}

TEST_F(Starting, DescribesWhatRuns)
{
    EXPECT_TRUE(runtime.description().framework.empty());

    expectSuccess();

    EXPECT_EQ(runtime.description().framework, L".NET 8.0.1");
    EXPECT_EQ(runtime.description().bridgeVersion, L"0.1.0.0");
    EXPECT_EQ(runtime.description().apiAssembly, L"/api/Quorvex.Tessaport.API.dll");
    EXPECT_EQ(runtime.description().apiVersion, L"3.0.0.0");
}

TEST_F(Starting, ReportsTheBridgesOwnMessageUnchangedAndDoesNotStartTheHostAgain)
{
    const PackedReply described = bridgeScript.reply;
    bridgeScript.row = 6;
    bridgeScript.reply = replyOf({u"the assembly is not there"});

    EXPECT_EQ(failureOfStart(), "the assembly is not there");
    EXPECT_TRUE(runtime.description().framework.empty());

    bridgeScript.row = 0;
    bridgeScript.reply = described;
    expectSuccess();
    EXPECT_EQ(script.started, 1);
    EXPECT_EQ(bridgeScript.started, 2);
    EXPECT_EQ(bridgeScript.repliesReleased, 2);
}

TEST_F(Starting, FailsWhenTheReplyDoesNotDescribeTheRuntime)
{
    bridgeScript.reply = replyOf({u".NET 8.0.1"});

    EXPECT_THROW((void)runtime.entryPoints(), std::exception);
    EXPECT_TRUE(runtime.description().framework.empty());
    EXPECT_EQ(bridgeScript.repliesReleased, 1);
}

TEST_F(Starting, TakesNewLocationsUntilItHasSucceeded)
{
    script.open = statusOf(FirstCode);
    (void)failureOfStart();
    EXPECT_NO_THROW(runtime.setOptions({folder.path() / "other", {}}));

    script.open = {};
    expectSuccess();

    EXPECT_THROW(runtime.setOptions({}), std::logic_error);
    EXPECT_EQ(runtime.options().apiFolder, folder.path() / "other");
}

TEST_F(Starting, TakesRelativeLocationsFromTheCurrentFolderOfTheCall)
{
    runtime.setOptions({"api", {}});

    EXPECT_EQ(runtime.options().apiFolder, std::filesystem::current_path() / "api");
    EXPECT_TRUE(runtime.options().dotnetRoot.empty());
}

#ifndef _WIN32 // There no one can remove the current folder of a process.
class WithoutACurrentFolder : public Starting
{
protected:
    WithoutACurrentFolder()
    {
        std::filesystem::create_directory(folder.path() / "gone");
        std::filesystem::current_path(folder.path() / "gone");
        std::filesystem::remove(folder.path() / "gone");
    }
    ~WithoutACurrentFolder() override { std::filesystem::current_path(previous); }

private:
    const std::filesystem::path previous = std::filesystem::current_path();
};

TEST_F(WithoutACurrentFolder, RelativeLocationsAreRefusedAndThePreviousOnesStay)
{
    runtime.setOptions({folder.path() / "api", folder.path() / "dotnet"});

    EXPECT_THROW(runtime.setOptions({folder.path() / "other", "relative"}), std::filesystem::filesystem_error);

    EXPECT_EQ(runtime.options().apiFolder, folder.path() / "api");
    EXPECT_EQ(runtime.options().dotnetRoot, folder.path() / "dotnet");
}

TEST_F(WithoutACurrentFolder, RelativeLocationsAreALogicErrorOnceTheRuntimeHasStarted)
{
    expectSuccess();

    EXPECT_THROW(runtime.setOptions({"relative", {}}), std::logic_error);
}
#endif

TEST_F(Starting, CallsNoHostWhenTheDotnetFolderDoesNotExist)
{
    runtime.setOptions({{}, folder.path() / "absent"});

    EXPECT_THAT(failureOfStart(), HasSubstr((folder.path() / "absent").u8string()));
    EXPECT_EQ(script.opened, 0);
}

TEST_F(Starting, CallsNoHostWhenAFileOfTheBridgeIsMissing)
{
    for (const char* const name : BridgeFiles) {
        std::filesystem::rename(bridge / name, folder.path() / name);

        EXPECT_THAT(failureOfStart(), testing::AllOf(HasSubstr(name), HasSubstr(bridge.u8string())));
        EXPECT_EQ(script.opened, 0);

        std::filesystem::rename(folder.path() / name, bridge / name);
    }
}

TEST_F(Starting, UsesReplacedEntryPointsUntilTheyAreRemoved)
{
    TessaportEntryPoints other{};
    runtime.replaceEntryPoints(&other);
    EXPECT_EQ(&runtime.entryPoints(), &other);
    EXPECT_EQ(script.opened, 0);

    runtime.replaceEntryPoints(nullptr);

    EXPECT_NE(&runtime.entryPoints(), &other);
    EXPECT_EQ(script.opened, 1);
}
