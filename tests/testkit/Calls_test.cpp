#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/testkit/KitTest.h"

namespace Quorvex::Velmora::TestKit
{
namespace
{

using namespace TessaportAPI;
using testing::ElementsAre;
using testing::IsEmpty;

class Calls : public KitTest
{
protected:
    Calls() { service.getDrives.answer({drive}); }

    Call onlyCall()
    {
        const std::vector<Call> calls = service.takeCalls();
        EXPECT_EQ(calls.size(), 1U);
        return calls.empty() ? Call() : calls.front();
    }

    const HWND window = reinterpret_cast<HWND>(std::intptr_t{0x1234});
};

TEST_F(Calls, AreReadInTheirOrder)
{
    QvNativeTessaportAPI first;
    QvNativeTessaportAPI second(window);
    second.discover();
    (void)first.getVersion();

    const std::vector<Call> calls = service.takeCalls();

    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[0].request, "connect");
    EXPECT_EQ(calls[0].connection, 1);
    EXPECT_EQ(calls[0].window, nullptr);
    EXPECT_EQ(calls[1].request, "connect");
    EXPECT_EQ(calls[1].window, window);
    EXPECT_EQ(calls[2].request, "discover");
    EXPECT_EQ(calls[2].connection, 2);
    EXPECT_EQ(calls[3].request, "getVersion");
    EXPECT_EQ(calls[3].connection, 1);
    EXPECT_THAT(service.takeCalls(), IsEmpty());
}

TEST_F(Calls, OfOneRequestLeaveTheOthers)
{
    QvNativeTessaportAPI tessaport;
    tessaport.discover();
    (void)tessaport.getVersion();

    EXPECT_EQ(service.discover.takeCalls().size(), 1U);
    EXPECT_THAT(service.discover.takeCalls(), IsEmpty());
    EXPECT_EQ(service.takeCalls().size(), 2U);
}

TEST_F(Calls, NameItemsByTheirPathsAndCommandsByTheirIds)
{
    QvNativeTessaportAPI tessaport;
    const Item root = tessaport.getDrives()[0]->root;
    service.getItemsByRelativePaths.answer({makeFile(drive, L"a"), makeFile(drive, L"b")});
    const auto items = tessaport.getItemsByRelativePaths(drive.id, {});
    service.getCommands.answer({makeCommand(L"lock", L"Lock")});
    CommandContext context;
    context.itemId = items[0]->id;
    context.itemIds.Append(items[1]->id);
    context.windowHandle = window;
    const auto menu = tessaport.getCommands(context);
    (void)service.takeCalls();

    tessaport.executeCommand(*menu[0], context);
    const Call executed = onlyCall();
    EXPECT_EQ(executed.request, "executeCommand");
    EXPECT_EQ(executed.commandId, L"lock");
    EXPECT_EQ(executed.item, L"W:\\Tessaport\\Drive\\a");
    EXPECT_THAT(executed.items, ElementsAre(L"W:\\Tessaport\\Drive\\b"));
    EXPECT_EQ(executed.window, window);

    tessaport.syncFiles(items);
    const Call synced = onlyCall();
    EXPECT_EQ(synced.request, "syncFiles");
    EXPECT_THAT(synced.items, ElementsAre(L"W:\\Tessaport\\Drive\\a", L"W:\\Tessaport\\Drive\\b"));

    (void)tessaport.getFolderContents(root);
    EXPECT_EQ(onlyCall().item, L"W:\\Tessaport\\Drive");
}

TEST_F(Calls, HaveTheirOtherArguments)
{
    QvNativeTessaportAPI tessaport;
    const Item root = tessaport.getDrives()[0]->root;
    QVBuffer<QVString> strings;
    strings.Append(L"D:/ä");
    (void)service.takeCalls();

    tessaport.addFiles(root, strings);
    EXPECT_THAT(onlyCall().paths, ElementsAre(L"D:\\ä"));
    tessaport.getOrCreateFolder(root, L"New");
    EXPECT_EQ(onlyCall().name, L"New");
    tessaport.fileClosedWithinRunningProcess(42, L"D:\\b");
    const Call closed = onlyCall();
    EXPECT_EQ(closed.processId, 42);
    EXPECT_THAT(closed.paths, ElementsAre(L"D:\\b"));
    (void)tessaport.getPropertyDefinitions(drive.id);
    EXPECT_EQ(onlyCall().driveId, drive.id);
    (void)tessaport.getStringPropertyValues({}, strings);
    EXPECT_THAT(onlyCall().propertyIds, ElementsAre(L"D:/ä"));
    (void)tessaport.getItemsByPermanentIds(strings);
    const Call lookup = onlyCall();
    EXPECT_EQ(lookup.request, "getItemsByPermanentIds");
    EXPECT_THAT(lookup.permanentIds, ElementsAre(L"D:/ä"));
    EXPECT_THAT(lookup.items, IsEmpty());
    EXPECT_TRUE(lookup.driveId.isNil());
}

TEST_F(Calls, HaveTheNamesOfTheMembersOfTheApi)
{
    QvNativeTessaportAPI tessaport;
    (void)service.takeCalls();

    tessaport.deleteFilesOrFolders({});
    EXPECT_EQ(onlyCall().request, "deleteFilesOrFolders");
    (void)tessaport.isFileInWorkspace(L"D:\\a");
    EXPECT_EQ(onlyCall().request, "isFileInWorkspace");
    (void)tessaport.getStringPropertyValues({}, {});
    EXPECT_EQ(onlyCall().request, "getStringPropertyValues");
}

TEST_F(Calls, ToNameTheRootWithoutAScriptHaveItsPath)
{
    service.reset();
    QvNativeTessaportAPI tessaport;
    const auto drives = tessaport.getDrives();

    (void)tessaport.getFolderContents(drives[0]->root);

    EXPECT_EQ(service.getFolderContents.takeCalls().at(0).item, drives[0]->workspaceLocation.w_str());
}

TEST_F(Calls, ThatReadAListHaveNoCallForItsEnd)
{
    service.getDrives.failAfter({drive}, L"lost");
    QvNativeTessaportAPI tessaport;
    (void)service.takeCalls();

    EXPECT_THROW((void)tessaport.getDrives(), ApiException);

    EXPECT_EQ(onlyCall().request, "getDrives");
}

} // namespace
} // namespace Quorvex::Velmora::TestKit
