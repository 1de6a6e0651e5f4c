// The item cache: which requests fill it, and which items stay, are found and are removed.
#include "velmora/native/ItemCache.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/platform/NativePath.h>
#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

class ItemCache : public BridgeTest
{
protected:
    void list(const Json& items)
    {
        service.answer("GetFolderContents", items);
        (void)connection.getFolderContents(folder);
        service.answerInTurn("GetFolderContents", {});
    }

    void lookUp(const Json& results)
    {
        service.answer("GetItemsByWorkspacePaths", results);
        (void)connection.getItemsByWorkspacePaths({});
    }

    // Returns the number with which itemAt() marks an item; 0 if there is no item.
    static std::int64_t cachedAt(const std::wstring& path)
    {
        const Item* const found = findCachedItem(path);
        return found == nullptr ? 0 : found->lastModifiedDate - 1'700'000'000;
    }

    QvNativeTessaportAPI connection;
    Item folder = itemOf(900);
};

TEST_F(ItemCache, KeepsTheFirstItemReportedForAPath)
{
    list(Json::array({itemAt(1, L"D:\\a")}));
    list(Json::array({itemAt(2, L"D:\\a"), itemAt(3, L"D:\\b")}));

    EXPECT_EQ(cachedAt(L"D:\\a"), 1);
    EXPECT_EQ(cachedAt(L"D:\\b"), 3);
}

TEST_F(ItemCache, KeepsTheFirstItemOfAListForAPath)
{
    list(Json::array({itemAt(2, L"D:\\b"), itemAt(1, L"D:\\a"), itemAt(3, L"D:\\b"), itemAt(4, L"D:\\a")}));

    EXPECT_EQ(cachedAt(L"D:\\a"), 1);
    EXPECT_EQ(cachedAt(L"D:\\b"), 2);
}

TEST_F(ItemCache, DistinguishesPathsByCaseSlashAndEveryCharacter)
{
    list(Json::array({itemAt(1, L"D:\\a"), itemAt(2, L"D:\\A"), itemAt(3, L"D:/a"), itemAt(4, L"D:\\a\\"),
        itemAt(5, L""), itemAt(6, L"D:\\\xD800"), itemAt(7, L"D:\\\U0001F600")}));

    EXPECT_EQ(cachedAt(L"D:\\a"), 1);
    EXPECT_EQ(cachedAt(L"D:\\A"), 2);
    EXPECT_EQ(cachedAt(L"D:/a"), 3);
    EXPECT_EQ(cachedAt(L"D:\\a\\"), 4);
    EXPECT_EQ(cachedAt(L""), 5);
    EXPECT_EQ(cachedAt(L"D:\\\xD800"), 6);
    EXPECT_EQ(cachedAt(L"D:\\\U0001F600"), 7);
}

TEST_F(ItemCache, HoldsTheRootOfEveryDrive)
{
    service.answer("GetDrives", Json::array({drive(1, DriveType, L"D:\\One"), drive(2, DocsType, L"D:\\Two")}));

    (void)connection.getDrives();

    EXPECT_EQ(cachedAt(L"D:\\One"), 1);
    EXPECT_EQ(cachedAt(L"D:\\Two"), 2);
}

TEST_F(ItemCache, TakesOnlySuccessfulResultsOfWorkspacePaths)
{
    lookUp(Json::array({workspacePathResult(itemAt(1, L"D:\\a"), L"D:\\a", 1),
        workspacePathResult(itemAt(2, L"D:\\b"), L"D:\\b", 4), workspacePathResult(itemAt(3, L"D:\\c"), L"D:\\c", 0),
        workspacePathResult(itemAt(4, L"D:\\d"), L"D:\\d", 1)}));

    EXPECT_EQ(cachedAt(L"D:\\a"), 1);
    EXPECT_EQ(cachedAt(L"D:\\b"), 0);
    EXPECT_EQ(cachedAt(L"D:\\c"), 0);
    EXPECT_EQ(cachedAt(L"D:\\d"), 4);
}

TEST_F(ItemCache, TakesOnlySuccessfulResultsOfPermanentIds)
{
    service.answer("GetItemsByPermanentIds", Json::array({itemOfPermanentIdResult(itemAt(1, L"D:\\a"), "p", 1),
                                                 itemOfPermanentIdResult(itemAt(2, L"D:\\b"), "q", 2)}));

    (void)connection.getItemsByPermanentIds({});

    EXPECT_EQ(cachedAt(L"D:\\a"), 1);
    EXPECT_EQ(cachedAt(L"D:\\b"), 0);
}

// The key is the item's own path, not the one that was asked for.
TEST_F(ItemCache, StoresAnItemUnderItsOwnPath)
{
    lookUp(Json::array({workspacePathResult(itemAt(1, L"D:\\own"), L"D:\\asked", 1)}));

    EXPECT_EQ(cachedAt(L"D:\\own"), 1);
    EXPECT_EQ(cachedAt(L"D:\\asked"), 0);
}

TEST_F(ItemCache, KeepsAllNineFields)
{
    list(Json::array({itemAt(5, L"D:\\a")}));

    const Item* const cached = findCachedItem(L"D:\\a");

    ASSERT_NE(cached, nullptr);
    EXPECT_EQ(cached->driveId, QVUUID(DriveId));
    EXPECT_TRUE(cached->isFolder && cached->isInWorkspace && cached->isOnServer);
    EXPECT_EQ(cached->name, QVString(L"item 5.txt"));
    EXPECT_EQ(cached->relativePath, QVString(L"Folder\\item 5.txt"));
    EXPECT_EQ(cached->workspacePath, QVString(L"D:\\a"));
    EXPECT_EQ(cached->lastModifiedDate, 1'700'000'005);
    (void)service.takeCalls();
    (void)connection.getChildFolders(*cached);
    EXPECT_EQ(service.takeCall("GetChildFolders")["folder"], 5);
}

TEST_F(ItemCache, RemovesAnItemWithEitherSlash)
{
    list(Json::array({itemAt(1, L"D:\\Drive\\a.txt")}));

    EXPECT_TRUE(QvNativeTessaportAPI::removeCachedItem(L"D:/Drive/a.txt"));
    EXPECT_FALSE(QvNativeTessaportAPI::removeCachedItem(L"D:/Drive/a.txt"));
}

TEST_F(ItemCache, RemovesAnItemByAPathWithDots)
{
    list(Json::array({itemAt(1, L"D:\\Drive\\a.txt")}));

    EXPECT_TRUE(QvNativeTessaportAPI::removeCachedItem(L"D:\\Drive\\.\\x\\..\\a.txt"));
}

TEST_F(ItemCache, RemovesAnItemByARelativePath)
{
    std::wstring key = Common::wideText(std::filesystem::canonical(std::filesystem::current_path()));
    for (wchar_t& c : key)
        c = c == L'/' ? L'\\' : c;
    list(Json::array({itemAt(1, key + L"\\no such file.txt")}));

    EXPECT_TRUE(QvNativeTessaportAPI::removeCachedItem(L"no such file.txt"));
}

// An item is stored under the path that the sync application reports, and found only if that path is canonical.
TEST_F(ItemCache, DoesNotFindAnItemReportedWithAnotherSpelling)
{
    list(Json::array({itemAt(1, L"D:/Drive/a.txt"), itemAt(2, L"D:\\Drive\\.\\b.txt")}));

    EXPECT_FALSE(QvNativeTessaportAPI::removeCachedItem(L"D:/Drive/a.txt"));
    EXPECT_FALSE(QvNativeTessaportAPI::removeCachedItem(L"D:\\Drive\\.\\b.txt"));
    EXPECT_EQ(cachedAt(L"D:/Drive/a.txt"), 1);
}

TEST_F(ItemCache, RemovesNothingElse)
{
    list(Json::array({itemAt(1, L"D:\\a"), itemAt(2, L"D:\\A"), itemAt(3, L"D:\\a\\b")}));

    EXPECT_TRUE(QvNativeTessaportAPI::removeCachedItem(L"D:\\a"));

    EXPECT_EQ(cachedAt(L"D:\\A"), 2);
    EXPECT_EQ(cachedAt(L"D:\\a\\b"), 3);
}

TEST_F(ItemCache, StoresAFreshItemAfterThePreviousWasRemoved)
{
    list(Json::array({itemAt(1, L"D:\\a")}));
    (void)QvNativeTessaportAPI::removeCachedItem(L"D:\\a");

    list(Json::array({itemAt(2, L"D:\\a")}));

    EXPECT_EQ(cachedAt(L"D:\\a"), 2);
}

TEST_F(ItemCache, IsEmptyAfterClearing)
{
    list(Json::array({itemAt(1, L"D:\\a"), itemAt(2, L"D:\\b")}));

    QvNativeTessaportAPI::clearCachedItems();

    EXPECT_EQ(cachedAt(L"D:\\a"), 0);
    EXPECT_EQ(cachedAt(L"D:\\b"), 0);
}

TEST_F(ItemCache, CanBeClearedWhenEmpty)
{
    QvNativeTessaportAPI::clearCachedItems();
    QvNativeTessaportAPI::clearCachedItems();

    EXPECT_FALSE(QvNativeTessaportAPI::removeCachedItem(L"D:\\a"));
}

TEST_F(ItemCache, OutlivesTheConnectionThatFilledIt)
{
    service.answer("GetDrives", Json::array({drive(1, DriveType, L"D:\\One")}));
    {
        QvNativeTessaportAPI other;
        (void)other.getDrives();
    }

    EXPECT_EQ(cachedAt(L"D:\\One"), 1);
    (void)service.takeCalls();
    (void)connection.getChildFolders(*findCachedItem(L"D:\\One"));
    EXPECT_EQ(service.takeCall("GetChildFolders")["folder"], 1);
}

TEST_F(ItemCache, HoldsEveryItemOfALongList)
{
    service.answer("GetFolderContents", generated(50'000));
    (void)connection.getFolderContents(folder);

    const std::wstring prefix = L"W:\\Users\\quinn\\Tessaport\\Projects\\Northern Station\\Drawings\\Section ";
    EXPECT_NE(findCachedItem(prefix + L"0000000 - elevations.dwg"), nullptr);
    EXPECT_NE(findCachedItem(prefix + L"0049999 - elevations.dwg"), nullptr);
    EXPECT_EQ(findCachedItem(prefix + L"0050000 - elevations.dwg"), nullptr);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
