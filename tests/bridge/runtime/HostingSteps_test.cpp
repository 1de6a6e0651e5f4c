// Each call into hostfxr, answered by a library in its place.
#include <atomic>
#include <chrono>
#include <cstdint>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/api/Exceptions.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/bridge/runtime/NativeLibrary.h>
#include "tests/bridge/runtime/FakeBridge.h"
#include "tests/bridge/runtime/Installation.h"
#include "tests/bridge/runtime/RuntimeStart.h"
#include "tests/bridge/runtime/hosts/SubstituteHostFxr.h"

using namespace Quorvex::Velmora;
using namespace Quorvex::Velmora::Tessaport;
using namespace Quorvex::Velmora::TestSupport;
using TestHosts::HostFxrScript;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace
{

#ifdef _WIN32
#define VELMORA_HOST_TEXT(text) L##text
#else
#define VELMORA_HOST_TEXT(text) text
#endif

struct Step {
    const char* name;
    void (*answer)(HostFxrScript& host, std::int32_t code);
};
constexpr Step Steps[] = {
    {"initialize", [](HostFxrScript& host, std::int32_t code) { host.initialize = code; }},
    {"get the delegate", [](HostFxrScript& host, std::int32_t code) { host.getDelegate = code; }},
    {"load the bridge", [](HostFxrScript& host,
                            std::int32_t code) { host.loadAssembly = host.findFunction = host.loadFunction = code; }},
};

class HostingSteps : public RuntimeStart
{
protected:
    HostingSteps() : RuntimeStart(HostFxr::system())
    {
        const auto scriptOf = NativeLibrary::open(native(VELMORA_SUBSTITUTE_HOSTFXR))
                                  .symbol<TestHosts::GetHostFxrScript>(TestHosts::HostFxrScriptFunction);
        host = scriptOf == nullptr ? nullptr : scriptOf();
    }

    void SetUp() override
    {
        ASSERT_NE(host, nullptr);
        reset();
        runtime.setOptions({{}, root});
    }

    // The library stays loaded, and what a test has set refers to the test.
    void TearDown() override
    {
        if (host != nullptr)
            *host = HostFxrScript{};
    }

    void reset()
    {
        *host = HostFxrScript{};
        host->startFunction = reinterpret_cast<void*>(&startFakeBridge);
    }

    const std::filesystem::path root = native(VELMORA_SUBSTITUTE_DOTNET);
    HostFxrScript* host = nullptr;
};

class HostingStep : public HostingSteps, public testing::WithParamInterface<Step>
{
};

} // namespace

TEST_P(HostingStep, ReportsEveryCodeAndTheNextStartSucceeds)
{
    int codes = 0;
    for (std::uint32_t code = FirstCode; code <= LastCode; ++code, ++codes) {
        SCOPED_TRACE(std::string(GetParam().name) + " answers " + hexadecimal(code));
        GetParam().answer(*host, static_cast<std::int32_t>(code));
        host->whenFailing = [](hostfxr_error_writer_fn write) { write(VELMORA_HOST_TEXT("what is wrong")); };

        EXPECT_THAT(
            failureOfStart(), AllOf(HasSubstr("(" + hexadecimal(code) + ")"), HasSubstr("'" + root.u8string() + "'"),
                                  HasSubstr(".NET's own words: what is wrong")));
        EXPECT_EQ(host->closed, host->initialized) << "an open context blocks all later ones";
        EXPECT_EQ(host->writer, nullptr);
        EXPECT_EQ(bridgeScript.started, 0);
    }
    std::cout << codes << " codes\n";

    reset();
    expectSuccess();
}

TEST_P(HostingStep, AcceptsTheCodesOfSuccess)
{
    for (const std::int32_t code : {0, 1, 2}) {
        SCOPED_TRACE(code);
        ClrRuntime fresh(HostFxr::system(), bridge);
        fresh.setOptions({{}, root});
        GetParam().answer(*host, code);

        EXPECT_EQ(fresh.entryPoints().version, EntryPointsVersion);
    }
    EXPECT_EQ(host->closed, host->initialized);
}

TEST_P(HostingStep, ReportsCodesThatAreNotDocumented)
{
    for (const std::int32_t code : {3, 0x7FFFFFFF, -1, std::numeric_limits<std::int32_t>::min()}) {
        GetParam().answer(*host, code);

        EXPECT_THAT(failureOfStart(), HasSubstr(hexadecimal(static_cast<std::uint32_t>(code))));
    }
    EXPECT_EQ(host->closed, host->initialized);
}

INSTANTIATE_TEST_SUITE_P(Each, HostingStep, testing::ValuesIn(Steps), [](const auto& info) {
    std::string name = info.param.name;
    for (char& c : name)
        c = c == ' ' ? '_' : c;
    return name;
});

TEST_F(HostingSteps, WordsInPiecesAreOneMessage)
{
    host->initialize = static_cast<std::int32_t>(FirstCode);
    host->whenFailing = [](hostfxr_error_writer_fn write) {
        for (const char_t* const piece : {VELMORA_HOST_TEXT("You must"), VELMORA_HOST_TEXT(""),
                 VELMORA_HOST_TEXT("install .NET"), VELMORA_HOST_TEXT("to run this.")})
            write(piece);
    };

    EXPECT_THAT(failureOfStart(), testing::EndsWith(".NET's own words: You must install .NET to run this."));
}

TEST_F(HostingSteps, NullInPlaceOfWordsIsIgnored)
{
    host->initialize = static_cast<std::int32_t>(FirstCode);
    host->whenFailing = [](hostfxr_error_writer_fn write) {
        write(nullptr);
        write(VELMORA_HOST_TEXT("after it"));
    };

    EXPECT_THAT(failureOfStart(), testing::EndsWith(".NET's own words: after it"));
}

TEST_F(HostingSteps, WordsThatAreNotTextAreReplacedAndTheOthersStay)
{
    host->initialize = static_cast<std::int32_t>(FirstCode);
    host->whenFailing = [](hostfxr_error_writer_fn write) {
        write(VELMORA_HOST_TEXT("before"));
#ifdef _WIN32
        write(L"\xD800");
#else
        write("\xFF");
#endif
        write(VELMORA_HOST_TEXT("after"));
    };

    EXPECT_THAT(failureOfStart(), testing::EndsWith(".NET's own words: before \xEF\xBF\xBD after"));
}

TEST_F(HostingSteps, WordsOfOtherThreadsAreCollectedCompletely)
{
    constexpr int Threads = 8;
    constexpr int Pieces = 1000;
    host->initialize = static_cast<std::int32_t>(FirstCode);
    host->whenFailing = [](hostfxr_error_writer_fn write) {
        std::vector<std::thread> writers;
        for (int i = 0; i < Threads; ++i) {
            writers.emplace_back([write] {
                for (int piece = 0; piece < Pieces; ++piece)
                    write(VELMORA_HOST_TEXT("piece"));
            });
        }
        for (std::thread& writer : writers)
            writer.join();
    };

    const std::string message = failureOfStart();

    int found = 0;
    for (std::size_t at = message.find(" piece"); at != std::string::npos; at = message.find(" piece", at + 1))
        ++found;
    EXPECT_EQ(found, Threads * Pieces);
}

TEST_F(HostingSteps, WordsThatComeAfterTheStepAreDropped)
{
    hostfxr_error_writer_fn late = nullptr;
    host->initialize = static_cast<std::int32_t>(FirstCode);
    host->whenFailing = [&late](hostfxr_error_writer_fn write) { late = write; };
    (void)failureOfStart();
    ASSERT_NE(late, nullptr);

    late(VELMORA_HOST_TEXT("too late"));
    std::thread(late, VELMORA_HOST_TEXT("too late")).join();

    EXPECT_THAT(failureOfStart(), Not(HasSubstr("too late")));
}

TEST_F(HostingSteps, SuccessWithoutADelegateIsAFailureThatSaysSo)
{
    host->givesDelegate = false;

    EXPECT_THAT(failureOfStart(), HasSubstr("a library of .NET lacks a function that is needed"));
    EXPECT_EQ(host->closed, 1);

    reset();
    expectSuccess();
}

TEST_F(HostingSteps, SuccessWithoutTheStartFunctionIsAFailureThatSaysSo)
{
    host->startFunction = nullptr;

    EXPECT_THAT(failureOfStart(), HasSubstr("a library of .NET lacks a function that is needed"));
    EXPECT_EQ(host->closed, 1);

    reset();
    expectSuccess();
}

TEST_F(HostingSteps, FailureWithoutAContextClosesNone)
{
    host->initialize = static_cast<std::int32_t>(FirstCode);
    host->givesHandle = false;

    (void)failureOfStart();

    EXPECT_EQ(host->closed, 0);
}

TEST_F(HostingSteps, BridgeThatTheDefaultContextDoesNotTakeIsStartedInItsOwn)
{
    int contexts = 0;
    for (std::int32_t HostFxrScript::*const step : {&HostFxrScript::loadAssembly, &HostFxrScript::findFunction}) {
        for (std::uint32_t code = FirstCode; code <= LastCode; ++code) {
            SCOPED_TRACE(hexadecimal(code));
            ClrRuntime fresh(HostFxr::system(), bridge);
            fresh.setOptions({{}, root});
            host->*step = static_cast<std::int32_t>(code);

            EXPECT_EQ(fresh.entryPoints().version, EntryPointsVersion);
            EXPECT_EQ(host->ownContexts, ++contexts);
        }
        host->*step = 0;
    }
    EXPECT_EQ(host->closed, host->initialized);
}

TEST_F(HostingSteps, FunctionOfAFailedStepIsNotCalled)
{
    host->loadAssembly = host->loadFunction = static_cast<std::int32_t>(FirstCode);
    (void)failureOfStart();
    EXPECT_EQ(bridgeScript.started, 0);

    reset();
    host->initialize = static_cast<std::int32_t>(FirstCode);
    (void)failureOfStart();
    EXPECT_EQ(bridgeScript.started, 0);
}

TEST_F(HostingSteps, MissingPropertyLeavesTheRuntimeAsItIs)
{
    host->getProperty = static_cast<std::int32_t>(0x800080a4);
    host->property = VELMORA_HOST_TEXT("/not/to/be/read");

    expectSuccess();

    EXPECT_EQ(host->propertiesSet, 0);
}

TEST_F(HostingSteps, RunningRuntimeIsNotConfigured)
{
    host->initialize = 1;
    host->property = bridge.c_str();

    expectSuccess();

    EXPECT_EQ(host->propertiesSet, 0);
}

TEST_F(HostingSteps, ReplyOfTheBridgeWithWrongSizesIsAFailureAndTheNextStartSucceeds)
{
    const PackedReply whole = successfulBridge().reply;
    int attacks = 0;
    const auto expectFailureOf = [this, &attacks](const PackedReply& reply) {
        bridgeScript.reply = reply;
        EXPECT_THROW((void)runtime.entryPoints(), std::exception);
        ++attacks;
    };
    for (std::size_t size = 0; size < whole.bytes.size(); ++size)
        expectFailureOf(whole.cutTo(size));
    // The places of the lengths: of the handles, of the list of handles and of the first string.
    for (const std::size_t place : {std::size_t{4}, std::size_t{8}, std::size_t{16}}) {
        for (const std::uint32_t lie : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU})
            expectFailureOf(whole.withWordAt(place, lie));
    }
    std::cout << attacks << " wrong sizes\n";
    EXPECT_TRUE(runtime.description().framework.empty());

    bridgeScript.reply = whole;
    expectSuccess();
    EXPECT_EQ(host->initialized, 1) << "the host is not started again";
}

TEST_F(HostingSteps, ThreadsThatWaitForAHangingHostGoOnOnceItAnswers)
{
    constexpr int Threads = 8;
    std::atomic<bool> answers{false};
    host->initialize = 1;
    host->whenFailing = [&answers](hostfxr_error_writer_fn) {
        while (!answers)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    };
    std::atomic<int> started{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i)
        threads.emplace_back([&] { started += runtime.entryPoints().version == EntryPointsVersion ? 1 : 0; });

    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(started, 0);
    answers = true;
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(started, Threads);
    EXPECT_EQ(host->initialized, 1);
}
