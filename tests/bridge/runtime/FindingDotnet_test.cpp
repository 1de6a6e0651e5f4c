// .NET that is missing, too old, or unable to start; and the same process after the cause is removed.
#include <cstdint>
#include <fstream>
#include <stdexcept>

#include "tests/bridge/runtime/StartTest.h"

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

// Writes the processor's number in the header of a library, ELF or PE.
void pretendToBeForArm64(const fs::path& library)
{
    std::fstream file(library, std::ios::in | std::ios::out | std::ios::binary);
#ifdef _WIN32
    constexpr std::uint16_t Arm64 = 0xaa64;
    std::uint32_t header = 0;
    file.seekg(0x3c).read(reinterpret_cast<char*>(&header), sizeof header);
    file.seekp(header + 4);
#else
    constexpr std::uint16_t Arm64 = 183;
    file.seekp(18);
#endif
    file.write(reinterpret_cast<const char*>(&Arm64), sizeof Arm64);
    if (!file)
        throw std::runtime_error("the header could not be changed");
}

constexpr const char* InstallOrPoint = "RuntimeOptions::dotnetRoot";

#ifdef _WIN32
constexpr const char* HostLibrary = "hostfxr.dll";
constexpr const char* UsualPlace = "C:\\Program Files\\dotnet";
constexpr const char* UsualCause = "limit on memory";
constexpr const char* NamesOfLibraries[] = {"hostfxr.dll", "hostpolicy.dll", "nethost.dll", "coreclr.dll",
    "System.Private.CoreLib.dll", "clrjit.dll", "icu.dll", "icuuc.dll"};
#else
constexpr const char* HostLibrary = "libhostfxr.so";
constexpr const char* UsualPlace = "/usr/share/dotnet";
constexpr const char* UsualCause = "ulimit";
constexpr const char* NamesOfLibraries[] = {"libhostfxr.so", "libnethost.so", "libcoreclr.so", "libSystem.Native.so",
    "libSystem.Globalization.Native.so", "libicuuc.so.100"};
#endif
constexpr const char* NamesOfTheBridge[] = {
    "Velmora.Bridge.dll", "Velmora.Bridge.runtimeconfig.json", "Velmora.Bridge.deps.json"};

} // namespace

TEST_F(FindingDotnet, NamesTheFolderWithoutAnInstallationAndConnectsOnceTheOptionIsCorrected)
{
    EXPECT_THAT(take({api, step("dotnet", root), "connect", "dotnet=", "connect"}),
        ElementsAre(failsNaming("'host/fxr'", root.u8string(), "Install the .NET runtime 8.0 or newer"), Connected));
}

TEST_F(FindingDotnet, NamesAFolderThatDoesNotExist)
{
    EXPECT_THAT(take({api, step("dotnet", root / "absent"), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("'host/fxr'", (root / "absent").u8string(), InstallOrPoint), Connected));
}

TEST_F(FindingDotnet, ReportsAnInstallationWithoutAHost)
{
    fs::create_directories(root / "host" / "fxr");

    EXPECT_THAT(take({api, step("dotnet", root), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("0x80008083", root.u8string(), InstallOrPoint), Connected));
}

TEST_F(FindingDotnet, ReportsAHostThatCannotBeOpened)
{
    writeText(root / "host" / "fxr" / "8.0.1" / HostLibrary, "no library");

    EXPECT_THAT(take({api, step("dotnet", root), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("0x80008082", root.u8string(), HostLibrary, "Repair or reinstall .NET"), Connected));
}

TEST_F(FindingDotnet, ReportsAHostForAnotherArchitecture)
{
    layOutHost();
    for (const fs::directory_entry& version : fs::directory_iterator(root / "host" / "fxr"))
        pretendToBeForArm64(version.path() / HostLibrary);

    EXPECT_THAT(take({api, step("dotnet", root), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(
            failsNaming("0x80008082", root.u8string(), HostLibrary, "for the processor architecture of this program"),
            Connected));
}

TEST_F(FindingDotnet, ReportsAnInstallationWithoutAFramework)
{
    layOutHost();

    EXPECT_THAT(take({api, step("dotnet", root), "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("0x80008096", root.u8string(), InstallOrPoint), Connected));
}

TEST_F(FindingDotnet, ReportsATooOldRuntimeAndConnectsOnceANewerOneIsThere)
{
    layOutHost();
    layOutOldFramework();
    fs::copy(dotnetRoot() / "shared" / "Microsoft.NETCore.App", root / "newer", fs::copy_options::recursive);

    EXPECT_THAT(take({api, step("dotnet", root), "connect", renaming(framework(), root / "older"),
                    renaming(root / "newer", framework()), "connect"}),
        ElementsAre(failsNaming("0x80008096", "'Microsoft.NETCore.App', version '8.0.0'", "6.0.36", root.u8string(),
                        "Install the .NET runtime 8.0 or newer"),
            Connected));
}

#ifndef _WIN32

// Windows starts no program with a path of this length.
TEST_F(FindingDotnet, ServesFromAFolderWhosePathIsLongerThanAThousandCharacters)
{
    fs::path deep = root;
    while (deep.native().size() <= 1024)
        deep /= std::string(200, 'd');
    fs::create_directories(deep / "host");
    fs::copy(dotnetRoot() / "host" / "fxr", deep / "host" / "fxr", fs::copy_options::recursive);
    fs::create_directory_symlink(dotnetRoot() / "shared", deep / "shared");

    EXPECT_THAT(take({api, step("dotnet", deep), "connect"}), ElementsAre(Connected));
}

#endif

TEST_F(FindingDotnet, NamesThePlacesOfThePlatformsOwnLookUp)
{
    installation.environment["DOTNET_ROOT"] = root.u8string();

    EXPECT_THAT(take({api, "connect", step("dotnet", dotnetRoot()), "connect"}),
        ElementsAre(failsNaming("0x80008083", "DOTNET_ROOT", UsualPlace, InstallOrPoint), Connected));
}

TEST_F(FindingDotnet, SaysThatTheProcessMustBeRestartedWhenTheRuntimeItselfFailedToStart)
{
    installation.environment["DOTNET_GCHeapHardLimit"] = "1"; // No heap is that small.

    EXPECT_THAT(take({api, "connect", "connect"}),
        ElementsAre(failsNaming("0x80008089", "standard error", UsualCause, "Restart this process"),
            failsNaming("0x800080a3", "Restart this process")));
}

TEST_F(FindingDotnet, TakesNothingFromTheCurrentDirectory)
{
    installation.currentFolder = installation.copyVendor("version-5.2", "current");
    for (const char* const name : NamesOfLibraries)
        writeText(installation.currentFolder / name, "not to be read");
    for (const char* const name : NamesOfTheBridge)
        writeText(installation.currentFolder / name, "not to be read");

    EXPECT_THAT(take({"connect", api, "connect"}),
        ElementsAre(failsNaming(installation.library().u8string()), testing::StrEq("connected 3.0.0.0")));
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
