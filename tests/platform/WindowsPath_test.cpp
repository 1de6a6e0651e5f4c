#include <filesystem>
#include <string>

#include <windows.h>
#include <gtest/gtest.h>

#include <velmora/platform/QrxQvFileSystemUtility.h>
#include "tests/support/TemporaryFolder.h"

using Quorvex::Velmora::TestSupport::TemporaryFolder;
using Utility = Quorvex::Velmora::Common::QrxQvFileSystemUtility;

namespace
{

constexpr std::size_t LongestOldPath = 260;

// Makes a folder whose path is longer than MAX_PATH.
std::wstring makeLongFolder(const std::wstring& root)
{
    std::wstring path = root;
    while (path.size() <= LongestOldPath) {
        path += L"\\" + std::wstring(60, L'n');
        CreateDirectoryW((L"\\\\?\\" + path).c_str(), nullptr);
    }
    return path;
}

void makeFile(const std::wstring& path)
{
    CloseHandle(CreateFileW((L"\\\\?\\" + path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
}

class WindowsPath : public testing::Test
{
protected:
    TemporaryFolder folder;
    std::wstring root = Utility::canonical(folder.path().wstring(), L"C:\\");
};

} // namespace

TEST_F(WindowsPath, CanonicalHasOneKeyForEverySpellingOfAnExistingName)
{
    makeFile(root + L"\\Name.TXT");

    EXPECT_EQ(Utility::canonical(root + L"\\nAME.txt", L""), root + L"\\Name.TXT");
    EXPECT_EQ(Utility::canonical(root + L"/name.txt", L""), root + L"\\Name.TXT");
    EXPECT_EQ(Utility::canonical(root + L"\\Absent.txt", L""), root + L"\\Absent.txt");
}

TEST_F(WindowsPath, CanonicalKeepsTheServerOfANetworkPathWithoutContactingIt)
{
    EXPECT_EQ(Utility::canonical(L"\\\\server.invalid\\share\\a\\..\\b", L""), L"\\\\server.invalid\\share\\b");
    EXPECT_EQ(Utility::canonical(L"//server.invalid/share/../../b", L""), L"\\\\server.invalid\\share\\b");
}

TEST_F(WindowsPath, CanonicalFormOfAShareHasNoSlashAtItsEnd)
{
    const std::wstring share = L"\\\\server.invalid\\share";

    EXPECT_EQ(Utility::canonical(share, L""), share);
    EXPECT_EQ(Utility::canonical(share + L"\\", L""), share);
    EXPECT_EQ(Utility::canonical(L"//server.invalid/share/..", L""), share);
}

// A drive letter that is another name of a folder, as the command subst makes it.
class FolderLetter
{
public:
    explicit FolderLetter(const std::wstring& folder) : folder(folder)
    {
        EXPECT_TRUE(DefineDosDeviceW(0, Letter, folder.c_str()));
    }
    FolderLetter(const FolderLetter&) = delete;
    FolderLetter& operator=(const FolderLetter&) = delete;
    ~FolderLetter() { DefineDosDeviceW(DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, Letter, folder.c_str()); }

    static constexpr const wchar_t* Letter = L"Y:";

private:
    std::wstring folder;
};

TEST_F(WindowsPath, CanonicalFollowsAFolderLetterForExistingAndMissingFiles)
{
    makeFile(root + L"\\there.txt");
    const FolderLetter letter(root);

    const std::wstring existing = Utility::canonical(L"Y:\\there.txt", L"");
    const std::wstring missing = Utility::canonical(L"Y:\\missing.txt", L"");

    EXPECT_EQ(Utility::parentPath(missing), Utility::parentPath(existing));
}

TEST_F(WindowsPath, LongPathsAreFoundAndRemoved)
{
    const std::wstring file = makeLongFolder(root) + L"\\file.txt";
    EXPECT_FALSE(Utility::exists(file));

    makeFile(file);

    EXPECT_TRUE(Utility::exists(file));
    EXPECT_EQ(Utility::canonical(file, L""), file);
    EXPECT_TRUE(Utility::remove(file));
    EXPECT_FALSE(Utility::exists(file));
    EXPECT_FALSE(Utility::remove(file));
}

TEST_F(WindowsPath, ReservedNamesAreNotFiles)
{
    EXPECT_FALSE(Utility::remove(root + L"\\NUL"));
    EXPECT_EQ(Utility::canonical(root + L"\\a.txt", L""), root + L"\\a.txt");
}
