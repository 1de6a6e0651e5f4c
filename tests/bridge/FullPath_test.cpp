// Full paths as the managed runtime makes them.
#include <algorithm>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <velmora/api/Exceptions.h>
#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/FullPath.h>
#include <velmora/platform/NativePath.h>
#include "tests/support/ScriptedTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using Tessaport::getFullPath;

class FullPath : public ScriptedTest
{
};

std::wstring inCurrentFolder(const char* name)
{
    return Common::wideText((std::filesystem::current_path() / name).make_preferred());
}

// The platform's own form of a path that begins at the root.
std::wstring onCurrentDrive(std::wstring path)
{
    std::replace(path.begin(), path.end(), L'/', static_cast<wchar_t>(std::filesystem::path::preferred_separator));
    return std::filesystem::current_path().root_name().wstring() + path;
}

TEST_F(FullPath, OfARelativePathIsInTheCurrentFolder)
{
    EXPECT_EQ(getFullPath(L"a.txt"), inCurrentFolder("a.txt"));
    EXPECT_EQ(getFullPath(L"x/../a.txt"), inCurrentFolder("a.txt"));
}

TEST_F(FullPath, HasNoDots)
{
    EXPECT_EQ(getFullPath(L"/a/./b/../c"), onCurrentDrive(L"/a/c"));
    EXPECT_EQ(getFullPath(L"/../.."), onCurrentDrive(L"/"));
}

#ifdef _WIN32
TEST_F(FullPath, TakesBackSlashesAsSeparators) { EXPECT_EQ(getFullPath(L"/a\\..\\b"), onCurrentDrive(L"/b")); }
#else
TEST_F(FullPath, LeavesBackSlashesWhereTheyAreNoSeparators) { EXPECT_EQ(getFullPath(L"/a\\..\\b"), L"/a\\..\\b"); }
#endif

TEST_F(FullPath, KeepsEveryCharacter)
{
    EXPECT_EQ(getFullPath(L"/\xE9\x4E2D\U0001F600/\xD800"), onCurrentDrive(L"/\xE9\x4E2D\U0001F600/\xD800"));
}

TEST_F(FullPath, OfALongPathIsComplete)
{
    const std::wstring path = L"/" + std::wstring(30'000, L'x');

    EXPECT_EQ(getFullPath(path), onCurrentDrive(path));
}

TEST_F(FullPath, OfAnInvalidPathIsAManagedFailure)
{
    EXPECT_THROW((void)getFullPath(L""), Tessaport::ManagedFailure);
    EXPECT_THROW((void)getFullPath(std::wstring(L"a\0b", 3)), Tessaport::ManagedFailure);
}

TEST_F(FullPath, OfAnInvalidPathIsAnApiExceptionInsideAnOperation)
{
    EXPECT_THROW(Tessaport::runWhileHandlingExceptions([] { (void)getFullPath(L""); }), TessaportAPI::ApiException);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
