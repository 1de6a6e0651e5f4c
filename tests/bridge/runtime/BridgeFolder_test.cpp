// The managed half of the library: missing, damaged, or without the files that are usually beside it.
#include "tests/bridge/runtime/StartTest.h"
#include "tests/support/Links.h"

using namespace Quorvex::Velmora::TestSupport;
using testing::ElementsAre;
namespace fs = std::filesystem;

namespace
{

using testing::_;

class BridgeFolder : public StartTest
{
protected:
    [[nodiscard]] fs::path file(const std::string& extension) const
    {
        return installation.bridge() / ("Velmora.Bridge" + extension);
    }

    [[nodiscard]] fs::path away() const { return installation.root() / "away"; }

    // Connects with other contents of the file, and again after it is restored.
    std::vector<std::string> connectWithAndWithout(const fs::path& damaged, const char* text)
    {
        fs::rename(damaged, away());
        writeText(damaged, text);
        return take({api, "connect", renaming(away(), damaged), "connect"});
    }
};

constexpr const char* ApiAssemblyName = "Quorvex.Tessaport.API.dll";
constexpr const char* Reinstall = "Reinstall this library with its bridge folder";

} // namespace

TEST_F(BridgeFolder, IsNamedWhenTheAssemblyIsMissing)
{
    EXPECT_THAT(take({renaming(file(".dll"), away()), api, "connect", renaming(away(), file(".dll")), "connect"}),
        ElementsAre(failsNaming("Velmora.Bridge.dll", installation.bridge().u8string(), Reinstall), Connected));
}

TEST_F(BridgeFolder, IsNamedWhenTheConfigurationIsMissing)
{
    const fs::path config = file(".runtimeconfig.json");

    EXPECT_THAT(take({renaming(config, away()), api, "connect", renaming(away(), config), "connect"}),
        ElementsAre(
            failsNaming("Velmora.Bridge.runtimeconfig.json", installation.bridge().u8string(), Reinstall), Connected));
}

TEST_F(BridgeFolder, IsNamedWhenItIsMissing)
{
    EXPECT_THAT(take({renaming(installation.bridge(), away()), api, "connect", renaming(away(), installation.bridge()),
                    "connect"}),
        ElementsAre(failsNaming(installation.bridge().u8string(), Reinstall), Connected));
}

TEST_F(BridgeFolder, IsNamedWhenTheConfigurationIsNotJson)
{
    EXPECT_THAT(connectWithAndWithout(file(".runtimeconfig.json"), "{ no json"),
        ElementsAre(failsNaming("0x80008093", installation.bridge().u8string(), Reinstall), Connected));
}

TEST_F(BridgeFolder, IsNamedWhenTheConfigurationAsksForASelfContainedRuntime)
{
    EXPECT_THAT(
        connectWithAndWithout(file(".runtimeconfig.json"),
            R"({"runtimeOptions": {"includedFrameworks": [{"name": "Microsoft.NETCore.App", "version": "8.0.0"}]}})"),
        ElementsAre(
            failsNaming("0x80008093", "self-contained", installation.bridge().u8string(), Reinstall), Connected));
}

TEST_F(BridgeFolder, IsNamedWhenTheAssemblyIsATextFile)
{
    EXPECT_THAT(connectWithAndWithout(file(".dll"), "no assembly"),
        ElementsAre(failsNaming(installation.bridge().u8string(), Reinstall), Connected));
}

#ifdef _WIN32

TEST_F(BridgeFolder, IsNamedWhenNethostIsNotALibrary)
{
    EXPECT_THAT(connectWithAndWithout(installation.bridge() / "nethost.dll", "no library"),
        ElementsAre(failsNaming("0x800700c1", "nethost.dll", installation.bridge().u8string(), Reinstall), Connected));
}

#endif

TEST_F(BridgeFolder, IsFoundThroughALinkToTheLibrary)
{
    const fs::path links = installation.root() / "links";
    fs::create_directory(links);
    const Link link(
        fs::path("..") / installation.library().filename() / VELMORA_LIBRARY_NAME, links / VELMORA_LIBRARY_NAME);
    installation.takeLibraryFrom(links);

    EXPECT_THAT(take({renaming(file(".dll"), away()), api, "connect", renaming(away(), file(".dll")), "connect"}),
        ElementsAre(failsNaming(installation.bridge().u8string()), Connected));
}

TEST_F(BridgeFolder, ServesWithoutADependencyFile)
{
    fs::remove(file(".deps.json"));

    EXPECT_THAT(take({api, "connect", "drives"}), ElementsAre(Connected, _, _));
}

TEST_F(BridgeFolder, IsNamedWhenTheDependencyFileIsBroken)
{
    EXPECT_THAT(connectWithAndWithout(file(".deps.json"), "{ no json"),
        ElementsAre(failsNaming(installation.bridge().u8string(), Reinstall), Connected));
}

TEST_F(BridgeFolder, IsNotUsedForTheApiAssembly)
{
    fs::copy_file(vendorFolder("version-5.2") / ApiAssemblyName, installation.bridge() / ApiAssemblyName);

    EXPECT_THAT(take({api, "connect"}), ElementsAre(testing::StrEq("connected 3.0.0.0")));
}

TEST_F(BridgeFolder, IsNotUsedForTheApiAssemblyWithoutADependencyFileEither)
{
    // Without this file the runtime may take any assembly beside the bridge.
    fs::remove(file(".deps.json"));
    fs::copy_file(vendorFolder("version-5.2") / ApiAssemblyName, installation.bridge() / ApiAssemblyName);

    EXPECT_THAT(take({api, "connect"}), ElementsAre(testing::StrEq("connected 3.0.0.0")));
}
