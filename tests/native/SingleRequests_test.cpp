// One-shot operations of one request each: results, connections, log lines.
#include <functional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/native/ItemCache.h>
#include "tests/native/StaticTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SingleRequests : public StaticTest
{
protected:
    static Json twoDrives() { return Json::array({drive(1, DriveType, L"D:\\One"), drive(2, DocsType, L"D:\\Two")}); }
};

TEST_F(SingleRequests, DiscoverMakesOneRequestOnItsOwnConnection)
{
    EXPECT_TRUE(Api::discover(hwnd));

    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "Discover"));
    EXPECT_THAT(log.take(), IsEmpty());
    expectConnectionsClosed();
}

TEST_F(SingleRequests, DiscoverReportsFailure)
{
    service.fail("Discover", notRunning);

    EXPECT_FALSE(Api::discover(hwnd));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to discover connected drives" + saysOff));
    expectConnectionsClosed();
}

TEST_F(SingleRequests, OpenTheirConnectionWithoutAWindowForNull)
{
    EXPECT_TRUE(Api::discover(nullptr));

    EXPECT_EQ(service.takeCall("TessaportService")["window"], nullptr);
}

TEST_F(SingleRequests, GetVersionFillsTheOutput)
{
    service.answer("GetVersion", "7.2");
    QVString version(L"before");

    EXPECT_TRUE(Api::getVersion(hwnd, version));

    EXPECT_EQ(version, QVString(L"7.2"));
    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetVersion"));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(SingleRequests, GetVersionLeavesTheOutputOnFailure)
{
    service.fail("GetVersion", notRunning);
    QVString version(L"before");

    EXPECT_FALSE(Api::getVersion(hwnd, version));

    EXPECT_EQ(version, QVString(L"before"));
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get app version" + saysOff));
}

TEST_F(SingleRequests, RootFolderItemIsTheRootOfTheFirstDrive)
{
    service.answer("GetDrives", twoDrives());
    Item viaException;
    Item viaStatus;

    Api::getRootFolderItemWithExceptions(hwnd, viaException);
    EXPECT_EQ(Api::getRootFolderItem(hwnd, viaStatus), QVCode::Success);

    EXPECT_EQ(viaException.workspacePath, QVString(L"D:\\One"));
    EXPECT_EQ(viaStatus.workspacePath, QVString(L"D:\\One"));
    EXPECT_NE(findCachedItem(L"D:\\One"), nullptr);
    EXPECT_NE(findCachedItem(L"D:\\Two"), nullptr);
    EXPECT_THAT(
        takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetDrives", "TessaportService", "GetDrives"));
    EXPECT_THAT(log.take(), IsEmpty());
    expectConnectionsClosed();
}

TEST_F(SingleRequests, RootFolderItemIsUnchangedWithoutADrive)
{
    service.answer("GetDrives", Json::array());
    Item root = itemOf(7);

    EXPECT_EQ(Api::getRootFolderItem(hwnd, root), QVCode::Success);
    Api::getRootFolderItemWithExceptions(hwnd, root);

    EXPECT_EQ(root.lastModifiedDate, 1'700'000'007);
    EXPECT_EQ(static_cast<int>(QVCode::Success), 100);
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(SingleRequests, RootFolderItemWithExceptionsPropagatesThem)
{
    service.fail("GetDrives", notRunning);
    Item root = itemOf(7);

    EXPECT_THROW(Api::getRootFolderItemWithExceptions(hwnd, root), TessaportNotRunningException);

    EXPECT_EQ(root.lastModifiedDate, 1'700'000'007);
    EXPECT_THAT(log.take(), IsEmpty());
    expectConnectionsClosed();
}

TEST_F(SingleRequests, RootFolderItemReportsFailure)
{
    service.fail("GetDrives", notRunning);
    Item root = itemOf(7);

    EXPECT_EQ(Api::getRootFolderItem(hwnd, root), QVCode::Failure);

    EXPECT_EQ(static_cast<int>(QVCode::Failure), 101);
    EXPECT_EQ(root.lastModifiedDate, 1'700'000'007);
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get root folder item" + saysOff));
}

TEST_F(SingleRequests, DriveDataCanBeAccessedWhenTheFirstRootCanBeListed)
{
    service.answer("GetDrives", twoDrives());
    service.answer("GetFolderContents", Json::array({itemAt(5, L"D:\\One\\a")}));

    EXPECT_TRUE(Api::canAccessDriveData(hwnd));

    EXPECT_NE(findCachedItem(L"D:\\One\\a"), nullptr);
    const auto calls = service.takeCalls();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[0]["member"], "TessaportService");
    EXPECT_EQ(calls[1]["member"], "GetDrives");
    EXPECT_EQ(calls[2]["member"], "TessaportService");
    EXPECT_EQ(calls[3]["member"], "GetFolderContents");
    EXPECT_EQ(calls[3]["folder"], 1);
    EXPECT_NE(calls[1]["service"], calls[3]["service"]);
    EXPECT_THAT(log.take(), IsEmpty());
    expectConnectionsClosed();
}

TEST_F(SingleRequests, DriveDataCannotBeAccessedWithoutTheRootAndOneLineIsLogged)
{
    service.fail("GetDrives", notRunning);

    EXPECT_FALSE(Api::canAccessDriveData(hwnd));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get root folder item" + saysOff));
    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetDrives"));
}

TEST_F(SingleRequests, DriveDataCannotBeAccessedWhenTheRootCannotBeListed)
{
    service.answer("GetDrives", twoDrives());
    service.fail("GetFolderContents", notRunning);

    EXPECT_FALSE(Api::canAccessDriveData(hwnd));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to access drive data" + saysOff));
    expectConnectionsClosed();
}

TEST_F(SingleRequests, DriveDataCannotBeAccessedWithoutADrive)
{
    service.answer("GetDrives", Json::array());

    EXPECT_FALSE(Api::canAccessDriveData(hwnd));

    const auto lines = log.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].rfind(L"[TP] ERROR: Failed to access drive data - ", 0), 0U) << lines[0].size();
    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetDrives", "TessaportService"));
}

TEST_F(SingleRequests, GetFolderContentsReplacesTheOutput)
{
    const Item folder = itemOf(3);
    service.answer("GetFolderContents", Json::array({itemAt(5, L"D:\\a"), itemAt(6, L"D:\\b")}));
    QVBuffer<Item> items = bufferOf<Item>({folder, folder, folder});
    (void)service.takeCalls();

    EXPECT_TRUE(Api::getFolderContents(hwnd, folder, items));

    ASSERT_EQ(items.GetSize(), 2U);
    EXPECT_EQ(items[1]->workspacePath, QVString(L"D:\\b"));
    EXPECT_NE(findCachedItem(L"D:\\a"), nullptr);
    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetFolderContents"));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(SingleRequests, GetFolderContentsLeavesTheOutputOnFailure)
{
    const Item folder = itemOf(3);
    service.answer("GetFolderContents", failingList(Json::array({item(5), item(6)}), 1, notRunning));
    QVBuffer<Item> items = bufferOf<Item>({folder});

    EXPECT_FALSE(Api::getFolderContents(hwnd, folder, items));

    ASSERT_EQ(items.GetSize(), 1U);
    EXPECT_EQ(items[0]->lastModifiedDate, 1'700'000'003);
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get workspace folder content" + saysOff));
    EXPECT_EQ(findCachedItem(L"D:\\Drive\\Folder\\item 5.txt"), nullptr);
}

TEST_F(SingleRequests, GetFolderContentsOfADefaultConstructedItemFails)
{
    QVBuffer<Item> items;

    EXPECT_FALSE(Api::getFolderContents(hwnd, Item(), items));

    EXPECT_EQ(log.take().size(), 1U);
}

TEST_F(SingleRequests, SyncItemReturnsTheServicesAnswer)
{
    const Item item = itemOf(3);
    service.answerInTurn("SyncFiles",
        {Json{{"value", outcome(true, Json::array({TestSupport::item(9)}))}}, Json{{"value", outcome(false)}}});
    (void)service.takeCalls();

    EXPECT_TRUE(Api::syncItem(hwnd, item));
    EXPECT_EQ(service.takeCall("SyncFiles")["ids"], Json::array({3}));
    EXPECT_FALSE(Api::syncItem(hwnd, item));

    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "SyncFiles"));
    EXPECT_THAT(log.take(), IsEmpty());
    EXPECT_EQ(findCachedItem(L"D:\\Drive\\Folder\\item 9.txt"), nullptr);
    expectConnectionsClosed();
}

TEST_F(SingleRequests, SyncItemReportsFailure)
{
    const Item item = itemOf(3);
    service.fail("SyncFiles", notRunning);

    EXPECT_FALSE(Api::syncItem(hwnd, item));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to sync the item" + saysOff));
}

TEST_F(SingleRequests, IsFileInWorkspaceFillsTheOutput)
{
    service.answer("AreFilesInWorkspace", {{"flags", Json::array({Json::array({"C:\\w\\a.txt", true})})}});
    bool inWorkspace = false;

    EXPECT_EQ(Api::isFileInWorkspace(hwnd, L"C:/w/a.txt", inWorkspace), QVCode::Success);
    EXPECT_TRUE(inWorkspace);
    EXPECT_EQ(Api::isFileInWorkspace(hwnd, L"C:/w/b.txt", inWorkspace), QVCode::Success);
    EXPECT_FALSE(inWorkspace);

    EXPECT_THAT(takeMembersAskedForWindow(),
        ElementsAre("TessaportService", "AreFilesInWorkspace", "TessaportService", "AreFilesInWorkspace"));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(SingleRequests, IsFileInWorkspaceLeavesTheOutputOnFailure)
{
    service.fail("AreFilesInWorkspace", notRunning);
    bool inWorkspace = true;

    EXPECT_EQ(Api::isFileInWorkspace(hwnd, L"C:/w/a.txt", inWorkspace), QVCode::Failure);

    EXPECT_TRUE(inWorkspace);
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to check file existence in workspace" + saysOff));
}

TEST_F(SingleRequests, ReportAConnectionThatCannotBeOpened)
{
    const Item item = itemOf(3);
    service.fail("TessaportService", notRunning);
    QVString version(L"before");
    bool inWorkspace = true;
    QVBuffer<Item> items;
    Item root;

    EXPECT_FALSE(Api::discover(hwnd));
    EXPECT_FALSE(Api::getVersion(hwnd, version));
    EXPECT_EQ(Api::getRootFolderItem(hwnd, root), QVCode::Failure);
    EXPECT_FALSE(Api::canAccessDriveData(hwnd));
    EXPECT_FALSE(Api::getFolderContents(hwnd, item, items));
    EXPECT_FALSE(Api::syncItem(hwnd, item));
    EXPECT_EQ(Api::isFileInWorkspace(hwnd, L"x", inWorkspace), QVCode::Failure);

    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] ERROR: Failed to discover connected drives" + saysOff,
            L"[TP] ERROR: Failed to get app version" + saysOff, L"[TP] ERROR: Failed to get root folder item" + saysOff,
            L"[TP] ERROR: Failed to get root folder item" + saysOff,
            L"[TP] ERROR: Failed to get workspace folder content" + saysOff,
            L"[TP] ERROR: Failed to sync the item" + saysOff,
            L"[TP] ERROR: Failed to check file existence in workspace" + saysOff));
}

TEST_F(SingleRequests, CheckExistenceDoesWhatGetItemByWorkspacePathDoes)
{
    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(itemAt(1, L"D:\\a"), L"D:\\a", 1)}));
    Item found;

    EXPECT_TRUE(Api::checkExistence(hwnd, L"D:/a", found));
    EXPECT_EQ(found.workspacePath, QVString(L"D:\\a"));

    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(nullptr, L"D:\\b", 2)}));
    EXPECT_FALSE(Api::checkExistence(hwnd, L"D:/b", found));
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get item from workspace path D:/b"));

    service.fail("GetItemsByWorkspacePaths", notRunning);
    EXPECT_FALSE(Api::checkExistence(hwnd, L"D:/b", found));
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to find item D:\\b" + saysOff));
}

class Offline : public SingleRequests
{
protected:
    Offline() { service.answer("GetDrives", twoDrives()); }

    static Json answered(int result) { return {{"value", Json::array({permanentIdResult(1, "pid", result)})}}; }
};

TEST_F(Offline, IsTrueForTheSecondDriveWithOneLine)
{
    service.answerInTurn("GetPermanentIds", {answered(1), answered(4)});

    EXPECT_TRUE(Api::isOffline(hwnd));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] Drive is offline: Drive 2"));
    const auto calls = service.takeCalls();
    ASSERT_EQ(calls.size(), 6U);
    EXPECT_EQ(calls[3]["ids"], Json::array({1}));
    EXPECT_EQ(calls[5]["ids"], Json::array({2}));
    expectConnectionsClosed();
}

TEST_F(Offline, StopsAtTheFirstOfflineDrive)
{
    service.answerInTurn("GetPermanentIds", {answered(4), answered(4)});

    EXPECT_TRUE(Api::isOffline(hwnd));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] Drive is offline: Drive 1"));
    EXPECT_THAT(takeMembersAskedForWindow(),
        ElementsAre("TessaportService", "GetDrives", "TessaportService", "GetPermanentIds"));
}

TEST_F(Offline, IgnoresOtherFailuresOfADrive)
{
    service.answerInTurn("GetPermanentIds", {answered(2), answered(1)});

    EXPECT_FALSE(Api::isOffline(hwnd));

    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(Offline, ContinuesAfterAnExceptionForADrive)
{
    service.answerInTurn("GetPermanentIds", {Json{{"throw", notRunning}}, answered(4)});

    EXPECT_TRUE(Api::isOffline(hwnd));

    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] ERROR: Failed to get pid from item" + saysOff, L"[TP] Drive is offline: Drive 2"));
}

TEST_F(Offline, IsFalseWhenTheLastDriveFailsWithAnException)
{
    service.answerInTurn("GetPermanentIds", {answered(1), Json{{"throw", notRunning}}});

    EXPECT_FALSE(Api::isOffline(hwnd));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get pid from item" + saysOff));
    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetDrives", "TessaportService",
                                                 "GetPermanentIds", "TessaportService", "GetPermanentIds"));
}

TEST_F(Offline, IsFalseWithoutADrive)
{
    service.answer("GetDrives", Json::array());

    EXPECT_FALSE(Api::isOffline(hwnd));

    EXPECT_THAT(log.take(), IsEmpty());
    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetDrives"));
}

TEST_F(Offline, PropagatesExceptionsOfTheConnectionAndTheDrives)
{
    service.fail("GetDrives", notRunning);
    EXPECT_THROW(Api::isOffline(hwnd), TessaportNotRunningException);

    service.fail("TessaportService", notRunning);
    EXPECT_THROW(Api::isOffline(hwnd), TessaportNotRunningException);

    EXPECT_THAT(log.take(), IsEmpty());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
