// A second host in a process in which .NET runs already, as when another part of the process uses .NET.
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#ifdef _WIN32
#include <windows.h>
#endif

#include <velmora/bridge/boundary/OwnedReply.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/bridge/runtime/NativeLibrary.h>
#include "tests/bridge/runtime/Installation.h"

using namespace Quorvex::Velmora::Tessaport;
using namespace Quorvex::Velmora::TestSupport;

namespace
{

namespace fs = std::filesystem;

// A function of the host library that is loaded, or null.
template <class Function>
Function loadedHostFunction(const char* name)
{
#ifdef _WIN32
    void* const address = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"hostfxr.dll"), name));
    return reinterpret_cast<Function>(address);
#else
    return NativeLibrary::open("libhostfxr.so").symbol<Function>(name);
#endif
}

void HOSTFXR_CALLTYPE writeNothing(const char_t*) {}

// A .runtimeconfig.json that asks for a version of the framework and has a property of its own.
std::string configuration(const std::string& version)
{
    return R"({"runtimeOptions": {"rollForward": "Major", "framework": {"name": "Microsoft.NETCore.App", "version": ")" +
           version + R"("}, "configProperties": {"Velmora.Test": "another"}}})";
}

// A copy of the bridge that asks for another version. It is in the build tree, because on Windows no one can remove
// what this process has loaded.
fs::path bridgeAskingFor(const std::string& version)
{
    fs::path bridge = hostFile("bridge-" + version);
    fs::remove_all(bridge);
    fs::copy(bridgeOfBuild(), bridge);
    writeText(bridge / "Velmora.Bridge.runtimeconfig.json", configuration(version));
    return bridge;
}

class RunningRuntime : public testing::Test
{
protected:
    RunningRuntime()
    {
        runtime.setBridgeFolder(bridgeOfBuild());
        if (runtime.description().framework.empty())
            runtime.setOptions({vendorFolder("fitting"), {}});
        (void)runtime.entryPoints();
    }

    HostingStatus join(const fs::path& bridgeFolder)
    {
        const auto second = HostFxr::system();
        const HostingStatus opened = second->open({});
        return opened.succeeded() ? second->start(bridgeFolder, startBridge) : opened;
    }

    std::int32_t start(TessaportEntryPoints& table)
    {
        const std::u16string api = vendorFolder("fitting").u16string();
        const VelmoraString apiFolder{api.data(), api.size()};
        OwnedReply reply;
        reply.setEntryPoints(runtime.entryPoints());
        const std::int32_t row = startBridge(&table, &apiFolder, reply.fill());
        message = row == 0 ? std::wstring() : reply.message();
        return row;
    }

    ClrRuntime& runtime = ClrRuntime::ofProcess();
    StartBridge startBridge = nullptr;
    std::wstring message;
};

} // namespace

TEST_F(RunningRuntime, IsJoinedByASecondHost)
{
    ASSERT_TRUE(join(bridgeOfBuild()).succeeded());
    TessaportEntryPoints table = expectedEntryPoints();

    EXPECT_EQ(start(table), 0);
    EXPECT_NE(table.request, nullptr);
}

TEST_F(RunningRuntime, RefusesATableThatWasMadeForAnotherBridge)
{
    ASSERT_TRUE(join(bridgeOfBuild()).succeeded());

    using Member = std::uint32_t TessaportEntryPoints::*;
    for (const Member member : {&TessaportEntryPoints::version, &TessaportEntryPoints::size,
             &TessaportEntryPoints::argumentsSize, &TessaportEntryPoints::requestCount}) {
        for (const std::uint32_t difference : {1U, 8U, ~0U, ~7U}) {
            TessaportEntryPoints table = expectedEntryPoints();
            table.*member += difference;

            EXPECT_EQ(start(table), 6);
            EXPECT_EQ(table.request, nullptr);
            EXPECT_THAT(message, testing::HasSubstr(L"Install the library and its bridge folder from one release"));
        }
    }
    TessaportEntryPoints empty{};
    EXPECT_EQ(start(empty), 6);
}

TEST_F(RunningRuntime, IsJoinedByAHostWithOtherProperties)
{
    EXPECT_TRUE(join(bridgeAskingFor("8.0.0")).succeeded());
    EXPECT_NE(startBridge, nullptr);
}

TEST_F(RunningRuntime, CannotBeJoinedByAHostThatNeedsANewerFramework)
{
    const HostingStatus status = join(bridgeAskingFor("99.0.0"));

    EXPECT_EQ(static_cast<std::uint32_t>(status.code), 0x800080a5U);
    EXPECT_THAT(status.details, testing::HasSubstr("99.0.0"));
    EXPECT_EQ(startBridge, nullptr);
}

// The host may collect what hostfxr writes, as this library does during the start.
TEST_F(RunningRuntime, GivesTheHostItsOwnErrorWriterBack)
{
    const auto setWriter = loadedHostFunction<hostfxr_set_error_writer_fn>("hostfxr_set_error_writer");
    ASSERT_NE(setWriter, nullptr);
    (void)setWriter(&writeNothing);

    EXPECT_TRUE(join(bridgeOfBuild()).succeeded());
    EXPECT_EQ(setWriter(&writeNothing), &writeNothing);
    EXPECT_FALSE(join(bridgeAskingFor("99.0.0")).succeeded());
    EXPECT_EQ(setWriter(nullptr), &writeNothing);
}
