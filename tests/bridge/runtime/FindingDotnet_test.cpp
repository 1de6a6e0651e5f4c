// .NET that is not there, that is too old, or that cannot start; and the same process after the cause is gone.
#include <tests/bridge/runtime/StartTest.h>

using namespace Quorvex::Velmora::TestSupport;
using testing::ElementsAre;
namespace fs = std::filesystem;

namespace
{

class FindingDotnet : public StartTest
{
protected:
    FindingDotnet() { fs::create_directories(root); }

    void layOutHost() const
    {
        fs::create_directories(root / "host");
        fs::copy(dotnetRoot() / "host" / "fxr", root / "host" / "fxr", fs::copy_options::recursive);
    }

    [[nodiscard]] fs::path framework() const { return root / "shared" / "Microsoft.NETCore.App"; }

    void layOutOldFramework() const
    {
        writeText(framework() / "6.0.36" / "Microsoft.NETCore.App.deps.json",
            R"({"runtimeTarget": {"name": ".NETCoreApp,Version=v6.0"}, "targets": {".NETCoreApp,Version=v6.0": {}}})");
    }

    const fs::path root = installation.root() / "dotnet";
};

constexpr const char* InstallOrPoint = "RuntimeOptions::dotnetRoot";

} // namespace

TEST_F(FindingDotnet, NamesTheFolderWithoutAnInstallationAndConnectsOnceTheOptionIsCorrected)
{
    EXPECT_THAT(take({api, step("dotnet", root), "connect", "dotnet=", "connect"}),
        ElementsAre(failsNaming("'host/fxr'", root.string(), "Install the .NET runtime 8.0 or newer"), Connected));
}

TEST_F(FindingDotnet, NamesAFolderThatDoesNotExist)
{
    EXPECT_THAT(take({api, step("dotnet", root / "absent"), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("'host/fxr'", (root / "absent").string(), InstallOrPoint), Connected));
}

TEST_F(FindingDotnet, ReportsAnInstallationWithoutAHost)
{
    fs::create_directories(root / "host" / "fxr");

    EXPECT_THAT(take({api, step("dotnet", root), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("0x80008083", root.string(), InstallOrPoint), Connected));
}

TEST_F(FindingDotnet, ReportsAHostThatCannotBeOpened)
{
    writeText(root / "host" / "fxr" / "8.0.1" / "libhostfxr.so", "no library");

    EXPECT_THAT(take({api, step("dotnet", root), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("0x80008082", root.string(), "libhostfxr.so", "Repair or reinstall .NET"), Connected));
}

TEST_F(FindingDotnet, ReportsAnInstallationWithoutAFramework)
{
    layOutHost();

    EXPECT_THAT(take({api, step("dotnet", root), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("0x80008096", root.string(), InstallOrPoint), Connected));
}

TEST_F(FindingDotnet, ReportsATooOldRuntimeAndConnectsOnceANewerOneIsThere)
{
    layOutHost();
    layOutOldFramework();
    fs::create_directory_symlink(dotnetRoot() / "shared" / "Microsoft.NETCore.App", root / "newer");

    EXPECT_THAT(take({api, step("dotnet", root), "connect", renaming(framework(), root / "older"),
                    renaming(root / "newer", framework()), "connect"}),
        ElementsAre(failsNaming("0x80008096", "'Microsoft.NETCore.App', version '8.0.0'", "6.0.36", root.string(),
                        "Install the .NET runtime 8.0 or newer"),
            Connected));
}

TEST_F(FindingDotnet, NamesThePlacesOfThePlatformsOwnLookUp)
{
    installation.environment["DOTNET_ROOT"] = root.string();

    EXPECT_THAT(take({api, "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("0x80008083", "DOTNET_ROOT", "/usr/share/dotnet", InstallOrPoint), Connected));
}

TEST_F(FindingDotnet, SaysThatTheProcessMustBeRestartedWhenTheRuntimeItselfFailedToStart)
{
    installation.environment["DOTNET_GCHeapHardLimit"] = "1"; // No heap is that small.

    EXPECT_THAT(take({api, "connect", "connect"}),
        ElementsAre(failsNaming("0x80008089", "standard error", "ulimit", "Restart this process"),
            failsNaming("0x800080a3", "Restart this process")));
}

TEST_F(FindingDotnet, TakesNothingFromTheCurrentDirectory)
{
    installation.currentFolder = installation.copyVendor("version-5.2", "current");
    for (const char* name :
        {"libhostfxr.so", "libnethost.so", "libcoreclr.so", "Velmora.Bridge.dll", "Velmora.Bridge.runtimeconfig.json",
            "Velmora.Bridge.deps.json", "libSystem.Native.so", "libSystem.Globalization.Native.so", "libicuuc.so.100"})
        writeText(installation.currentFolder / name, "not to be read");

    EXPECT_THAT(take({"connect", api, "connect"}),
        ElementsAre(failsNaming(installation.library().string()), testing::StrEq("connected 3.0.0.0")));
}

TEST_F(FindingDotnet, RefusesNewOptionsOnceItRuns)
{
    EXPECT_THAT(take({api, "connect", api, "drives"}),
        ElementsAre(Connected, testing::StartsWith("failed std::logic_error: "), testing::_, testing::_));
}

TEST_F(FindingDotnet, NeedsNoRightToWrite)
{
    const fs::path vendor = installation.copyVendor("fitting");
    std::vector<fs::path> before;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(installation.root())) {
        before.push_back(entry.path());
        fs::permissions(entry.path(), fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
            fs::perm_options::remove);
    }

    const auto lines = take({step("api", vendor), "connect", "drives"});

    std::vector<fs::path> after;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(installation.root())) {
        after.push_back(entry.path());
        fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add);
    }
    EXPECT_THAT(lines, ElementsAre(Connected, testing::_, testing::_));
    EXPECT_THAT(after, testing::UnorderedElementsAreArray(before));
}
