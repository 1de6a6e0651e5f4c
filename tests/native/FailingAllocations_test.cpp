// Every public operation is run with its first, its second, … its last allocation failing, once alone and once with all
// later ones. Each time it must leak nothing, and its outputs and the item cache must be as before or as after a run
// that succeeds. One-shot operations must also report the failure by their result and not by an exception.
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/api/QVLog.h>
#include <velmora/native/CommandImage.h>
#include <velmora/native/ItemCache.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/Buffers.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FailingRequests.h"
#include "tests/support/FakeEntryPoints.h"
#include "tests/support/SampleReplies.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Api = QvNativeTessaportAPI;
using Request = Tessaport::VelmoraRequest;

// Everything that an operation can fill.
struct Outputs {
    QVString text = L"before";
    Item item;
    QVBuffer<Item> items;
    QVUUID uuid{"11111111-2222-3333-4444-555555555555"};
    bool flag = false;
    Result result = static_cast<Result>(77);
};

struct Given {
    Api connection;
    Item folder;
    Command command;
    CommandContext context;
    QVBuffer<Item> items;
    QVBuffer<ItemId> ids;
    QVBuffer<QVString> paths = texts({L"D:/a/b/c and some more"});
    // Made in advance, so that only the operations allocate.
    std::wstring itemPath = L"D:\\Drive\\item 1";
    QVString folderPath = L"D:/Drive/x";
    QVString driveType = L"Quorvex.DataSourceType.Drive";
    QVString permanentId = L"permanent";
};

struct Operation {
    enum Allowance : unsigned {
        None = 0,
        Exceptions = 1,           // It reports failures by exception.
        PartlyWrittenOutputs = 2, // Its outputs may have been written when it fails.
        CacheFilledInSteps = 4,   // It makes several requests, and each of them fills the cache.
        NoAllocation = 8,         // It can do without memory.
    };

    const char* name;
    std::function<void(Given&, Outputs&)> run;
    unsigned allows = None;
    [[nodiscard]] bool may(Allowance allowance) const { return (allows & allowance) != 0; }
};

void PrintTo(const Operation& operation, std::ostream* stream) { *stream << operation.name; }

std::string nameOf(const ::testing::TestParamInfo<Operation>& info) { return info.param.name; }

constexpr HWND NoWindow = nullptr;

void setReplies(FakeEntryPoints& table)
{
    namespace Sample = SampleReplies;
    table.replyWith(Sample::nothing());
    table.replyTo(Request::GetVersion, Sample::version());
    table.replyTo(Request::GetDrives, Sample::drives());
    table.replyTo(Request::GetCommands, Sample::commands());
    table.replyTo(Request::GetOrCreateFolder, Sample::items(1));
    table.replyTo(Request::CanAddFiles, Sample::flag());
    table.replyTo(Request::IsFileInWorkspace, Sample::flag());
    table.replyTo(Request::GetPermanentIds, Sample::permanentIds());
    table.replyTo(Request::GetProperties, Sample::propertyValues());
    table.replyTo(Request::GetPropertyDefinitions, Sample::propertyDefinitions());
    table.replyTo(Request::GetCommandImage, Sample::commandImage());
    table.replyTo(Request::GetFullPath, Sample::fullPath());
    table.replyTo(Request::GetChildFolders, Sample::items(5));
    table.replyTo(Request::GetFolderContents, Sample::items(5));
    table.replyTo(Request::GetItemsByRelativePaths, Sample::items(5));
    table.replyTo(Request::GetItemsByWorkspacePaths, Sample::foundItems());
    table.replyTo(Request::GetItemsByPermanentIds, Sample::foundItems());
    table.replyTo(Request::AddFiles, Sample::outcome());
    table.replyTo(Request::SyncFiles, Sample::outcome());
    table.replyTo(Request::DeleteItems, Sample::outcome());
    table.replyTo(Request::ExecuteCommand, Sample::outcome());
}

class FailingAllocation : public ::testing::TestWithParam<Operation>
{
protected:
    FailingAllocation()
    {
        setReplies(table);
        given = std::make_unique<Given>();
        given->folder = *given->connection.getItemsByRelativePaths({}, {})[0];
        given->items.Append(given->folder);
        given->ids.Append(given->folder.id);
        given->context.itemId = given->folder.id;
        given->command = *given->connection.getCommands(given->context)[1];
        Api::clearCachedItems();
        // The log allocates its own state once and never frees it.
        Common::QVLog::getLogFile()->addMessage(L"", false);
    }
    ~FailingAllocation() override { Api::clearCachedItems(); }

    static std::string stateOf(const Outputs& outputs)
    {
        const Item& item = outputs.item;
        std::string state = std::string(outputs.text.c_str()) + '|' + item.driveId.getString().c_str() + '|' +
                            item.name.c_str() + '|' + item.workspacePath.c_str() + '|' +
                            std::to_string(item.lastModifiedDate) + '|' + (item.isFolder ? 'f' : '-') + '|';
        state += std::to_string(outputs.items.GetSize()) + '|' + outputs.uuid.getString().c_str() + '|';
        return state + (outputs.flag ? '1' : '0') + '|' + std::to_string(static_cast<int>(outputs.result));
    }

    static std::string cacheState()
    {
        std::string state;
        for (char number = '0'; number <= '9'; ++number)
            state += findCachedItem(L"D:\\Drive\\item " + std::wstring(1, static_cast<wchar_t>(number))) ? number : '-';
        return state;
    }

    FakeEntryPoints table;
    TemporaryFolder temporary;
    EnvironmentVariable variable{TemporaryFolderVariable, temporary.path().u8string()};
    std::unique_ptr<Given> given;
};

TEST_P(FailingAllocation, LeavesOutputsAndCacheAsBeforeOrAsAfter)
{
    const Operation& operation = GetParam();
    Outputs initial;
    initial.item.driveId = QVUUID("11111111-2222-3333-4444-555555555555");
    const std::int64_t handles = table.liveHandles();
    const std::string outputsBefore = stateOf(initial);
    const std::string cacheBefore = cacheState();
    auto outputs = std::make_unique<Outputs>(initial);
    operation.run(*given, *outputs);
    const std::string outputsAfter = stateOf(*outputs);
    const std::string cacheAfter = cacheState();
    outputs = std::make_unique<Outputs>(initial);
    Api::clearCachedItems();

    bool threw = false;
    const std::int64_t failures = failEverywhere(
        [&] {
            threw = true;
            operation.run(*given, *outputs);
            threw = false;
        },
        [&] {
            EXPECT_TRUE(!threw || operation.may(Operation::Exceptions)) << "an exception left the operation";
            const std::string outputsNow = stateOf(*outputs);
            if (!operation.may(Operation::PartlyWrittenOutputs)) {
                EXPECT_TRUE(outputsNow == outputsBefore || outputsNow == outputsAfter) << outputsNow;
            }
            const std::string cacheNow = cacheState();
            if (!operation.may(Operation::CacheFilledInSteps)) {
                EXPECT_TRUE(cacheNow == cacheBefore || cacheNow == cacheAfter) << cacheNow;
            }
            outputs = std::make_unique<Outputs>(initial);
            Api::clearCachedItems();
            EXPECT_EQ(table.liveHandles(), handles);
            EXPECT_EQ(table.liveReplies(), 0);
            EXPECT_EQ(table.wrongReleases(), 0);
            EXPECT_TRUE(std::filesystem::is_empty(temporary.path())) << "a probe file was left behind";
        });

    EXPECT_TRUE(failures > 0 || operation.may(Operation::NoAllocation));
}

INSTANTIATE_TEST_SUITE_P(OfConnections, FailingAllocation,
    ::testing::Values(Operation{"construct", [](Given&, Outputs&) { Api other; }, Operation::Exceptions},
        Operation{"copy", [](Given& in, Outputs&) { Api other(in.connection); }, Operation::Exceptions},
        Operation{"discover", [](Given& in, Outputs&) { in.connection.discover(); }, Operation::NoAllocation},
        Operation{"getVersion", [](Given& in, Outputs& out) { out.text = in.connection.getVersion(); },
            Operation::Exceptions},
        Operation{"getDrives", [](Given& in, Outputs&) { (void)in.connection.getDrives(); }, Operation::Exceptions},
        Operation{"getFolderContents",
            [](Given& in, Outputs& out) { out.items = in.connection.getFolderContents(in.folder); },
            Operation::Exceptions},
        Operation{"getChildFolders",
            [](Given& in, Outputs& out) { out.items = in.connection.getChildFolders(in.folder); },
            Operation::Exceptions},
        Operation{"getOrCreateFolder",
            [](Given& in, Outputs& out) { out.item = in.connection.getOrCreateFolder(in.folder, L"a/b"); },
            Operation::Exceptions},
        Operation{"isFileInWorkspace",
            [](Given& in, Outputs& out) { out.flag = in.connection.isFileInWorkspace(*in.paths[0]); },
            Operation::Exceptions},
        Operation{"canAddFiles",
            [](Given& in, Outputs& out) { out.flag = in.connection.canAddFiles(in.folder, in.paths); },
            Operation::Exceptions},
        Operation{"addFiles", [](Given& in, Outputs&) { (void)in.connection.addFiles(in.folder, in.paths); },
            Operation::Exceptions},
        Operation{
            "syncFiles", [](Given& in, Outputs&) { (void)in.connection.syncFiles(in.items); }, Operation::Exceptions},
        Operation{"deleteFilesOrFolders",
            [](Given& in, Outputs&) { (void)in.connection.deleteFilesOrFolders(in.items); }, Operation::Exceptions},
        Operation{"getItemsByRelativePaths",
            [](Given& in, Outputs& out) { out.items = in.connection.getItemsByRelativePaths({}, in.paths); },
            Operation::Exceptions},
        Operation{"getItemsByWorkspacePaths",
            [](Given& in, Outputs&) { (void)in.connection.getItemsByWorkspacePaths(in.paths); }, Operation::Exceptions},
        Operation{"fileClosedWithinRunningProcess",
            [](Given& in, Outputs&) { in.connection.fileClosedWithinRunningProcess(1, *in.paths[0]); },
            Operation::Exceptions},
        Operation{"getPropertyDefinitions", [](Given& in, Outputs&) { (void)in.connection.getPropertyDefinitions({}); },
            Operation::Exceptions},
        Operation{"getStringPropertyValues",
            [](Given& in, Outputs&) { (void)in.connection.getStringPropertyValues(in.ids, in.paths); },
            Operation::Exceptions},
        Operation{"getCommands", [](Given& in, Outputs&) { (void)in.connection.getCommands(in.context); },
            Operation::Exceptions},
        Operation{"executeCommand",
            [](Given& in, Outputs&) { (void)in.connection.executeCommand(in.command, in.context); },
            Operation::Exceptions},
        Operation{"commandImage", [](Given& in, Outputs&) { (void)commandImage(in.command); }, Operation::Exceptions},
        Operation{"getPermanentIds", [](Given& in, Outputs&) { (void)in.connection.getPermanentIds(in.ids); },
            Operation::Exceptions},
        Operation{"getItemsByPermanentIds",
            [](Given& in, Outputs&) { (void)in.connection.getItemsByPermanentIds(in.paths); }, Operation::Exceptions}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(OfOneShotOperations, FailingAllocation,
    ::testing::Values(Operation{"discover", [](Given&, Outputs& out) { out.flag = Api::discover(NoWindow); }},
        Operation{"getVersion", [](Given&, Outputs& out) { Api::getVersion(NoWindow, out.text); }},
        Operation{"getRootFolderItemWithExceptions",
            [](Given&, Outputs& out) { Api::getRootFolderItemWithExceptions(NoWindow, out.item); },
            Operation::Exceptions},
        Operation{"getRootFolderItem", [](Given&, Outputs& out) { (void)Api::getRootFolderItem(NoWindow, out.item); }},
        Operation{"canAccessDriveData", [](Given&, Outputs& out) { out.flag = Api::canAccessDriveData(NoWindow); },
            Operation::CacheFilledInSteps},
        Operation{"getFolderContents",
            [](Given& in, Outputs& out) { Api::getFolderContents(NoWindow, in.folder, out.items); }},
        Operation{"syncItem", [](Given& in, Outputs& out) { out.flag = Api::syncItem(NoWindow, in.folder); }},
        Operation{"isFileInWorkspace",
            [](Given& in, Outputs& out) { (void)Api::isFileInWorkspace(NoWindow, *in.paths[0], out.flag); }},
        Operation{"checkExistence",
            [](Given& in, Outputs& out) { Api::checkExistence(NoWindow, *in.paths[0], out.item); },
            Operation::Exceptions},
        Operation{"getItemByCachedPath",
            [](Given& in, Outputs& out) {
                (void)in.connection.getDrives();
                Api::getItemByWorkspacePath(NoWindow, L"D:/Drive/item 1", out.item);
            },
            Operation::Exceptions},
        Operation{"isOffline", [](Given&, Outputs& out) { out.flag = Api::isOffline(NoWindow); },
            Operation::Exceptions | Operation::CacheFilledInSteps},
        Operation{"getRootFolderLocalPath",
            [](Given& in, Outputs& out) {
                (void)Api::getRootFolderLocalPath(NoWindow, in.driveType, out.text, out.item);
            },
            Operation::PartlyWrittenOutputs | Operation::CacheFilledInSteps},
        Operation{"toTrueFullPath",
            [](Given&, Outputs& out) { out.text = QVString(Api::toTrueFullPath(L"a/b/c and some more").c_str()); },
            Operation::Exceptions},
        Operation{"getFullWorkspacePathByPermanentId",
            [](Given& in, Outputs& out) {
                Api::getFullWorkspacePathByPermanentId(NoWindow, in.permanentId, out.text);
            }},
        Operation{"getItemByPermanentId",
            [](Given& in, Outputs& out) { Api::getItemByPermanentId(NoWindow, in.permanentId, out.item); }},
        Operation{"getDriveUUIDByPermanentId",
            [](Given& in, Outputs& out) { Api::getDriveUUIDByPermanentId(NoWindow, in.permanentId, out.uuid); }},
        Operation{"getPermanentIdByItem",
            [](Given& in, Outputs& out) { Api::getPermanentIdByItem(NoWindow, in.folder, out.text, out.result); },
            Operation::PartlyWrittenOutputs},
        Operation{"getPermanentIdByFullWorkspacePath",
            [](Given& in, Outputs& out) { Api::getPermanentIdByFullWorkspacePath(NoWindow, *in.paths[0], out.text); }},
        Operation{"getFolderUrnOfPath",
            [](Given& in, Outputs&) { (void)Api::getFolderUrn(NoWindow, in.itemPath, false); },
            Operation::CacheFilledInSteps},
        Operation{"getFolderUrnOfItem", [](Given& in, Outputs&) { (void)Api::getFolderUrn(NoWindow, in.folder, true); },
            Operation::CacheFilledInSteps},
        Operation{"getFileUrnOfPath", [](Given& in, Outputs&) { (void)Api::getFileUrn(NoWindow, in.itemPath); },
            Operation::CacheFilledInSteps},
        Operation{"getFileUrnOfItem", [](Given& in, Outputs&) { (void)Api::getFileUrn(NoWindow, in.folder); },
            Operation::CacheFilledInSteps},
        Operation{"canAddFile", [](Given& in, Outputs& out) { out.flag = Api::canAddFile(NoWindow, in.folderPath); }},
        Operation{"removeCachedItem",
            [](Given&, Outputs& out) { out.flag = Api::removeCachedItem(L"D:/Drive/item 1"); }, Operation::Exceptions}),
    nameOf);

// The fake table hands out one handle for each connection.
std::int64_t handlesAfterDropping(FakeEntryPoints& table, std::unique_ptr<Api>& connection)
{
    connection.reset();
    return table.liveHandles();
}

TEST(FailingAssignment, LeavesBothConnectionsWithTheirOwnService)
{
    FakeEntryPoints table;
    setReplies(table);
    std::int64_t failures = 0;
    for (std::int64_t n = 1;; ++n) {
        const std::int64_t handles = table.liveHandles();
        auto source = std::make_unique<Api>();
        auto target = std::make_unique<Api>();
        bool threw = false;
        {
            const FailingAllocations failing(n, Failing::ForEverAfter);
            try {
                *target = *source;
            } catch (const std::bad_alloc&) {
                threw = true;
            }
        }
        EXPECT_EQ(threw, FailingAllocations::hasFailed());
        if (!threw)
            break;
        ++failures;
        EXPECT_EQ(handlesAfterDropping(table, source), handles + 1) << "allocation " << n;
        EXPECT_STREQ(target->getVersion().c_str(), "12.5.1234.5678 (final)");
        EXPECT_EQ(handlesAfterDropping(table, target), handles) << "allocation " << n;
    }

    EXPECT_GT(failures, 0);
    EXPECT_EQ(table.wrongReleases(), 0);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
