// A second host in a process in which .NET runs already, as when another part of the process uses .NET, too.
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tests/bridge/runtime/Installation.h>
#include <velmora/bridge/runtime/ClrRuntime.h>

using namespace Quorvex::Velmora::Tessaport;
using namespace Quorvex::Velmora::TestSupport;

namespace
{

// A .runtimeconfig.json that asks for a version of the framework and has a property of its own.
std::string configuration(const std::string& version)
{
    return R"({"runtimeOptions": {"rollForward": "Major", "framework": {"name": "Microsoft.NETCore.App", "version": ")" +
           version + R"("}, "configProperties": {"Velmora.Test": "another"}}})";
}

class RunningRuntime : public testing::Test
{
protected:
    RunningRuntime()
    {
        runtime.setBridgeFolder(installation.bridge());
        if (runtime.description().framework.empty())
            runtime.setLocations({vendorFolder("fitting"), {}});
        (void)runtime.entryPoints();
    }

    HostingStatus join(const std::filesystem::path& bridgeFolder)
    {
        const auto second = HostFxr::system();
        const HostingStatus opened = second->open({});
        return opened.succeeded() ? second->start(bridgeFolder, startBridge) : opened;
    }

    std::int32_t start(TessaportEntryPoints& table)
    {
        const std::u16string api = vendorFolder("fitting").u16string();
        const VelmoraText apiFolder{api.data(), api.size()};
        VelmoraReply reply{};
        const std::int32_t row = startBridge(&table, &apiFolder, &reply);
        runtime.entryPoints().releaseReply(&reply);
        return row;
    }

    Installation installation;
    ClrRuntime& runtime = ClrRuntime::ofProcess();
    StartBridge startBridge = nullptr;
};

} // namespace

TEST_F(RunningRuntime, IsJoinedByASecondHost)
{
    ASSERT_TRUE(join(installation.bridge()).succeeded());
    TessaportEntryPoints table{};
    table.version = EntryPointsVersion;
    table.size = sizeof table;

    EXPECT_EQ(start(table), 0);
    EXPECT_NE(table.createService, nullptr);
}

TEST_F(RunningRuntime, RefusesATableOfAnotherSizeOrVersion)
{
    ASSERT_TRUE(join(installation.bridge()).succeeded());

    for (const auto& [version, size] : {std::pair(EntryPointsVersion + 1, sizeof(TessaportEntryPoints)),
             std::pair(EntryPointsVersion, sizeof(TessaportEntryPoints) - 8),
             std::pair(EntryPointsVersion, sizeof(TessaportEntryPoints) + 8), std::pair(0U, std::size_t{0})}) {
        TessaportEntryPoints table{};
        table.version = version;
        table.size = static_cast<std::uint32_t>(size);

        EXPECT_EQ(start(table), 6);
        EXPECT_EQ(table.createService, nullptr);
    }
}

TEST_F(RunningRuntime, IsJoinedByAHostWithOtherProperties)
{
    writeText(installation.bridge() / "Velmora.Bridge.runtimeconfig.json", configuration("8.0.0"));

    EXPECT_TRUE(join(installation.bridge()).succeeded());
    EXPECT_NE(startBridge, nullptr);
}

TEST_F(RunningRuntime, CannotBeJoinedByAHostThatNeedsANewerFramework)
{
    writeText(installation.bridge() / "Velmora.Bridge.runtimeconfig.json", configuration("99.0.0"));

    const HostingStatus status = join(installation.bridge());

    EXPECT_EQ(static_cast<std::uint32_t>(status.code), 0x800080a5U);
    EXPECT_THAT(status.details, testing::HasSubstr("99.0.0"));
    EXPECT_EQ(startBridge, nullptr);
}
