// A .NET in the folder beside the bridge, as complete archives have it.
#include "tests/bridge/runtime/StartTest.h"

using namespace Quorvex::Velmora::TestSupport;
using testing::ElementsAre;
namespace fs = std::filesystem;

namespace
{

#ifdef _WIN32
constexpr const char* HostLibrary = "hostfxr.dll";
#else
constexpr const char* HostLibrary = "libhostfxr.so";
#endif
constexpr const char* Reinstall = "Reinstall this library with its dotnet folder";

class ShippedDotnet : public StartTest
{
protected:
    void layOutHost() const
    {
        fs::create_directories(shipped / "host");
        fs::copy(dotnetRoot() / "host" / "fxr", shipped / "host" / "fxr", fs::copy_options::recursive);
    }

    void layOut() const
    {
        layOutHost();
        fs::create_directories(shipped / "shared");
        fs::copy(dotnetRoot() / "shared" / "Microsoft.NETCore.App", shipped / "shared" / "Microsoft.NETCore.App",
            fs::copy_options::recursive);
    }

    // The rest of the machine has none then.
    void hideOtherInstallations()
    {
        const fs::path empty = installation.root() / "empty";
        fs::create_directories(empty);
        installation.environment["DOTNET_ROOT"] = empty.u8string();
    }

    // As an unpacking that was interrupted leaves it.
    void layOutDamagedHost() const { writeText(shipped / "host" / "fxr" / "99.0.0" / HostLibrary, "no library"); }

    // Connects while the folder is there, and again without it.
    std::vector<std::string> connectWithAndWithout()
    {
        return take({api, "connect", renaming(shipped, installation.root() / "away"), "connect"});
    }

    const fs::path shipped = installation.bridge().parent_path() / "dotnet";
};

} // namespace

TEST_F(ShippedDotnet, IsUsedWhenItIsThere)
{
    layOut();
    hideOtherInstallations();

    EXPECT_THAT(take({api, "connect"}), ElementsAre(Connected));
}

TEST_F(ShippedDotnet, IsNotUsedWhenTheOptionNamesAnotherFolder)
{
    layOut();
    const fs::path absent = installation.root() / "absent";

    EXPECT_THAT(take({api, step("dotnet", absent), "connect", "dotnet=", "connect"}),
        ElementsAre(failsNaming(absent.u8string(), "RuntimeOptions::dotnetRoot names"), Connected));
}

TEST_F(ShippedDotnet, DoesNoHarmWhenItIsDamagedAndTheOptionNamesAnotherFolder)
{
    layOutDamagedHost();

    EXPECT_THAT(take({api, step("dotnet", dotnetRoot()), "connect"}), ElementsAre(Connected));
}

TEST_F(ShippedDotnet, IsNamedWhenItIsEmpty)
{
    fs::create_directories(shipped);

    EXPECT_THAT(connectWithAndWithout(), ElementsAre(failsNaming("0x80008083", shipped.u8string(), Reinstall,
                                                         "remove that folder", "RuntimeOptions::dotnetRoot"),
                                             Connected));
}

TEST_F(ShippedDotnet, IsNamedWhenItIsAFile)
{
    writeText(shipped, "no folder");

    EXPECT_THAT(
        connectWithAndWithout(), ElementsAre(failsNaming("0x80008083", shipped.u8string(), Reinstall), Connected));
}

TEST_F(ShippedDotnet, IsNamedWhenItsHostCannotBeOpened)
{
    layOutDamagedHost();

    EXPECT_THAT(connectWithAndWithout(),
        ElementsAre(failsNaming("0x80008082", shipped.u8string(), HostLibrary, Reinstall), Connected));
}

TEST_F(ShippedDotnet, IsNamedWhenItHasNoFramework)
{
    layOutHost();

    EXPECT_THAT(take({api, "connect"}), ElementsAre(failsNaming("0x80008096", shipped.u8string(), Reinstall)));
}

TEST_F(ShippedDotnet, IsNotUsedInAProcessInWhichDotnetRunsAlready)
{
    layOutDamagedHost();

    const ChildResult result = runManagedHost(vendorFolder("fitting"), {}, installation.library());

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
    EXPECT_THAT(linesOf(result), ElementsAre(testing::StrEq("connected 3.0.0.0")));
}
