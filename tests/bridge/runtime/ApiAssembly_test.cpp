// The sync application's assembly: found, checked, bound, and reported if it does not fit.
#include <algorithm>

#include "tests/bridge/runtime/StartTest.h"

using namespace Quorvex::Velmora::TestSupport;
using testing::ElementsAre;
using testing::StrEq;
namespace fs = std::filesystem;

namespace
{

using testing::_;

constexpr const char* AssemblyName = "Quorvex.Tessaport.API.dll";
constexpr const char* SetFolder = "RuntimeOptions::apiFolder";
constexpr const char* FirstDrive = "drive Projects at C:\\Projects of 1";

class ApiAssembly : public StartTest
{
protected:
    ApiAssembly() { fs::create_directories(folder); }

    // Connects with `folder`, and again with the folder of an assembly that fits.
    std::vector<std::string> connectThenCorrect() { return take({step("api", folder), "connect", api, "connect"}); }

    const fs::path folder = installation.root() / "api";
};

class VendorVariant : public ApiAssembly, public testing::WithParamInterface<std::pair<const char*, const char*>>
{
};

} // namespace

TEST_F(ApiAssembly, IsReportedAsMissingWhenTheFolderDoesNotExist)
{
    fs::remove(folder);

    EXPECT_THAT(connectThenCorrect(),
        ElementsAre(failsNaming(AssemblyName, folder.u8string(), "is not a folder", SetFolder), Connected));
}

TEST_F(ApiAssembly, IsReportedAsMissingInAFolderWhoseNameIsNotText)
{
    EXPECT_THAT(take({step("api-of-no-text", folder), "connect", api, "connect"}),
        ElementsAre(failsNaming(AssemblyName, folder.u8string(), "is not a folder", SetFolder), Connected));
}

TEST_F(ApiAssembly, IsReportedAsMissingInAnEmptyFolderAndFoundOnceItIsThere)
{
    const fs::path vendor = installation.copyVendor("fitting");

    EXPECT_THAT(take({step("api", folder), "connect", renaming(folder, installation.root() / "away"),
                    renaming(vendor, folder), "connect"}),
        ElementsAre(failsNaming(AssemblyName, folder.u8string(), "is not there", SetFolder), Connected));
}

TEST_F(ApiAssembly, IsReportedAsMissingWhenAFolderHasItsName)
{
    fs::create_directory(folder / AssemblyName);

    EXPECT_THAT(connectThenCorrect(), ElementsAre(failsNaming(folder.u8string(), SetFolder), Connected));
}

TEST_F(ApiAssembly, IsRefusedWhenItIsATextFile)
{
    writeText(folder / AssemblyName, "no assembly");

    EXPECT_THAT(connectThenCorrect(),
        ElementsAre(failsNaming((folder / AssemblyName).u8string(), "is not a .NET assembly", SetFolder), Connected));
}

TEST_F(ApiAssembly, IsRefusedWhenItIsEmpty)
{
    writeText(folder / AssemblyName, "");

    EXPECT_THAT(connectThenCorrect(),
        ElementsAre(failsNaming((folder / AssemblyName).u8string(), "is not a .NET assembly"), Connected));
}

TEST_F(ApiAssembly, IsRefusedWhenItIsANativeLibrary)
{
    fs::copy_file(hostFile(VELMORA_PLUGIN_NAME), folder / AssemblyName);

    EXPECT_THAT(connectThenCorrect(),
        ElementsAre(failsNaming((folder / AssemblyName).u8string(), "is not a .NET assembly"), Connected));
}

TEST_F(ApiAssembly, IsRefusedWhenItsAssemblyHasAnotherName)
{
    fs::copy_file(vendorFolder("misnamed") / "Vendor.Misnamed.dll", folder / AssemblyName);

    EXPECT_THAT(connectThenCorrect(),
        ElementsAre(failsNaming((folder / AssemblyName).u8string(), "holds the assembly 'Vendor.Misnamed'", SetFolder),
            Connected));
}

TEST_F(ApiAssembly, IsReportedWhenItIsCutShort)
{
    const fs::path whole = vendorFolder("fitting") / AssemblyName;
    const std::uintmax_t size = fs::file_size(whole);
    for (const std::uintmax_t kept : {size / 16, size / 8, size / 4, size / 2, size * 3 / 4, size - 512}) {
        fs::remove(folder / AssemblyName);
        fs::copy_file(whole, folder / AssemblyName);
        fs::resize_file(folder / AssemblyName, kept);

        const auto lines = take({step("api", folder), "connect"});

        EXPECT_THAT(lines, ElementsAre(failsNaming((folder / AssemblyName).u8string()))) << kept << " of " << size;
    }
}

TEST_F(ApiAssembly, IsFoundBesideTheLibraryWhenNoFolderIsSet)
{
    fs::copy(vendorFolder("fitting"), installation.library());

    EXPECT_THAT(take({"connect"}), ElementsAre(Connected));
}

TEST_F(ApiAssembly, IsFoundInAFolderRelativeToTheCurrentOne)
{
    installation.currentFolder = folder;
    const fs::path vendor = installation.copyVendor("fitting");

    EXPECT_THAT(take({step("api", ".." / vendor.filename()), "connect"}), ElementsAre(Connected));
}

TEST_F(ApiAssembly, NeedsNoDependencyFile)
{
    const fs::path vendor = installation.copyVendor("fitting");
    fs::remove(vendor / "Quorvex.Tessaport.API.deps.json");

    EXPECT_THAT(take({step("api", vendor), "connect", "drives"}), ElementsAre(Connected, StrEq(FirstDrive), _));
}

TEST_F(ApiAssembly, ServesWithABrokenDependencyFile)
{
    const fs::path vendor = installation.copyVendor("fitting");
    writeText(vendor / "Quorvex.Tessaport.API.deps.json", "{ no json");

    EXPECT_THAT(take({step("api", vendor), "connect", "drives"}), ElementsAre(Connected, StrEq(FirstDrive), _));
}

TEST_F(ApiAssembly, IsReportedWithTheAssemblyThatItNeedsAndThatIsMissing)
{
    const fs::path vendor = installation.copyVendor("fitting");
    fs::remove(vendor / "Vendor.Parts.dll");

    EXPECT_THAT(take({step("api", vendor), "connect", "drives", "connect"}),
        ElementsAre(Connected, failsNaming("Vendor.Parts"), Connected));
}

TEST_P(VendorVariant, ListsItsDrives)
{
    const auto [variant, version] = GetParam();

    EXPECT_THAT(take({step("api", vendorFolder(variant)), "connect", "drives", "folders"}),
        ElementsAre(StrEq(std::string("connected ") + version), StrEq(FirstDrive), _,
            StrEq("failed TessaportNotRunningException: The sync application is not running.")));
}

INSTANTIATE_TEST_SUITE_P(ApiAssembly, VendorVariant,
    testing::Values(std::pair("fitting", "3.0.0.0"), std::pair("version-0.5", "0.5.0.0"),
        std::pair("version-5.2", "5.2.0.0"), std::pair("strong-named", "5.2.0.0"),
        std::pair("without-exception", "3.0.0.0")),
    [](const auto& info) {
        std::string name = info.param.first;
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
        return name;
    });

TEST_F(ApiAssembly, ListsItsDrivesThroughABridgeBuiltForItsStrongName)
{
    installation.replaceBridge(vendorBridgeFolder());

    EXPECT_THAT(take({step("api", vendorFolder("strong-named")), "connect", "drives"}),
        ElementsAre(StrEq("connected 5.2.0.0"), StrEq(FirstDrive), _));
}

TEST_F(ApiAssembly, MayBeOlderThanTheOneTheBridgeWasBuiltForAndHaveNoStrongName)
{
    installation.replaceBridge(vendorBridgeFolder());

    EXPECT_THAT(take({step("api", vendorFolder("version-0.5")), "connect", "drives"}),
        ElementsAre(StrEq("connected 0.5.0.0"), StrEq(FirstDrive), _));
}

TEST_F(ApiAssembly, IsReportedWhenItHasNoServiceAndKeepsItsPlaceInTheProcess)
{
    const fs::path wrong = vendorFolder("without-service") / AssemblyName;

    EXPECT_THAT(take({step("api", wrong.parent_path()), "connect", api, "connect"}),
        ElementsAre(failsNaming(wrong.u8string(), "does not fit this library", "TessaportService",
                        "Install a version of the sync application", "restart this process"),
            failsNaming(wrong.u8string(), (vendorFolder("fitting") / AssemblyName).u8string(), "already loaded",
                "Restart this process")));
}

TEST_F(ApiAssembly, IsReportedOnlyForTheRequestWhoseMethodItLacks)
{
    const fs::path folderOfIt = vendorFolder("without-method");

    EXPECT_THAT(take({step("api", folderOfIt), "connect", "folders", "folders", "drives"}),
        ElementsAre(Connected,
            failsNaming((folderOfIt / AssemblyName).u8string(), "version 3.0.0.0", "GetChildFolders",
                "Install a version of the sync application"),
            failsNaming("GetChildFolders"), StrEq(FirstDrive), _));
}

TEST_F(ApiAssembly, IsReportedOnlyForTheRequestThatReadsAPropertyItLacks)
{
    const fs::path folderOfIt = vendorFolder("without-property");

    EXPECT_THAT(take({step("api", folderOfIt), "connect", "drives", "connect"}),
        ElementsAre(Connected,
            failsNaming((folderOfIt / AssemblyName).u8string(), "WorkspaceLocation",
                "Install a version of the sync application"),
            Connected));
}
