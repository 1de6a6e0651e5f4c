// A host written for .NET, which has assemblies of its own loaded before it uses this library through native code.
#include "tests/bridge/runtime/StartTest.h"

using namespace Quorvex::Velmora::TestSupport;
using testing::ElementsAre;
namespace fs = std::filesystem;

namespace
{

constexpr const char* AssemblyName = "Quorvex.Tessaport.API.dll";

class ManagedHost : public testing::Test
{
protected:
    static std::vector<std::string> connect(
        const std::vector<std::string>& loadedBefore, const fs::path& library = libraryOfBuild().parent_path())
    {
        const ChildResult result = runManagedHost(vendorFolder("fitting"), loadedBefore, library);
        EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
        return linesOf(result);
    }
};

} // namespace

TEST_F(ManagedHost, Connects) { EXPECT_THAT(connect({}), ElementsAre(testing::StrEq("connected 3.0.0.0"))); }

TEST_F(ManagedHost, ConnectsWhenItHasLoadedTheSameAssemblyItself)
{
    const fs::path assembly = vendorFolder("fitting") / AssemblyName;

    EXPECT_THAT(connect({assembly.u8string()}), ElementsAre(testing::StrEq("connected 3.0.0.0")));
}

TEST_F(ManagedHost, IsToldWhenItHasLoadedAnotherAssemblyOfThatName)
{
    const fs::path other = vendorFolder("version-5.2") / AssemblyName;

    EXPECT_THAT(
        connect({other.u8string()}), ElementsAre(failsNaming(other.u8string(), "is already loaded in this process",
                                         (vendorFolder("fitting") / AssemblyName).u8string(), "Restart this process")));
}

TEST_F(ManagedHost, IsToldWhenTheApiAssemblyIsFoundInTheBridgeFolder)
{
    const Installation installation;
    // Without this file the runtime takes any assembly beside the bridge.
    fs::remove(installation.bridge() / "Velmora.Bridge.deps.json");
    const fs::path intruder = installation.bridge() / AssemblyName;
    fs::copy_file(vendorFolder("version-5.2") / AssemblyName, intruder);

    EXPECT_THAT(connect({}, installation.library()),
        ElementsAre(failsNaming(intruder.u8string(), (vendorFolder("fitting") / AssemblyName).u8string(),
            "Remove that file", "restart this process")));
}
