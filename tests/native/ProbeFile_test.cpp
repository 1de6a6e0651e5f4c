// How the probe file is created in a temporary folder that other users can write to.
#include "velmora/native/ProbeFile.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <velmora/api/QVString.h>
#include <velmora/platform/NativePath.h>
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
namespace fs = std::filesystem;

class ProbeFile : public ::testing::Test
{
protected:
    TemporaryFolder temporary;
    EnvironmentVariable variable{TemporaryFolderVariable, temporary.path().u8string()};
};

// One line, with the line end of the platform.
#ifdef _WIN32
constexpr std::string_view Content = "dummy\r\n";
#else
constexpr std::string_view Content = "dummy\n";
#endif

TEST_F(ProbeFile, IsRemovedAtTheEndOfTheScope)
{
    Common::QVString path;
    {
        const ProbeFileRemover remover(path);
        createProbeFile(path);
        EXPECT_EQ(fs::file_size(Common::nativePath(path.w_str())), Content.size());
    }
    EXPECT_FALSE(fs::exists(Common::nativePath(path.w_str())));
}

TEST_F(ProbeFile, IsNotCreatedOverAFile)
{
    const fs::path taken = temporary.path() / "taken.txt";
    std::ofstream(taken) << "kept";

    EXPECT_FALSE(tryCreateProbeFile(Common::QVString(Common::wideText(taken).c_str())));

    EXPECT_EQ(fs::file_size(taken), 4U);
}

#ifndef _WIN32

TEST_F(ProbeFile, IsReadableByItsOwnerOnly)
{
    Common::QVString path;
    const ProbeFileRemover remover(path);
    createProbeFile(path);

    EXPECT_EQ(
        fs::status(Common::nativePath(path.w_str())).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ProbeFile, IsNotCreatedThroughALink)
{
    const fs::path target = temporary.path() / "target.txt";
    const fs::path link = temporary.path() / "link.txt";
    fs::create_symlink(target, link);

    EXPECT_FALSE(tryCreateProbeFile(Common::QVString(Common::wideText(link).c_str())));

    EXPECT_FALSE(fs::exists(target));
}

#endif

} // namespace
} // namespace Quorvex::Velmora::TestSupport
