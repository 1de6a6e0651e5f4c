// Native libraries that the sync application's assembly brings along.
#include "tests/bridge/runtime/StartTest.h"

using namespace Quorvex::Velmora::TestSupport;
using testing::ElementsAre;
namespace fs = std::filesystem;

namespace
{

#ifdef _WIN32
constexpr const char* LibraryName = "velmora_vendor_native.dll";
constexpr const char* Runtime = "win";
#else
constexpr const char* LibraryName = "libvelmora_vendor_native.so";
constexpr const char* Runtime = "unix";
#endif

// A .deps.json that names the native library in the folder that packages use for it.
std::string dependenciesWithLibrary()
{
    const std::string library = std::string("runtimes/") + Runtime + "/native/" + LibraryName;
    return R"({"runtimeTarget": {"name": ".NETCoreApp,Version=v8.0"}, "targets": {".NETCoreApp,Version=v8.0": {)"
           R"("Quorvex.Tessaport.API/3.0.0": {"runtime": {"Quorvex.Tessaport.API.dll": {}, "Vendor.Parts.dll": {}}, )"
           R"("runtimeTargets": {")" +
           library + R"(": {"rid": ")" + Runtime +
           R"(", "assetType": "native"}}}}}, "libraries": {"Quorvex.Tessaport.API/3.0.0": )"
           R"({"type": "project", "serviceable": false, "sha512": ""}}})";
}

class VendorLibraries : public StartTest
{
protected:
    void putLibraryInto(const fs::path& folder) const
    {
        fs::create_directories(folder);
        fs::copy_file(hostFile(VELMORA_VENDOR_NATIVE_NAME), folder / LibraryName);
    }

    std::vector<std::string> connectAndCall()
    {
        return take({step("api", vendor), "connect", "in-workspace", "connect"});
    }

    const fs::path vendor = installation.copyVendor("fitting");
};

const auto Called = testing::StrEq("in workspace 1");

} // namespace

TEST_F(VendorLibraries, AreFoundBesideTheAssembly)
{
    putLibraryInto(vendor);

    EXPECT_THAT(connectAndCall(), ElementsAre(Connected, Called, Connected));
}

TEST_F(VendorLibraries, AreFoundBesideTheAssemblyWithoutADependencyFile)
{
    fs::remove(vendor / "Quorvex.Tessaport.API.deps.json");
    putLibraryInto(vendor);

    EXPECT_THAT(connectAndCall(), ElementsAre(Connected, Called, Connected));
}

TEST_F(VendorLibraries, AreFoundWhereTheDependencyFileNamesThem)
{
    writeText(vendor / "Quorvex.Tessaport.API.deps.json", dependenciesWithLibrary());
    putLibraryInto(vendor / "runtimes" / Runtime / "native");

    EXPECT_THAT(connectAndCall(), ElementsAre(Connected, Called, Connected));
}

TEST_F(VendorLibraries, AreNamedWhenTheyAreMissing)
{
    EXPECT_THAT(connectAndCall(), ElementsAre(Connected, failsNaming("velmora_vendor_native"), Connected));
}
