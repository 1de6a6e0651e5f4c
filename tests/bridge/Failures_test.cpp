// A sync application that fails: in each member, and in each step of an enumeration.
#include <functional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Bridge = Tessaport::QvManagedTessaportService;

struct Request {
    const char* member;
    std::function<void(Bridge&, const Item&, const Command&)> run;
};

void PrintTo(const Request& request, std::ostream* stream) { *stream << request.member; }

std::string nameOf(const ::testing::TestParamInfo<Request>& info) { return info.param.member; }

CommandContext contextFor(const Item& item)
{
    CommandContext context;
    context.itemId = item.id;
    return context;
}

class FailingMember : public BridgeTest, public ::testing::WithParamInterface<Request>
{
};

TEST_P(FailingMember, IsTranslatedAndLeavesTheConnectionUsable)
{
    const Item folder = itemOf(1);
    const Command command = commandOf(2);
    const std::int64_t handles = countHandles();
    service.fail(GetParam().member, failure("TessaportNotRunningException", L"gone"));

    try {
        GetParam().run(bridge, folder, command);
        FAIL() << "nothing was thrown";
    } catch (const TessaportNotRunningException& e) {
        EXPECT_STREQ(e.getErrorMessage(), L"gone");
    }

    EXPECT_EQ(countHandles(), handles);
    service.answerInTurn(GetParam().member, {});
    EXPECT_NO_THROW(GetParam().run(bridge, folder, command));
}

INSTANTIATE_TEST_SUITE_P(Each, FailingMember,
    ::testing::Values(Request{"Discover", [](Bridge& bridge, auto&&...) { bridge.discover(); }},
        Request{"GetVersion", [](Bridge& bridge, auto&&...) { (void)bridge.getVersion(); }},
        Request{"GetDrives", [](Bridge& bridge, auto&&...) { (void)bridge.getDrives(); }},
        Request{
            "GetChildFolders", [](Bridge& bridge, const Item& item, auto&&) { (void)bridge.getChildFolders(item.id); }},
        Request{"GetFolderContents",
            [](Bridge& bridge, const Item& item, auto&&) { (void)bridge.getFolderContents(item.id); }},
        Request{"AddFiles", [](Bridge& bridge, const Item& item, auto&&) { (void)bridge.addFiles(item.id, {}); }},
        Request{"GetOrCreateFolder",
            [](Bridge& bridge, const Item& item, auto&&) { (void)bridge.getOrCreateFolder(item.id, L"x"); }},
        Request{"CanAddFiles", [](Bridge& bridge, const Item& item, auto&&) { (void)bridge.canAddFiles(item.id, {}); }},
        Request{"AreFilesInWorkspace", [](Bridge& bridge, auto&&...) { (void)bridge.isFileInWorkspace(L"x"); }},
        Request{"SyncFiles", [](Bridge& bridge, auto&&...) { (void)bridge.syncFiles({}); }},
        Request{"DeleteItems", [](Bridge& bridge, auto&&...) { (void)bridge.deleteFilesOrFolders({}); }},
        Request{
            "GetItemsByWorkspacePaths", [](Bridge& bridge, auto&&...) { (void)bridge.getItemsByWorkspacePaths({}); }},
        Request{
            "GetItemsByRelativePaths", [](Bridge& bridge, auto&&...) { (void)bridge.getItemsByRelativePaths({}, {}); }},
        Request{"FileClosedWithinRunningProcess",
            [](Bridge& bridge, auto&&...) { bridge.fileClosedWithinRunningProcess(1, L"x"); }},
        Request{"GetPropertyDefinitions", [](Bridge& bridge, auto&&...) { (void)bridge.getPropertyDefinitions({}); }},
        Request{"GetProperties", [](Bridge& bridge, auto&&...) { (void)bridge.getStringPropertyValues({}, {}); }},
        Request{"GetCommands",
            [](Bridge& bridge, const Item& item, auto&&) { (void)bridge.getCommands(contextFor(item)); }},
        Request{
            "ExecuteCommand", [](Bridge& bridge, const Item& item,
                                  const Command& command) { (void)bridge.executeCommand(command, contextFor(item)); }},
        Request{"GetPermanentIds", [](Bridge& bridge, auto&&...) { (void)bridge.getPermanentIds({}); }},
        Request{"GetItemsByPermanentIds", [](Bridge& bridge, auto&&...) { (void)bridge.getItemsByPermanentIds({}); }}),
    nameOf);

class FailingEnumeration : public BridgeTest
{
protected:
    // Expects the request to fail with the list's exception, to leave nothing behind and to dispose the enumerator.
    void expectFailure(const std::function<void()>& request, bool entered = true)
    {
        const std::int64_t handles = countHandles();
        (void)service.takeCalls();
        try {
            request();
            FAIL() << "nothing was thrown";
        } catch (const TessaportForcedUpdateException& e) {
            EXPECT_STREQ(e.getErrorMessage(), L"half way");
        }
        EXPECT_EQ(countHandles(), handles);
        const bool wasLeft = ::testing::Value(service.takeCalledMembers(), ::testing::Contains("Dispose"));
        EXPECT_EQ(wasLeft, entered);
        EXPECT_NO_THROW(bridge.discover());
    }

    const Json halfWay = failure("TessaportForcedUpdateException", L"half way");
    const Json items = Json::array({item(1), item(2), item(3)});
};

TEST_F(FailingEnumeration, OfItemsFailsAtEveryStep)
{
    const ItemId folder = idOf(9);
    for (const char* step : {"MoveNext", "Current"}) {
        for (unsigned after = 0; after < 3; ++after) {
            service.answer("GetFolderContents", failingList(items, after, halfWay, step));
            expectFailure([&] { (void)bridge.getFolderContents(folder); });
        }
    }
}

TEST_F(FailingEnumeration, OfItemsFailsAtItsEnd)
{
    const ItemId folder = idOf(9);
    service.answer("GetChildFolders", failingList(items, 3, halfWay));

    expectFailure([&] { (void)bridge.getChildFolders(folder); });
}

TEST_F(FailingEnumeration, OfItemsFailsBeforeItBegins)
{
    const ItemId folder = idOf(9);
    service.answer("GetFolderContents", failingList(items, 0, halfWay, "GetEnumerator"));

    expectFailure([&] { (void)bridge.getFolderContents(folder); }, false);
}

TEST_F(FailingEnumeration, OfItemsFailsWhileItIsDisposed)
{
    const ItemId folder = idOf(9);
    service.answer("GetFolderContents", failingList(items, 0, halfWay, "Dispose"));

    expectFailure([&] { (void)bridge.getFolderContents(folder); });
}

TEST_F(FailingEnumeration, OfEveryOtherListFailsTheRequest)
{
    const CommandContext context = contextOf(9, {});
    const Json drives = Json::array({drive(1, DriveType, L"D:\\A"), drive(2, DriveType, L"D:\\B")});
    service.answer("GetDrives", failingList(drives, 1, halfWay));
    expectFailure([&] { (void)bridge.getDrives(); });

    service.answer("GetItemsByRelativePaths", failingList(items, 2, halfWay));
    expectFailure([&] { (void)bridge.getItemsByRelativePaths({}, {}); });

    service.answer(
        "GetItemsByWorkspacePaths", failingList(Json::array({workspacePathResult(item(1), L"a", 1)}), 1, halfWay));
    expectFailure([&] { (void)bridge.getItemsByWorkspacePaths({}); });

    service.answer("GetPropertyDefinitions", failingList(Json::array(), 0, halfWay));
    expectFailure([&] { (void)bridge.getPropertyDefinitions({}); });

    service.answer("GetProperties", propertyValues(failingList(Json::array({propertyValue(L"P", 1)}), 1, halfWay)));
    expectFailure([&] { (void)bridge.getStringPropertyValues({}, {}); });

    service.answer("GetCommands", failingList(Json::array({command(1), command(2)}), 1, halfWay));
    expectFailure([&] { (void)bridge.getCommands(context); });

    service.answer("GetPermanentIds", failingList(Json::array({permanentIdResult(1, "p", 1)}), 1, halfWay));
    expectFailure([&] { (void)bridge.getPermanentIds({}); });

    service.answer(
        "GetItemsByPermanentIds", failingList(Json::array({itemOfPermanentIdResult(item(1), "p", 1)}), 1, halfWay));
    expectFailure([&] { (void)bridge.getItemsByPermanentIds({}); });
}

TEST_F(FailingEnumeration, OfEveryListOfACommandResultFailsTheRequest)
{
    service.answer("SyncFiles", outcome(true, failingList(items, 2, halfWay)));
    expectFailure([&] { (void)bridge.syncFiles({}); });
    service.answer("SyncFiles", outcome(true, items, failingList(items, 2, halfWay)));
    expectFailure([&] { (void)bridge.syncFiles({}); });
    service.answer("SyncFiles", outcome(true, items, items, failingList(items, 3, halfWay)));
    expectFailure([&] { (void)bridge.syncFiles({}); });
}

TEST_F(FailingEnumeration, IsDisposedWhenItDoesNotFail)
{
    const ItemId folder = idOf(9);
    service.answer("GetFolderContents", failingList(items, 99, halfWay));

    EXPECT_EQ(bridge.getFolderContents(folder).GetSize(), 3U);

    EXPECT_THAT(service.takeCalledMembers(), ::testing::ElementsAre("GetFolderContents", "Dispose"));
}

TEST_F(FailingEnumeration, OfAPropertyValueThatHasNoTextFailsTheCall)
{
    service.answer("GetProperties",
        propertyValues(Json::array({propertyValue(L"P", 1), propertyValue(L"P", typedValue("unprintable"))})));

    try {
        (void)bridge.getStringPropertyValues({}, {});
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_STREQ(e.getErrorMessage(), L"The value has no text.");
    }
}

// Long enough that pieces of it have crossed the boundary before the failure.
TEST_F(FailingEnumeration, OfALongListLeavesNothingBehind)
{
    const ItemId folder = idOf(9);
    Json many = Json::array();
    for (int i = 0; i < 30'000; ++i)
        many.push_back(item(1000 + i));
    service.answer("GetFolderContents", failingList(many, 30'000, halfWay));
    service.answer("SyncFiles", outcome(true, items, many, failingList(many, 30'000, halfWay)));

    expectFailure([&] { (void)bridge.getFolderContents(folder); });
    expectFailure([&] { (void)bridge.syncFiles({}); });
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
