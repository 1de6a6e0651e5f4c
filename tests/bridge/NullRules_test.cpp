// Which nulls of the sync application fail a request, and which do not.
#include <functional>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Bridge = Tessaport::QvManagedTessaportService;

struct NullCase {
    const char* name;
    const char* member;
    Json answer;
    // Runs the request and returns the number of records.
    std::function<std::uint32_t(Bridge&, const CommandContext&)> run;
};

void PrintTo(const NullCase& nullCase, std::ostream* stream) { *stream << nullCase.name; }

std::string nameOf(const ::testing::TestParamInfo<NullCase>& info) { return info.param.name; }

Json without(Json record, const char* field)
{
    record[field] = nullptr;
    return record;
}

Json listOf(Json record) { return Json::array({std::move(record)}); }

Json definition() { return {{"id", "P"}, {"displayName", "Property"}}; }

std::uint32_t drives(Bridge& bridge, const CommandContext&) { return bridge.getDrives().GetSize(); }
std::uint32_t childFolders(Bridge& bridge, const CommandContext& context)
{
    return bridge.getChildFolders(context.itemId).GetSize();
}
std::uint32_t folderContents(Bridge& bridge, const CommandContext& context)
{
    return bridge.getFolderContents(context.itemId).GetSize();
}
std::uint32_t workspacePaths(Bridge& bridge, const CommandContext&)
{
    return bridge.getItemsByWorkspacePaths({}).GetSize();
}
std::uint32_t relativePaths(Bridge& bridge, const CommandContext&)
{
    return bridge.getItemsByRelativePaths({}, {}).GetSize();
}
std::uint32_t definitions(Bridge& bridge, const CommandContext&) { return bridge.getPropertyDefinitions({}).GetSize(); }
std::uint32_t values(Bridge& bridge, const CommandContext&) { return bridge.getStringPropertyValues({}, {}).GetSize(); }
std::uint32_t commands(Bridge& bridge, const CommandContext& context) { return bridge.getCommands(context).GetSize(); }
std::uint32_t permanentIds(Bridge& bridge, const CommandContext&) { return bridge.getPermanentIds({}).GetSize(); }
std::uint32_t itemsByPermanentIds(Bridge& bridge, const CommandContext&)
{
    return bridge.getItemsByPermanentIds({}).GetSize();
}
std::uint32_t outcomeOfSync(Bridge& bridge, const CommandContext&)
{
    const CommandResult result = bridge.syncFiles({});
    return result.itemsCreated.GetSize() + result.itemsDeleted.GetSize() + result.itemsUpdated.GetSize();
}
std::uint32_t version(Bridge& bridge, const CommandContext&)
{
    (void)bridge.getVersion();
    return 1;
}
std::uint32_t newFolder(Bridge& bridge, const CommandContext& context)
{
    (void)bridge.getOrCreateFolder(context.itemId, L"x");
    return 1;
}
std::uint32_t inWorkspace(Bridge& bridge, const CommandContext&) { return bridge.isFileInWorkspace(L"x") ? 1 : 0; }

class NullThatFails : public BridgeTest, public ::testing::WithParamInterface<NullCase>
{
};

TEST_P(NullThatFails, IsApiExceptionAndLeavesTheConnectionUsable)
{
    const CommandContext context = contextOf(900, {});
    const NullCase& given = GetParam();
    service.answer(given.member, given.answer);
    const std::int64_t handles = countHandles();

    try {
        (void)given.run(bridge, context);
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_EQ(typeid(e), typeid(ApiException));
        EXPECT_STRNE(e.what(), "");
    }

    EXPECT_EQ(countHandles(), handles);
    EXPECT_NO_THROW(bridge.discover());
}

INSTANTIATE_TEST_SUITE_P(Lists, NullThatFails,
    ::testing::Values(NullCase{"Drives", "GetDrives", nullptr, drives},
        NullCase{"WorkspacePathResults", "GetItemsByWorkspacePaths", nullptr, workspacePaths},
        NullCase{"PropertyDefinitions", "GetPropertyDefinitions", nullptr, definitions},
        NullCase{"PropertyValues", "GetProperties", nullptr, values},
        NullCase{"ValuesOfPropertyValues", "GetProperties", {{"values", nullptr}}, values},
        NullCase{"Commands", "GetCommands", nullptr, commands},
        NullCase{"AnswersOfAreFilesInWorkspace", "AreFilesInWorkspace", nullptr, inWorkspace}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(Texts, NullThatFails,
    ::testing::Values(NullCase{"Version", "GetVersion", nullptr, version},
        NullCase{"DisplayName", "GetPropertyDefinitions", listOf(without(definition(), "displayName")), definitions},
        NullCase{"DefinitionId", "GetPropertyDefinitions", listOf(without(definition(), "id")), definitions},
        NullCase{"RelativePathOfValue", "GetProperties",
            propertyValues(listOf(without(propertyValue(L"P", 1), "relativePath"))), values},
        NullCase{"DefinitionIdOfValue", "GetProperties",
            propertyValues(listOf(without(propertyValue(L"P", 1), "propertyDefinitionId"))), values},
        NullCase{"Value", "GetProperties", propertyValues(listOf(propertyValue(L"P", nullptr))), values},
        NullCase{"CommandName", "GetCommands", listOf(without(command(1), "name")), commands},
        NullCase{"CommandId", "GetCommands", listOf(without(command(1), "id")), commands},
        NullCase{"PermanentIdOfItem", "GetItemsByPermanentIds", listOf(itemOfPermanentIdResult(item(1), nullptr, 1)),
            itemsByPermanentIds},
        NullCase{"WorkspacePath", "GetItemsByWorkspacePaths",
            listOf(without(workspacePathResult(item(1), L"", 1), "workspacePath")), workspacePaths}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(Records, NullThatFails,
    ::testing::Values(NullCase{"Drive", "GetDrives", listOf(nullptr), drives},
        NullCase{"RootOfDrive", "GetDrives", listOf(without(drive(1, DriveType, L"D:\\"), "root")), drives},
        NullCase{
            "CapabilitiesOfDrive", "GetDrives", listOf(without(drive(1, DriveType, L"D:\\"), "capabilities")), drives},
        NullCase{"Item", "GetFolderContents", Json::array({item(1), nullptr}), folderContents},
        NullCase{"Folder", "GetOrCreateFolder", nullptr, newFolder},
        NullCase{"Outcome", "SyncFiles", nullptr, outcomeOfSync},
        NullCase{"ItemOfOutcome", "SyncFiles", outcome(true, Json::array({item(1)}), listOf(nullptr)), outcomeOfSync},
        NullCase{"WorkspacePathResult", "GetItemsByWorkspacePaths", listOf(nullptr), workspacePaths},
        NullCase{"PermanentIdResult", "GetPermanentIds", listOf(nullptr), permanentIds},
        NullCase{"ItemOfPermanentIdResult", "GetItemsByPermanentIds", listOf(nullptr), itemsByPermanentIds},
        NullCase{"Definition", "GetPropertyDefinitions", listOf(nullptr), definitions},
        NullCase{"PropertyValue", "GetProperties", propertyValues(listOf(nullptr)), values}),
    nameOf);

class NullThatIsAccepted : public BridgeTest, public ::testing::WithParamInterface<NullCase>
{
};

TEST_P(NullThatIsAccepted, IsAnEmptyBuffer)
{
    const CommandContext context = contextOf(900, {});
    const NullCase& given = GetParam();
    service.answer(given.member, given.answer);

    EXPECT_EQ(given.run(bridge, context), 0U);
}

INSTANTIATE_TEST_SUITE_P(Lists, NullThatIsAccepted,
    ::testing::Values(NullCase{"ChildFolders", "GetChildFolders", nullptr, childFolders},
        NullCase{"FolderContents", "GetFolderContents", nullptr, folderContents},
        NullCase{"ItemsByRelativePaths", "GetItemsByRelativePaths", nullptr, relativePaths},
        NullCase{"PermanentIds", "GetPermanentIds", nullptr, permanentIds},
        NullCase{"ItemsByPermanentIds", "GetItemsByPermanentIds", nullptr, itemsByPermanentIds},
        NullCase{"ListsOfOutcome", "SyncFiles", outcome(true), outcomeOfSync}),
    nameOf);

} // namespace
} // namespace Quorvex::Velmora::TestSupport
