// The results of the sync application, field by field.
#include <algorithm>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Common::QVString;
using Common::QVUUID;

class Results : public BridgeTest
{
protected:
    void expectItem(const Item& actual, int number)
    {
        const std::wstring name = L"item " + std::to_wstring(number) + L".txt";
        EXPECT_EQ(actual.driveId, QVUUID(DriveId));
        EXPECT_TRUE(actual.isFolder);
        EXPECT_TRUE(actual.isInWorkspace);
        EXPECT_TRUE(actual.isOnServer);
        EXPECT_EQ(actual.lastModifiedDate, 1'700'000'000 + number);
        EXPECT_EQ(actual.name, QVString(name.c_str()));
        EXPECT_EQ(actual.relativePath, QVString((L"Folder\\" + name).c_str()));
        EXPECT_EQ(actual.workspacePath, QVString((L"D:\\Drive\\Folder\\" + name).c_str()));
        EXPECT_EQ(numberOf(actual.id), number);
    }

    void expectItems(const QVBuffer<Item>& actual, std::initializer_list<int> numbers)
    {
        ASSERT_EQ(actual.GetSize(), numbers.size());
        for (std::uint32_t i = 0; i < actual.GetSize(); ++i)
            expectItem(*actual[i], numbers.begin()[i]);
    }

    // What the service gets when the id is handed back.
    Json numberOf(const ItemId& id)
    {
        (void)service.takeCalls();
        (void)bridge.getChildFolders(id);
        return service.takeCall("GetChildFolders")["folder"];
    }

    Item oneItem(const Json& json)
    {
        service.answer("GetOrCreateFolder", json);
        return bridge.getOrCreateFolder(idOf(999), L"x");
    }
};

TEST_F(Results, OfGetVersion)
{
    service.answer("GetVersion", text(L"12.3.4 \x4E2D"));

    EXPECT_EQ(bridge.getVersion(), QVString(L"12.3.4 \x4E2D"));
}

TEST_F(Results, OfGetVersionMayBeEmpty)
{
    service.answer("GetVersion", "");

    EXPECT_TRUE(bridge.getVersion().Empty());
}

TEST_F(Results, AnItemHasAllNineFields) { expectItem(oneItem(item(42)), 42); }

TEST_F(Results, AnItemHasEachFlagSeparately)
{
    const auto with = [&](const char* flag) {
        Json json = {{"driveId", DriveId}, {"id", 1}, {flag, true}};
        return oneItem(json);
    };

    const Item folder = with("isFolder");
    EXPECT_TRUE(folder.isFolder && !folder.isInWorkspace && !folder.isOnServer);
    const Item local = with("isInWorkspace");
    EXPECT_TRUE(!local.isFolder && local.isInWorkspace && !local.isOnServer);
    const Item remote = with("isOnServer");
    EXPECT_TRUE(!remote.isFolder && !remote.isInWorkspace && remote.isOnServer);
}

TEST_F(Results, StringsKeepEveryCharacterExceptZero)
{
    const std::wstring odd = L"\x01\n\xE9\x4E2D\U0001F600\xD800 \xDFFF\xFFFF/\\";
    Json json = item(1);
    for (const char* field : {"name", "relativePath", "workspacePath"})
        json[field] = text(odd);

    const Item actual = oneItem(json);

    EXPECT_EQ(actual.name.w_str(), odd);
    EXPECT_EQ(actual.relativePath.w_str(), odd);
    EXPECT_EQ(actual.workspacePath.w_str(), odd);
}

// Every alignment of the vector code, with a pair at each position.
TEST_F(Results, StringsOfEveryLengthAreComplete)
{
    for (std::size_t length = 0; length < 40; ++length) {
        std::wstring name(length, L'a');
        for (std::size_t i = 0; i < length; ++i)
            name[i] = static_cast<wchar_t>(L'a' + i % 26);
        Json json = item(1);
        json["name"] = text(name);
        EXPECT_EQ(oneItem(json).name.w_str(), name);

        json["name"] = text(name + L"\U0001F600" + name);
        EXPECT_EQ(oneItem(json).name.w_str(), name + L"\U0001F600" + name);
    }
}

// The next record is aligned, whatever the lengths of the strings before it.
TEST_F(Results, OfLookupsAreCompleteForStringsOfEveryLength)
{
    for (std::size_t itemLength = 0; itemLength < 8; ++itemLength) {
        for (std::size_t keyLength = 0; keyLength < 8; ++keyLength) {
            const std::wstring path(itemLength, L'p');
            const std::wstring key(keyLength, L'k');
            service.answer("GetItemsByWorkspacePaths",
                {workspacePathResult(itemAt(1, path), key, 1), workspacePathResult(nullptr, key, 2),
                    workspacePathResult(itemAt(2, path), key, 1)});
            const auto results = bridge.getItemsByWorkspacePaths({});

            ASSERT_EQ(results.GetSize(), 3U);
            for (const auto& result : results)
                EXPECT_EQ(result.workspacePath.w_str(), key);
            EXPECT_EQ(results[0]->item.workspacePath.w_str(), path);
            EXPECT_EQ(results[2]->item.workspacePath.w_str(), path);
        }
    }
}

TEST_F(Results, StringsEndAtTheirFirstZeroCharacter)
{
    Json json = item(1);
    json["name"] = text(std::wstring_view(L"ab\0cd", 5));
    json["relativePath"] = text(std::wstring_view(L"\0cd", 3));
    json["workspacePath"] = text(L"0123456789abcdefghijk");

    const Item actual = oneItem(json);

    EXPECT_EQ(actual.name, QVString(L"ab"));
    EXPECT_TRUE(actual.relativePath.Empty());
    EXPECT_EQ(actual.workspacePath, QVString(L"0123456789abcdefghijk"));
}

TEST_F(Results, NullStringsOfAnItemAreEmpty)
{
    Json json = item(1);
    for (const char* field : {"name", "relativePath", "workspacePath"})
        json[field] = nullptr;

    const Item actual = oneItem(json);

    EXPECT_TRUE(actual.name.Empty());
    EXPECT_TRUE(actual.relativePath.Empty());
    EXPECT_TRUE(actual.workspacePath.Empty());
}

TEST_F(Results, ANullIdOfAnItemIsAnIdOfNull)
{
    Json json = item(1);
    json["id"] = nullptr;

    const Item actual = oneItem(json);

    ASSERT_NE(Tessaport::QvManagedTessaportService::getInternalId(actual.id), nullptr);
    EXPECT_EQ(numberOf(actual.id), nullptr);
}

TEST_F(Results, ANilDriveIdIsNil)
{
    Json json = item(1);
    json["driveId"] = "00000000-0000-0000-0000-000000000000";

    EXPECT_TRUE(oneItem(json).driveId.isNil());
}

TEST_F(Results, ADriveIdReadsAsTheServiceWritesIt)
{
    Json json = item(1);
    json["driveId"] = "01234567-89ab-cdef-0123-456789abcdef";

    EXPECT_EQ(oneItem(json).driveId.getString(), QVString("01234567-89ab-cdef-0123-456789abcdef"));
}

TEST_F(Results, OfGetDrives)
{
    Json second = drive(2, DocsType, L"D:\\Docs");
    second["capabilities"]["locking"] = false;
    second["id"] = "01234567-89ab-cdef-0123-456789abcdef";
    service.answer("GetDrives", Json::array({drive(1, DriveType, L"D:\\Drive"), second}));

    const QVBuffer<Drive> drives = bridge.getDrives();

    ASSERT_EQ(drives.GetSize(), 2U);
    EXPECT_TRUE(drives[0]->locking);
    EXPECT_EQ(drives[0]->driveType, QVString(DriveType));
    EXPECT_EQ(drives[0]->id, QVUUID(DriveId));
    EXPECT_EQ(drives[0]->name, QVString(L"Drive 1"));
    EXPECT_EQ(drives[0]->workspaceLocation, QVString(L"D:\\Drive"));
    EXPECT_EQ(drives[0]->root.workspacePath, QVString(L"D:\\Drive"));
    EXPECT_EQ(drives[0]->root.name, QVString(L"item 1.txt"));
    EXPECT_EQ(numberOf(drives[0]->root.id), 1);
    EXPECT_FALSE(drives[1]->locking);
    EXPECT_EQ(drives[1]->driveType, QVString(DocsType));
    EXPECT_EQ(drives[1]->id, QVUUID("01234567-89ab-cdef-0123-456789abcdef"));
    EXPECT_EQ(drives[1]->workspaceLocation, QVString(L"D:\\Docs"));
    EXPECT_EQ(numberOf(drives[1]->root.id), 2);
}

TEST_F(Results, NullStringsOfADriveAreEmpty)
{
    Json json = drive(1, DriveType, L"D:\\Drive");
    for (const char* field : {"name", "driveType", "workspaceLocation"})
        json[field] = nullptr;
    service.answer("GetDrives", Json::array({json}));

    const QVBuffer<Drive> drives = bridge.getDrives();

    EXPECT_TRUE(drives[0]->name.Empty());
    EXPECT_TRUE(drives[0]->driveType.Empty());
    EXPECT_TRUE(drives[0]->workspaceLocation.Empty());
}

TEST_F(Results, OfGetChildFoldersAreInOrderWithDuplicates)
{
    service.answer("GetChildFolders", Json::array({item(3), item(1), item(3)}));

    const QVBuffer<Item> folders = bridge.getChildFolders(idOf(1));
    service.answerInTurn("GetChildFolders", {});

    expectItems(folders, {3, 1, 3});
}

TEST_F(Results, OfGetFolderContentsAreInOrder)
{
    service.answer("GetFolderContents", Json::array({item(2), item(1)}));

    expectItems(bridge.getFolderContents(idOf(1)), {2, 1});
}

TEST_F(Results, OfGetItemsByRelativePathsAreInOrder)
{
    service.answer("GetItemsByRelativePaths", Json::array({item(2), item(1)}));

    expectItems(bridge.getItemsByRelativePaths(QVUUID(DriveId), {}), {2, 1});
}

TEST_F(Results, OfALongListAreComplete)
{
    service.answer("GetFolderContents", generated(100'000));

    const QVBuffer<Item> items = bridge.getFolderContents(idOf(1));

    ASSERT_EQ(items.GetSize(), 100'000U);
    EXPECT_EQ(items[0]->name, QVString(L"Section 0000000 - elevations.dwg"));
    EXPECT_EQ(items[99'999]->name, QVString(L"Section 0099999 - elevations.dwg"));
    EXPECT_EQ(items[99'999]->lastModifiedDate - items[0]->lastModifiedDate, 99'999);
    EXPECT_EQ(items[100'000], nullptr);
}

TEST_F(Results, OfEveryFileOperationIsTheOutcomeWithItsLists)
{
    const Json json = outcome(true, Json::array({item(1)}), Json::array({item(2), item(3)}), Json::array({item(4)}));
    const ItemId folder = idOf(9);
    const Command command = commandOf(1);
    const CommandContext context = contextOf(9, {});
    for (const char* member : {"AddFiles", "SyncFiles", "DeleteItems", "ExecuteCommand"})
        service.answer(member, json);

    for (const CommandResult& result : {bridge.addFiles(folder, {}), bridge.syncFiles({}),
             bridge.deleteFilesOrFolders({}), bridge.executeCommand(command, context)}) {
        EXPECT_TRUE(result.isSuccess);
        expectItems(result.itemsCreated, {1});
        expectItems(result.itemsDeleted, {2, 3});
        expectItems(result.itemsUpdated, {4});
    }
}

// Each list is longer than one piece in which it crosses the boundary.
TEST_F(Results, OfAFileOperationWithLongListsAreCompleteAndInOrder)
{
    constexpr int Count = 8'000;
    Json lists[] = {Json::array(), Json::array(), Json::array()};
    for (int i = 0; i < 3 * Count; ++i)
        lists[i / Count].push_back(item(i));
    service.answer("SyncFiles", outcome(true, lists[0], lists[1], lists[2]));

    const CommandResult result = bridge.syncFiles({});

    EXPECT_TRUE(result.isSuccess);
    int number = 0;
    for (const QVBuffer<Item>* list : {&result.itemsCreated, &result.itemsDeleted, &result.itemsUpdated}) {
        ASSERT_EQ(list->GetSize(), std::uint32_t{Count});
        for (std::uint32_t i = 0; i < list->GetSize(); ++i)
            ASSERT_EQ((*list)[i]->lastModifiedDate, 1'700'000'000 + number++);
        expectItem(*(*list)[Count - 1], number - 1);
    }
}

TEST_F(Results, OfAFailedFileOperationAreMarkedAsFailed)
{
    service.answer("SyncFiles", outcome(false, Json::array(), Json::array(), Json::array({item(1)})));

    const CommandResult result = bridge.syncFiles({});

    EXPECT_FALSE(result.isSuccess);
    EXPECT_EQ(result.itemsCreated.GetSize(), 0U);
    expectItems(result.itemsUpdated, {1});
}

TEST_F(Results, OfCanAddFilesAreTheServicesAnswer)
{
    const ItemId folder = idOf(1);
    service.answerInTurn("CanAddFiles", {Json{{"value", true}}, Json{{"value", false}}});

    EXPECT_TRUE(bridge.canAddFiles(folder, {}));
    EXPECT_FALSE(bridge.canAddFiles(folder, {}));
}

TEST_F(Results, OfIsFileInWorkspaceAreFoundByTheRewrittenPath)
{
    const auto answerFor = [&](const char* path, bool flag, bool ignoreCase = false) {
        service.answer(
            "AreFilesInWorkspace", {{"flags", Json::array({Json::array({path, flag})})}, {"ignoreCase", ignoreCase}});
        return bridge.isFileInWorkspace(L"C:/w/a.txt");
    };

    EXPECT_TRUE(answerFor("C:\\w\\a.txt", true));
    EXPECT_FALSE(answerFor("C:\\w\\a.txt", false));
    EXPECT_FALSE(answerFor("C:/w/a.txt", true));
    EXPECT_FALSE(answerFor("c:\\W\\A.txt", true));
    EXPECT_TRUE(answerFor("c:\\W\\A.txt", true, true));
}

TEST_F(Results, OfIsFileInWorkspaceAreFalseForAPathThatTheServiceLeavesOut)
{
    service.answer("AreFilesInWorkspace", {{"flags", Json::array()}});

    EXPECT_FALSE(bridge.isFileInWorkspace(L"C:/w/a.txt"));
}

TEST_F(Results, OfGetItemsByWorkspacePaths)
{
    service.answer("GetItemsByWorkspacePaths",
        Json::array({workspacePathResult(item(1), L"C:\\a", 1), workspacePathResult(nullptr, L"C:\\b", 4),
            workspacePathResult(item(3), L"", -7)}));

    const auto results = bridge.getItemsByWorkspacePaths({});

    ASSERT_EQ(results.GetSize(), 3U);
    expectItem(results[0]->item, 1);
    EXPECT_EQ(results[0]->result, Result::Success);
    EXPECT_EQ(results[0]->workspacePath, QVString(L"C:\\a"));
    EXPECT_EQ(results[1]->result, Result::Offline);
    EXPECT_EQ(results[1]->workspacePath, QVString(L"C:\\b"));
    EXPECT_TRUE(results[1]->item.workspacePath.Empty());
    EXPECT_EQ(Tessaport::QvManagedTessaportService::getInternalId(results[1]->item.id), nullptr);
    expectItem(results[2]->item, 3);
    EXPECT_EQ(static_cast<std::int32_t>(results[2]->result), -7);
    EXPECT_TRUE(results[2]->workspacePath.Empty());
}

TEST_F(Results, OfGetPermanentIds)
{
    service.answer("GetPermanentIds", Json::array({permanentIdResult(1, "pid/1", 1), permanentIdResult(2, nullptr, 3),
                                          permanentIdResult(nullptr, "pid", INT32_MAX)}));

    const auto results = bridge.getPermanentIds({});
    service.answerInTurn("GetPermanentIds", {});

    ASSERT_EQ(results.GetSize(), 3U);
    EXPECT_EQ(numberOf(results[0]->itemId), 1);
    EXPECT_EQ(results[0]->permanentId, QVString(L"pid/1"));
    EXPECT_EQ(results[0]->result, Result::Success);
    EXPECT_EQ(numberOf(results[1]->itemId), 2);
    EXPECT_TRUE(results[1]->permanentId.Empty());
    EXPECT_EQ(static_cast<std::int32_t>(results[1]->result), 3);
    EXPECT_EQ(numberOf(results[2]->itemId), nullptr);
    EXPECT_EQ(static_cast<std::int32_t>(results[2]->result), INT32_MAX);
}

TEST_F(Results, OfGetItemsByPermanentIds)
{
    service.answer("GetItemsByPermanentIds",
        Json::array({itemOfPermanentIdResult(item(1), "pid", 1), itemOfPermanentIdResult(nullptr, "gone", 2)}));

    const auto results = bridge.getItemsByPermanentIds({});

    ASSERT_EQ(results.GetSize(), 2U);
    expectItem(results[0]->item, 1);
    EXPECT_EQ(results[0]->permanentId, QVString(L"pid"));
    EXPECT_EQ(results[0]->result, Result::Success);
    EXPECT_EQ(results[1]->permanentId, QVString(L"gone"));
    EXPECT_EQ(static_cast<std::int32_t>(results[1]->result), 2);
    EXPECT_EQ(Tessaport::QvManagedTessaportService::getInternalId(results[1]->item.id), nullptr);
}

TEST_F(Results, OfGetPropertyDefinitions)
{
    service.answer("GetPropertyDefinitions",
        Json::array({{{"id", "Size/1"}, {"displayName", "Size"}, {"displayDataType", 7}, {"valueDataType", -2}}}));

    const auto definitions = bridge.getPropertyDefinitions(QVUUID(DriveId));

    ASSERT_EQ(definitions.GetSize(), 1U);
    EXPECT_EQ(definitions[0]->id, QVString(L"Size/1"));
    EXPECT_EQ(definitions[0]->displayName, QVString(L"Size"));
    EXPECT_TRUE(definitions[0]->auxiliaryText.Empty());
    EXPECT_EQ(static_cast<std::int32_t>(definitions[0]->displayDataType), 7);
    EXPECT_EQ(static_cast<std::int32_t>(definitions[0]->valueDataType), -2);
}

TEST_F(Results, OfGetStringPropertyValues)
{
    service.answer("GetProperties",
        propertyValues(Json::array({propertyValue(L"Title", "Plan"), propertyValue(L"Title", text(L"\xD800"))})));

    const auto values = bridge.getStringPropertyValues({}, {});

    ASSERT_EQ(values.GetSize(), 2U);
    EXPECT_EQ(values[0]->driveId, QVUUID(DriveId));
    EXPECT_EQ(values[0]->relativePath, QVString(L"Folder\\item.txt"));
    EXPECT_EQ(values[0]->propertyDefinitionId, QVString(L"Title"));
    EXPECT_EQ(values[0]->value, QVString(L"Plan"));
    EXPECT_TRUE(values[0]->auxiliaryText.Empty());
    EXPECT_EQ(values[1]->value, QVString(L"\xD800"));
}

TEST_F(Results, PropertyValuesOfEveryTypeAreTheResultOfToString)
{
    const Json odd[] = {42, -1, true, false, "", typedValue("double", 1.5), typedValue("double", -1e300),
        typedValue("long", INT64_MIN), typedValue("decimal", "12345678901234567890.123"),
        typedValue("date", date(1'700'000'000)), typedValue("date", date(0, 5, "Local")), typedValue("guid", DriveId),
        typedValue("enum", 5), typedValue("array")};
    Json list = Json::array();
    for (const Json& value : odd)
        list.push_back(propertyValue(L"P", value));
    service.answer("GetProperties", propertyValues(list));

    const auto values = bridge.getStringPropertyValues({}, {});

    ASSERT_EQ(values.GetSize(), std::size(odd));
    for (std::uint32_t i = 0; i < values.GetSize(); ++i)
        EXPECT_EQ(values[i]->value.w_str(), service.textOfValue(odd[i])) << odd[i];
    EXPECT_EQ(values[0]->value, QVString(L"42"));
    EXPECT_EQ(values[2]->value, QVString(L"True"));
    EXPECT_EQ(values[11]->value, QVString(DriveId));
    EXPECT_EQ(values[12]->value, QVString(L"Friday"));
    EXPECT_EQ(values[13]->value, QVString(L"System.Int32[]"));
}

TEST_F(Results, AValueWhoseTextIsNullIsEmpty)
{
    service.answer("GetProperties", propertyValues(Json::array({propertyValue(L"P", typedValue("textless"))})));

    EXPECT_TRUE(bridge.getStringPropertyValues({}, {})[0]->value.Empty());
}

TEST_F(Results, OfGetCommands)
{
    service.answer("GetCommands", Json::array({{{"command", 1}, {"name", "Lock"}, {"id", "lock"}, {"isEnabled", true}},
                                      {{"command", 2}, {"name", ""}, {"id", ""}, {"isChecked", true}},
                                      {{"command", 3}, {"name", "C"}, {"id", "c"}, {"isBeginningOfGroup", true}},
                                      {{"command", 4}, {"name", "D"}, {"id", "d"}, {"isDefaultCommand", true}}}));

    const auto commands = bridge.getCommands(contextOf(1, {}));

    ASSERT_EQ(commands.GetSize(), 4U);
    EXPECT_EQ(commands[0]->name, QVString(L"Lock"));
    EXPECT_EQ(commands[0]->id, QVString(L"lock"));
    const auto flags = [&](std::uint32_t i) {
        const Command& command = *commands[i];
        return std::string{command.isEnabled ? 'e' : '-', command.isChecked ? 'c' : '-',
            command.isBeginningOfGroup ? 'g' : '-', command.isDefaultCommand ? 'd' : '-'};
    };
    EXPECT_EQ(flags(0), "e---");
    EXPECT_EQ(flags(1), "-c--");
    EXPECT_EQ(flags(2), "--g-");
    EXPECT_EQ(flags(3), "---d");
}

TEST_F(Results, AnImageHasItsSizeAndZeroedBytes)
{
    service.answer("GetCommands", Json::array({command(1, "AQIDBA=="), command(2, ""), command(3, nullptr)}));

    const auto commands = bridge.getCommands(contextOf(1, {}));

    ASSERT_EQ(commands[0]->image.count, 4U);
    ASSERT_NE(commands[0]->image.data, nullptr);
    EXPECT_TRUE(
        std::all_of(commands[0]->image.data, commands[0]->image.data + 4, [](std::uint8_t byte) { return byte == 0; }));
    for (const std::uint32_t i : {1U, 2U}) {
        EXPECT_EQ(commands[i]->image.count, 0U);
        EXPECT_EQ(commands[i]->image.data, nullptr);
    }
}

TEST_F(Results, EmptyListsAreEmptyBuffers)
{
    const CommandContext context = contextOf(1, {});
    service.answer("GetDrives", Json::array());

    EXPECT_EQ(bridge.getDrives().GetSize(), 0U);
    EXPECT_EQ(bridge.getChildFolders(context.itemId).GetSize(), 0U);
    EXPECT_EQ(bridge.getFolderContents(context.itemId).GetSize(), 0U);
    EXPECT_EQ(bridge.getItemsByWorkspacePaths({}).GetSize(), 0U);
    EXPECT_EQ(bridge.getItemsByRelativePaths(QVUUID(DriveId), {}).GetSize(), 0U);
    EXPECT_EQ(bridge.getPropertyDefinitions(QVUUID(DriveId)).GetSize(), 0U);
    EXPECT_EQ(bridge.getStringPropertyValues({}, {}).GetSize(), 0U);
    EXPECT_EQ(bridge.getCommands(context).GetSize(), 0U);
    EXPECT_EQ(bridge.getPermanentIds({}).GetSize(), 0U);
    EXPECT_EQ(bridge.getItemsByPermanentIds({}).GetSize(), 0U);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
