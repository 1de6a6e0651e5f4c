#include "velmora/platform/QrxQvFileSystemUtility.h"

#include <clocale>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include <velmora/platform/NativePath.h>
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/Links.h"
#include "tests/support/TemporaryFolder.h"

using namespace Quorvex::Velmora::Common;
using Quorvex::Velmora::TestSupport::EnvironmentVariable;
using Quorvex::Velmora::TestSupport::Link;
using Quorvex::Velmora::TestSupport::TemporaryFolder;
using Quorvex::Velmora::TestSupport::TemporaryFolderVariable;
using Utility = QrxQvFileSystemUtility;
namespace fs = std::filesystem;

namespace
{

std::wstring backSlashed(std::wstring text)
{
    for (wchar_t& c : text)
        c = c == L'/' ? L'\\' : c;
    return text;
}

// Windows adds the current drive to a path without one.
const std::wstring CurrentDrive = fs::current_path().root_name().wstring();

void makeFile(const fs::path& path) { std::ofstream(path) << "content"; }

class CurrentFolder
{
public:
    explicit CurrentFolder(const fs::path& folder) : former(fs::current_path()) { fs::current_path(folder); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() { fs::current_path(former); }

private:
    fs::path former;
};

// These tests run in the C locale, like a host that sets none, and every path has a name with non-ASCII characters.
class FileSystemUtility : public testing::Test
{
protected:
    FileSystemUtility()
    {
        EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
        fs::create_directories(root / "folder" / "inner");
        makeFile(root / "folder" / "file.txt");
    }

    // Returns a path in the root, in the platform's own form.
    [[nodiscard]] std::wstring in(const std::wstring& name = {}) const
    {
        return wideText(name.empty() ? root : root / nativePath(name));
    }

    // Returns its canonical form.
    [[nodiscard]] std::wstring key(const std::wstring& name = {}) const { return backSlashed(in(name)); }

    static std::wstring canonical(const std::wstring& path, const std::wstring& base = L"/nowhere")
    {
        return Utility::canonical(path, base);
    }

    TemporaryFolder folder;
    fs::path root = fs::canonical(folder.path());
};

} // namespace

TEST_F(FileSystemUtility, CanonicalIsTheSameForEitherSlash)
{
    EXPECT_EQ(canonical(in(L"folder/file.txt")), key(L"folder/file.txt"));
    EXPECT_EQ(canonical(key(L"folder/file.txt")), key(L"folder/file.txt"));
    EXPECT_EQ(canonical(L"/home/u/ws/a.txt"), CurrentDrive + L"\\home\\u\\ws\\a.txt");
    EXPECT_EQ(canonical(L"\\home\\u\\ws\\a.txt"), CurrentDrive + L"\\home\\u\\ws\\a.txt");
}

TEST_F(FileSystemUtility, CanonicalOfAPathWithADriveLetterIsLexical)
{
    EXPECT_EQ(canonical(L"D:\\Drive\\x"), L"D:\\Drive\\x");
    EXPECT_EQ(canonical(L"D:/Drive/./x"), L"D:\\Drive\\x");
    EXPECT_EQ(canonical(L"D:\\Drive\\a\\..\\x\\"), L"D:\\Drive\\x");
    EXPECT_EQ(canonical(L"D:\\..\\..\\x"), L"D:\\x");
    EXPECT_EQ(canonical(L"D:\\"), L"D:\\");
    EXPECT_EQ(canonical(L"d:\\X"), L"d:\\X");
    EXPECT_EQ(canonical(L"D:\\Dr\xEFve\\\x4E2D"), L"D:\\Dr\xEFve\\\x4E2D");
}

#ifndef _WIN32 // There such a path is on the disk.
TEST_F(FileSystemUtility, CanonicalDoesNotLookADriveLetterUpOnTheDisk)
{
    const CurrentFolder current(root);
    fs::create_directories(root / "D:" / "Drive");
    const Link link(root / "folder", root / "D:" / "Drive" / "link");

    EXPECT_EQ(canonical(L"D:\\Drive\\link\\x", in()), L"D:\\Drive\\link\\x");
}

TEST_F(FileSystemUtility, CanonicalKnowsEachDriveLetter)
{
    for (const wchar_t letter : std::wstring(L"AZaz"))
        EXPECT_EQ(canonical(std::wstring(1, letter) + L":/x"), std::wstring(1, letter) + L":\\x");
}
#endif

TEST_F(FileSystemUtility, CanonicalFollowsLinks)
{
    const Link link("folder", root / "link");
    const Link other("file.txt", root / "folder" / "other.txt");

    EXPECT_EQ(canonical(in(L"link/file.txt")), key(L"folder/file.txt"));
    EXPECT_EQ(canonical(in(L"link/other.txt")), key(L"folder/file.txt"));
    EXPECT_EQ(canonical(key(L"link/not there.txt")), key(L"folder/not there.txt"));
}

// Systems differ in what ".." after a link means.
#ifdef _WIN32
TEST_F(FileSystemUtility, CanonicalGoesUpBeforeItFollowsALink)
{
    const Link link("folder/inner", root / "link");

    EXPECT_EQ(canonical(in(L"link/../folder/file.txt")), key(L"folder/file.txt"));
}
#else
TEST_F(FileSystemUtility, CanonicalFollowsALinkBeforeItGoesUp)
{
    const Link link("folder/inner", root / "link");

    EXPECT_EQ(canonical(in(L"link/../file.txt")), key(L"folder/file.txt"));
}
#endif

#ifndef _WIN32 // Wine hides such a link.
TEST_F(FileSystemUtility, CanonicalIsLexicalWhereALinkGoesInACircle)
{
    const Link circle("circle", root / "circle");

    EXPECT_EQ(canonical(in(L"circle/./x")), key(L"circle/x"));
}
#endif

TEST_F(FileSystemUtility, CanonicalIsLexicalForAStringThatIsNotAPath)
{
    const std::wstring unpaired(1, static_cast<wchar_t>(0xD800));

    EXPECT_EQ(canonical(L"/a/./" + unpaired), CurrentDrive + L"\\a\\" + unpaired);
}

TEST_F(FileSystemUtility, CanonicalIsLexicalForANameThatIsTooLong)
{
    const std::wstring longName(5000, L'x');

    EXPECT_EQ(canonical(L"/a/./" + longName), CurrentDrive + L"\\a\\" + longName);
}

TEST_F(FileSystemUtility, CanonicalIsLexicalForPathsThatDoNotExist)
{
    EXPECT_EQ(canonical(in(L"absent/../folder/./x/y/../z")), key(L"folder/x/z"));
    EXPECT_EQ(canonical(L"/absent//a/../../../b"), CurrentDrive + L"\\b");
    EXPECT_EQ(canonical(in(L"folder/file.txt/below")), key(L"folder/file.txt/below"));
}

TEST_F(FileSystemUtility, CanonicalHasASlashAtItsEndForRootsOnly)
{
    EXPECT_EQ(canonical(in(L"folder/")), key(L"folder"));
    EXPECT_EQ(canonical(in(L"folder") + L"\\"), key(L"folder"));
    EXPECT_EQ(canonical(L"/"), CurrentDrive + L"\\");
    EXPECT_EQ(canonical(L"\\"), CurrentDrive + L"\\");
}

TEST_F(FileSystemUtility, CanonicalResolvesARelativePathAgainstTheBase)
{
    EXPECT_EQ(canonical(L"file.txt", in(L"folder")), key(L"folder/file.txt"));
    EXPECT_EQ(canonical(L"..\\folder\\file.txt", in(L"folder")), key(L"folder/file.txt"));
    EXPECT_EQ(canonical(L"x", L"D:\\Drive\\"), L"D:\\Drive\\x");
    EXPECT_EQ(canonical(L"", in(L"folder")), key(L"folder"));
    EXPECT_EQ(canonical(L".", in(L"folder")), key(L"folder"));
}

TEST_F(FileSystemUtility, CanonicalReadsADriveLetterWithoutASlashAsTheSystemDoes)
{
#ifdef _WIN32 // Relative to the current folder of that drive.
    const CurrentFolder current(root);
    const std::wstring drive = root.root_name().wstring();

    EXPECT_EQ(canonical(drive + L"folder\\file.txt"), key(L"folder/file.txt"));
    EXPECT_EQ(canonical(drive + L"absent"), key(L"absent"));
#else // An ordinary name.
    EXPECT_EQ(canonical(L"D:x", L"/base"), L"\\base\\D:x");
#endif
}

TEST_F(FileSystemUtility, CanonicalKeepsNamesWithSpacesAndDots)
{
    EXPECT_EQ(canonical(in(L"a b/...c/.d")), key(L"a b/...c/.d"));
#ifndef _WIN32 // There no name ends with a dot.
    EXPECT_EQ(canonical(in(L"a b/d.")), key(L"a b/d."));
#endif
}

TEST_F(FileSystemUtility, CurrentPathIsThatOfTheProcess)
{
    const CurrentFolder current(root);

    EXPECT_EQ(Utility::currentPath(), in());
}

#ifndef _WIN32 // There a current folder cannot be removed.
TEST_F(FileSystemUtility, CurrentPathThrowsIfTheFolderDoesNotExist)
{
    fs::create_directory(root / "gone");
    const CurrentFolder current(root / "gone");
    fs::remove(root / "gone");

    EXPECT_THROW((void)Utility::currentPath(), fs::filesystem_error);
    EXPECT_EQ(canonical(in(L"folder/file.txt")), key(L"folder/file.txt"));
}
#endif

TEST_F(FileSystemUtility, ExistsIsTrueForFilesAndFolders)
{
    EXPECT_TRUE(Utility::exists(in(L"folder")));
    EXPECT_TRUE(Utility::exists(in(L"folder/file.txt")));
    EXPECT_FALSE(Utility::exists(in(L"absent")));
    EXPECT_FALSE(Utility::exists(L""));
    EXPECT_FALSE(Utility::exists(std::wstring(5000, L'x')));
}

TEST_F(FileSystemUtility, RemoveSucceedsOnceForAFile)
{
    EXPECT_TRUE(Utility::remove(in(L"folder/file.txt")));
    EXPECT_FALSE(fs::exists(root / "folder" / "file.txt"));
    EXPECT_FALSE(Utility::remove(in(L"folder/file.txt")));
}

TEST_F(FileSystemUtility, RemoveReturnsFalseForAFolderWithContents)
{
    EXPECT_FALSE(Utility::remove(in(L"folder")));
    EXPECT_TRUE(fs::exists(root / "folder"));
}

TEST_F(FileSystemUtility, ParentPathKeepsTheSlashesItIsGiven)
{
    EXPECT_EQ(Utility::parentPath(L"D:\\Drive\\x"), L"D:\\Drive");
    EXPECT_EQ(Utility::parentPath(L"D:\\Drive"), L"D:\\");
    EXPECT_EQ(Utility::parentPath(L"/a/b"), L"/a");
    EXPECT_EQ(Utility::parentPath(L"/a"), L"/");
    EXPECT_EQ(Utility::parentPath(L"\\a\\b"), L"\\a");
    EXPECT_EQ(Utility::parentPath(L"a/b\\c"), L"a/b");
    EXPECT_EQ(Utility::parentPath(L"a\\b/c"), L"a\\b");
}

TEST_F(FileSystemUtility, ParentPathIgnoresSlashesThatDoNotSeparateNames)
{
    EXPECT_EQ(Utility::parentPath(L"D:\\Drive\\x\\"), L"D:\\Drive");
    EXPECT_EQ(Utility::parentPath(L"D:\\Drive\\x\\/"), L"D:\\Drive");
    EXPECT_EQ(Utility::parentPath(L"D:\\Drive\\"), L"D:\\");
    EXPECT_EQ(Utility::parentPath(L"D:\\\\Drive"), L"D:\\");
    EXPECT_EQ(Utility::parentPath(L"/a/b/"), L"/a");
    EXPECT_EQ(Utility::parentPath(L"/a//b"), L"/a");
    EXPECT_EQ(Utility::parentPath(L"/a/"), L"/");
    EXPECT_EQ(Utility::parentPath(L"///a"), L"/");
    EXPECT_EQ(Utility::parentPath(L"a/b/"), L"a");
    EXPECT_EQ(Utility::parentPath(L"name/"), L"");
}

TEST_F(FileSystemUtility, ParentPathOfAServerPathEndsAtItsShare)
{
    EXPECT_EQ(Utility::parentPath(L"\\\\server\\share\\a\\b"), L"\\\\server\\share\\a");
    EXPECT_EQ(Utility::parentPath(L"\\\\server\\share\\a"), L"\\\\server\\share");
    EXPECT_EQ(Utility::parentPath(L"\\\\server\\share"), L"\\\\server\\share");
    EXPECT_EQ(Utility::parentPath(L"\\\\server\\share\\"), L"\\\\server\\share");
    EXPECT_EQ(Utility::parentPath(L"\\\\server\\"), L"\\\\server");
    EXPECT_EQ(Utility::parentPath(L"\\\\server"), L"\\\\server");
#ifdef _WIN32
    EXPECT_EQ(Utility::parentPath(L"//server/share/a"), L"//server/share");
#else
    EXPECT_EQ(Utility::parentPath(L"//home/user"), L"//home");
#endif
}

TEST_F(FileSystemUtility, ParentPathOfARootIsItselfAndThatOfANameIsEmpty)
{
    EXPECT_EQ(Utility::parentPath(L"D:\\"), L"D:\\");
    EXPECT_EQ(Utility::parentPath(L"D:/"), L"D:/");
    EXPECT_EQ(Utility::parentPath(L"D:"), L"D:");
    EXPECT_EQ(Utility::parentPath(L"/"), L"/");
    EXPECT_EQ(Utility::parentPath(L"\\"), L"\\");
    EXPECT_EQ(Utility::parentPath(L"name"), L"");
#ifdef _WIN32
    EXPECT_EQ(Utility::parentPath(L"D:x"), L"D:");
#else
    EXPECT_EQ(Utility::parentPath(L"D:x"), L"");
#endif
    EXPECT_EQ(Utility::parentPath(L""), L"");
}

TEST_F(FileSystemUtility, CombineReturnsAPathThatCanBeOpened)
{
    const std::wstring path = Utility::combine(in(L"folder"), L"n\xE9w.txt");
    makeFile(nativePath(path));

    EXPECT_TRUE(Utility::exists(in(L"folder/n\xE9w.txt")));
    EXPECT_EQ(nativePath(path), nativePath(in(L"folder/n\xE9w.txt")).make_preferred());
}

TEST_F(FileSystemUtility, CombineAddsASlashOnlyWhereThereIsNone)
{
    EXPECT_EQ(Utility::combine(L"/a/", L"b"), L"/a/b");
    EXPECT_EQ(Utility::combine(L"D:\\", L"b"), L"D:\\b");
    EXPECT_EQ(Utility::combine(L"", L"b"), L"b");
}

TEST_F(FileSystemUtility, TempPathIsWhereTheEnvironmentPoints)
{
    const EnvironmentVariable variable(TemporaryFolderVariable, (root / "folder").u8string());

    EXPECT_EQ(nativePath(Utility::tempPath()) / "x", root / "folder" / "x");
}

TEST_F(FileSystemUtility, TempPathThrowsIfTheEnvironmentPointsNowhere)
{
    const EnvironmentVariable variable(TemporaryFolderVariable, (root / "absent").u8string());

    EXPECT_THROW((void)Utility::tempPath(), fs::filesystem_error);
}

TEST_F(FileSystemUtility, TempPathIsAFolder) { EXPECT_TRUE(fs::is_directory(nativePath(Utility::tempPath()))); }
