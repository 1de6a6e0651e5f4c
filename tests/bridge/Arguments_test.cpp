// The arguments that reach the sync application.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Common::QVString;
using Common::QVUUID;
using ::testing::ElementsAre;
using Bridge = Tessaport::QvManagedTessaportService;

class Arguments : public BridgeTest
{
};

TEST_F(Arguments, OfAConnectionWithoutAWindowAreNone)
{
    (void)service.takeCalls();

    const Bridge other;

    EXPECT_EQ(service.takeCall("TessaportService")["window"], nullptr);
}

TEST_F(Arguments, OfAConnectionWithAWindowAreTheWindow)
{
    (void)service.takeCalls();

    const Bridge other(reinterpret_cast<HWND>(std::intptr_t{0x7FFF12345678}));

    EXPECT_EQ(service.takeCall("TessaportService")["window"], 0x7FFF12345678);
}

TEST_F(Arguments, OfDiscoverVersionAndDrivesAreNone)
{
    (void)service.takeCalls();

    bridge.discover();
    (void)bridge.getVersion();
    (void)bridge.getDrives();

    EXPECT_THAT(service.takeCalledMembers(), ElementsAre("Discover", "GetVersion", "GetDrives"));
}

TEST_F(Arguments, OfGetChildFoldersAreTheSameManagedFolder)
{
    (void)bridge.getChildFolders(idOf(5));

    EXPECT_EQ(service.takeCall("GetChildFolders")["folder"], 5);
}

TEST_F(Arguments, OfGetFolderContentsAreTheSameManagedFolder)
{
    (void)bridge.getFolderContents(idOf(5));

    EXPECT_EQ(service.takeCall("GetFolderContents")["folder"], 5);
}

TEST_F(Arguments, OfAddFilesAreTheFolderAndPathsWithBackSlashes)
{
    (void)bridge.addFiles(idOf(5), texts({L"C:/a/b\\c.txt", L"//server/x", L"plain"}));

    const Json call = service.takeCall("AddFiles");
    EXPECT_EQ(call["folder"], 5);
    EXPECT_EQ(call["paths"], Json({"C:\\a\\b\\c.txt", "\\\\server\\x", "plain"}));
}

TEST_F(Arguments, OfGetOrCreateFolderAreTheParentAndTheNameWithBackSlashes)
{
    (void)bridge.getOrCreateFolder(idOf(5), L"new/nested");

    const Json call = service.takeCall("GetOrCreateFolder");
    EXPECT_EQ(call["parent"], 5);
    EXPECT_EQ(call["name"], "new\\nested");
}

TEST_F(Arguments, OfCanAddFilesAreTheFolderAndPathsWithBackSlashes)
{
    (void)bridge.canAddFiles(idOf(5), texts({L"C:/a", L"/b/"}));

    const Json call = service.takeCall("CanAddFiles");
    EXPECT_EQ(call["folder"], 5);
    EXPECT_EQ(call["paths"], Json({"C:\\a", "\\b\\"}));
}

TEST_F(Arguments, OfIsFileInWorkspaceAreAListOfThePathWithBackSlashes)
{
    (void)bridge.isFileInWorkspace(L"C:/w/a.txt");

    EXPECT_EQ(service.takeCall("AreFilesInWorkspace")["paths"], Json({"C:\\w\\a.txt"}));
}

TEST_F(Arguments, OfSyncFilesAreTheSameManagedIdsInOrder)
{
    (void)bridge.syncFiles(bufferOf<Item>({itemOf(3), itemOf(1), itemOf(3)}));

    EXPECT_EQ(service.takeCall("SyncFiles")["ids"], Json({3, 1, 3}));
}

TEST_F(Arguments, OfDeleteFilesOrFoldersAreTheSameManagedIdsInOrder)
{
    (void)bridge.deleteFilesOrFolders(bufferOf<Item>({itemOf(3), itemOf(1), itemOf(3)}));

    EXPECT_EQ(service.takeCall("DeleteItems")["ids"], Json({3, 1, 3}));
}

TEST_F(Arguments, OfGetItemsByWorkspacePathsHaveBackSlashes)
{
    (void)bridge.getItemsByWorkspacePaths(texts({L"C:/a/b", L"C:\\c"}));

    EXPECT_EQ(service.takeCall("GetItemsByWorkspacePaths")["paths"], Json({"C:\\a\\b", "C:\\c"}));
}

TEST_F(Arguments, OfGetItemsByRelativePathsAreTheDriveAndPathsWithBackSlashes)
{
    (void)bridge.getItemsByRelativePaths(
        QVUUID("{ABCDEF01-2345-6789-ABCD-EF0123456789}"), texts({L"a/b/c", L"", L"d"}));

    const Json call = service.takeCall("GetItemsByRelativePaths");
    EXPECT_EQ(call["driveId"], "abcdef01-2345-6789-abcd-ef0123456789");
    EXPECT_EQ(call["paths"], Json({"a\\b\\c", "", "d"}));
}

TEST_F(Arguments, OfFileClosedAreTheProcessAndThePathWithBackSlashes)
{
    for (const int processId : {4711, 0, -1, INT32_MAX, INT32_MIN}) {
        bridge.fileClosedWithinRunningProcess(processId, L"C:/w/a.txt");

        const Json call = service.takeCall("FileClosedWithinRunningProcess");
        EXPECT_EQ(call["processId"], processId);
        EXPECT_EQ(call["path"], "C:\\w\\a.txt");
    }
}

TEST_F(Arguments, OfGetPropertyDefinitionsAreTheDrive)
{
    (void)bridge.getPropertyDefinitions(QVUUID(DriveId));

    EXPECT_EQ(service.takeCall("GetPropertyDefinitions")["driveId"], DriveId);
}

TEST_F(Arguments, OfGetStringPropertyValuesAreTheIdsAndThePropertiesUnchanged)
{
    (void)bridge.getStringPropertyValues(bufferOf<ItemId>({idOf(2), idOf(9)}), texts({L"a/b", L"c\\d"}));

    const Json call = service.takeCall("GetProperties");
    EXPECT_EQ(call["ids"], Json({2, 9}));
    EXPECT_EQ(call["properties"], Json({"a/b", "c\\d"}));
}

TEST_F(Arguments, OfGetCommandsAreWindowItemAndFurtherItems)
{
    (void)bridge.getCommands(contextOf(1, {2, 3}));

    const Json call = service.takeCall("GetCommands");
    EXPECT_EQ(call["window"], 0x1234);
    EXPECT_EQ(call["item"], 1);
    EXPECT_EQ(call["items"], Json({2, 3}));
}

TEST_F(Arguments, OfExecuteCommandAreTheSameManagedCommandAndItsContext)
{
    const Command given = commandOf(8);

    (void)bridge.executeCommand(given, contextOf(1, {}));

    const Json call = service.takeCall("ExecuteCommand");
    EXPECT_EQ(call["command"], 8);
    EXPECT_EQ(call["window"], 0x1234);
    EXPECT_EQ(call["item"], 1);
    EXPECT_EQ(call["items"], Json::array());
}

TEST_F(Arguments, OfGetPermanentIdsAreTheIdsInOrder)
{
    (void)bridge.getPermanentIds(bufferOf<ItemId>({idOf(2), idOf(1)}));

    EXPECT_EQ(service.takeCall("GetPermanentIds")["ids"], Json({2, 1}));
}

TEST_F(Arguments, OfGetItemsByPermanentIdsAreUnchanged)
{
    (void)bridge.getItemsByPermanentIds(texts({L"p/1", L"p\\2", L""}));

    EXPECT_EQ(service.takeCall("GetItemsByPermanentIds")["permanentIds"], Json({"p/1", "p\\2", ""}));
}

TEST_F(Arguments, KeepEveryCharacterExceptZero)
{
    const std::wstring odd = L"\x01\n\xE9\x4E2D\U0001F600\xD800 \xDFFF\xFFFF";

    (void)bridge.getItemsByPermanentIds(texts({odd.c_str()}));

    EXPECT_EQ(textOf(service.takeCall("GetItemsByPermanentIds")["permanentIds"][0]), odd);
}

TEST_F(Arguments, KeepLongStringsComplete)
{
    const std::wstring path(100'000, L'/');

    (void)bridge.isFileInWorkspace(path.c_str());

    EXPECT_EQ(service.takeCall("AreFilesInWorkspace")["paths"][0], std::string(100'000, '\\'));
}

TEST_F(Arguments, OfManyKeysStayInOrder)
{
    QVBuffer<QVString> keys;
    Json expected = Json::array();
    for (int i = 0; i < 10'000; ++i) {
        keys.Append(std::to_wstring(i).c_str());
        expected.push_back(std::to_string(i));
    }

    (void)bridge.getItemsByWorkspacePaths(keys);

    EXPECT_EQ(service.takeCall("GetItemsByWorkspacePaths")["paths"], expected);
}

TEST_F(Arguments, AreEmptyListsForEmptyBuffers)
{
    const ItemId folder = idOf(1);

    (void)bridge.addFiles(folder, {});
    EXPECT_EQ(service.takeCall("AddFiles")["paths"], Json::array());
    (void)bridge.canAddFiles(folder, {});
    EXPECT_EQ(service.takeCall("CanAddFiles")["paths"], Json::array());
    (void)bridge.syncFiles({});
    EXPECT_EQ(service.takeCall("SyncFiles")["ids"], Json::array());
    (void)bridge.deleteFilesOrFolders({});
    EXPECT_EQ(service.takeCall("DeleteItems")["ids"], Json::array());
    (void)bridge.getItemsByWorkspacePaths({});
    EXPECT_EQ(service.takeCall("GetItemsByWorkspacePaths")["paths"], Json::array());
    (void)bridge.getItemsByRelativePaths(QVUUID(DriveId), {});
    EXPECT_EQ(service.takeCall("GetItemsByRelativePaths")["paths"], Json::array());
    (void)bridge.getStringPropertyValues({}, {});
    const Json call = service.takeCall("GetProperties");
    EXPECT_EQ(call["ids"], Json::array());
    EXPECT_EQ(call["properties"], Json::array());
    (void)bridge.getPermanentIds({});
    EXPECT_EQ(service.takeCall("GetPermanentIds")["ids"], Json::array());
    (void)bridge.getItemsByPermanentIds({});
    EXPECT_EQ(service.takeCall("GetItemsByPermanentIds")["permanentIds"], Json::array());
}

TEST_F(Arguments, ThatAreEmptyBuffersReturnWhatTheServiceReturns)
{
    const CommandContext context = contextOf(9, {});
    const Command command = commandOf(8);
    const Json items = Json::array({item(1), item(2)});
    for (const char* member : {"AddFiles", "SyncFiles", "DeleteItems", "ExecuteCommand"})
        service.answer(member, outcome(true, items));
    service.answer("CanAddFiles", true);
    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(item(1), L"unasked", 1)}));
    service.answer("GetItemsByRelativePaths", items);
    service.answer("GetProperties", propertyValues(Json::array({propertyValue(L"Unasked", 1)})));
    service.answer("GetCommands", Json::array({TestSupport::command(1)}));
    service.answer("GetPermanentIds", Json::array({permanentIdResult(1, "unasked", 1)}));
    service.answer("GetItemsByPermanentIds", Json::array({itemOfPermanentIdResult(item(1), "unasked", 1)}));

    EXPECT_EQ(bridge.addFiles(context.itemId, {}).itemsCreated.GetSize(), 2U);
    EXPECT_TRUE(bridge.canAddFiles(context.itemId, {}));
    EXPECT_EQ(bridge.syncFiles({}).itemsCreated.GetSize(), 2U);
    EXPECT_EQ(bridge.deleteFilesOrFolders({}).itemsCreated.GetSize(), 2U);
    EXPECT_EQ(bridge.getItemsByWorkspacePaths({}).GetSize(), 1U);
    EXPECT_EQ(bridge.getItemsByRelativePaths({}, {}).GetSize(), 2U);
    EXPECT_EQ(bridge.getStringPropertyValues({}, {}).GetSize(), 1U);
    EXPECT_EQ(bridge.getCommands(context).GetSize(), 1U);
    EXPECT_EQ(bridge.executeCommand(command, context).itemsCreated.GetSize(), 2U);
    EXPECT_EQ(bridge.getPermanentIds({}).GetSize(), 1U);
    EXPECT_EQ(bridge.getItemsByPermanentIds({}).GetSize(), 1U);
    service.answer("CanAddFiles", false);
    EXPECT_FALSE(bridge.canAddFiles(context.itemId, {}));
}

TEST_F(Arguments, OfANullIdAreNull)
{
    const ItemId null = idOf(nullptr);
    CommandContext context;
    context.itemId = null;
    context.itemIds.Append(null);

    (void)bridge.getFolderContents(null);
    EXPECT_EQ(service.takeCall("GetFolderContents")["folder"], nullptr);
    (void)bridge.getPermanentIds(bufferOf<ItemId>({idOf(4), null}));
    EXPECT_EQ(service.takeCall("GetPermanentIds")["ids"], Json({4, nullptr}));
    (void)bridge.getCommands(context);
    const Json call = service.takeCall("GetCommands");
    EXPECT_EQ(call["item"], nullptr);
    EXPECT_EQ(call["items"], Json::array({nullptr}));
    EXPECT_EQ(call["window"], 0);
}

TEST_F(Arguments, OfCopiedIdsAreTheSameManagedId)
{
    const ItemId original = idOf(6);
    ItemId copy(original);
    ItemId assigned;
    assigned = copy;
    ItemId emptyAssigned(assigned);
    emptyAssigned = ItemId();
    Item holder = itemOf(7);
    holder.id = emptyAssigned;
    const Item holderCopy = holder;

    (void)bridge.getPermanentIds(bufferOf<ItemId>({original, copy, assigned, emptyAssigned, holderCopy.id}));

    EXPECT_EQ(service.takeCall("GetPermanentIds")["ids"], Json({6, 6, 6, 6, 6}));
}

TEST_F(Arguments, OfCopiedCommandsAreTheSameManagedCommand)
{
    const Command original = commandOf(8);
    const Command copy(original);
    Command assigned;
    assigned = copy;
    assigned = Command();
    const CommandContext context = contextOf(1, {});

    (void)bridge.executeCommand(copy, context);
    EXPECT_EQ(service.takeCall("ExecuteCommand")["command"], 8);
    (void)bridge.executeCommand(assigned, context);
    EXPECT_EQ(service.takeCall("ExecuteCommand")["command"], 8);
}

// Two conversions of one managed id share the object but not the wrapper.
TEST_F(Arguments, OfAnIdConvertedTwiceAreTheSameManagedId)
{
    service.answer(
        "GetPermanentIds", Json::array({permanentIdResult(5, nullptr, 1), permanentIdResult(5, nullptr, 1)}));
    const auto results = bridge.getPermanentIds({});
    service.answerInTurn("GetPermanentIds", {});
    (void)service.takeCalls();

    EXPECT_NE(Bridge::getInternalId(results[0]->itemId), Bridge::getInternalId(results[1]->itemId));
    (void)bridge.getPermanentIds(bufferOf<ItemId>({results[0]->itemId, results[1]->itemId}));
    EXPECT_EQ(service.takeCall("GetPermanentIds")["ids"], Json({5, 5}));
}

TEST_F(Arguments, MayComeFromAnotherConnection)
{
    const ItemId id = idOf(5);
    Bridge other;

    (void)other.getFolderContents(id);

    EXPECT_EQ(service.takeCall("GetFolderContents")["folder"], 5);
}

using Request = std::function<void(Bridge&)>;

struct NamedRequest {
    const char* name;
    Request run;
};

std::string nameOf(const ::testing::TestParamInfo<NamedRequest>& info) { return info.param.name; }

class ArgumentThatNamesNothing : public BridgeTest, public ::testing::WithParamInterface<NamedRequest>
{
};

TEST_P(ArgumentThatNamesNothing, FailsTheRequestBeforeTheServiceIsCalled)
{
    (void)service.takeCalls();

    try {
        GetParam().run(bridge);
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_EQ(typeid(e), typeid(ApiException));
        EXPECT_STRNE(e.what(), "");
    }

    EXPECT_TRUE(service.takeCalls().empty());
    EXPECT_NO_THROW(bridge.discover());
}

QVBuffer<Item> oneItemThatNamesNothing() { return bufferOf<Item>({Item()}); }
QVBuffer<ItemId> oneIdThatNamesNothing() { return bufferOf<ItemId>({ItemId()}); }

INSTANTIATE_TEST_SUITE_P(ItemId, ArgumentThatNamesNothing,
    ::testing::Values(NamedRequest{"getChildFolders", [](Bridge& bridge) { (void)bridge.getChildFolders({}); }},
        NamedRequest{"getFolderContents", [](Bridge& bridge) { (void)bridge.getFolderContents({}); }},
        NamedRequest{"addFiles", [](Bridge& bridge) { (void)bridge.addFiles({}, {}); }},
        NamedRequest{"getOrCreateFolder", [](Bridge& bridge) { (void)bridge.getOrCreateFolder({}, L"x"); }},
        NamedRequest{"canAddFiles", [](Bridge& bridge) { (void)bridge.canAddFiles({}, {}); }},
        NamedRequest{"syncFiles", [](Bridge& bridge) { (void)bridge.syncFiles(oneItemThatNamesNothing()); }},
        NamedRequest{"deleteFilesOrFolders",
            [](Bridge& bridge) { (void)bridge.deleteFilesOrFolders(oneItemThatNamesNothing()); }},
        NamedRequest{"getStringPropertyValues",
            [](Bridge& bridge) { (void)bridge.getStringPropertyValues(oneIdThatNamesNothing(), {}); }},
        NamedRequest{"getCommands", [](Bridge& bridge) { (void)bridge.getCommands({}); }},
        NamedRequest{"getPermanentIds", [](Bridge& bridge) { (void)bridge.getPermanentIds(oneIdThatNamesNothing()); }}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(DriveId, ArgumentThatNamesNothing,
    ::testing::Values(NamedRequest{"getItemsByRelativePaths",
                          [](Bridge& bridge) { (void)bridge.getItemsByRelativePaths(QVUUID("no identifier"), {}); }},
        NamedRequest{
            "getPropertyDefinitions", [](Bridge& bridge) { (void)bridge.getPropertyDefinitions(QVUUID("")); }}),
    nameOf);

TEST_F(Arguments, OfACommandThatNamesNothingFailTheRequest)
{
    const CommandContext context = contextOf(1, {});

    EXPECT_THROW((void)bridge.executeCommand(Command(), context), ApiException);

    EXPECT_TRUE(service.takeCalls().empty());
}

TEST_F(Arguments, OfAContextWithAnItemThatNamesNothingFailTheRequest)
{
    CommandContext context = contextOf(1, {2});
    context.itemIds.Append(ItemId());

    EXPECT_THROW((void)bridge.getCommands(context), ApiException);
    EXPECT_THROW((void)bridge.executeCommand(commandOf(3), context), ApiException);
}

TEST_F(Arguments, MayBeANilDriveId)
{
    (void)bridge.getPropertyDefinitions(QVUUID("00000000-0000-0000-0000-000000000000"));

    EXPECT_EQ(service.takeCall("GetPropertyDefinitions")["driveId"], "00000000-0000-0000-0000-000000000000");
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
