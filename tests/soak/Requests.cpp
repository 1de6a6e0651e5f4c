#include "tests/soak/Requests.h"

#include <functional>
#include <future>
#include <thread>
#include <tuple>
#include <utility>

#include <velmora/native/CommandImage.h>
#include <velmora/native/RequestQueue.h>
#include "tests/support/Buffers.h"

namespace Quorvex::Velmora::Soak
{
namespace
{

using namespace TessaportAPI;
using Common::QVBuffer;
using Common::QVString;
using Common::QVUUID;
using Api = QvNativeTessaportAPI;
using TestSupport::Json;

constexpr std::size_t KeptItems = 200;
constexpr std::size_t KeptCommands = 20;
constexpr std::size_t Connections = 4;

// One of so many requests is preceded by the change.
constexpr std::uint64_t ScriptChanges = 500;
constexpr std::uint64_t NewConnections = 200;
constexpr std::uint64_t OtherThreads = 1000;
constexpr std::uint64_t Queues = 2000;
constexpr std::uint64_t EmptyCaches = 1000;

struct Kind {
    const char* name;
    std::function<void(Api&, KeptRecords&)> make;
};

const QVString Path = L"W:\\Tessaport\\Drive\\a";

std::vector<Kind> instanceRequests()
{
    return {
        {"discover", [](Api& api, KeptRecords&) { api.discover(); }},
        {"getVersion", [](Api& api, KeptRecords&) { (void)api.getVersion(); }},
        {"getDrives", [](Api& api, KeptRecords&) { (void)api.getDrives(); }},
        {"getFolderContents", [](Api& api, KeptRecords& in) { in.keep(api.getFolderContents(in.item())); }},
        {"getChildFolders", [](Api& api, KeptRecords& in) { in.keep(api.getChildFolders(in.item())); }},
        {"getOrCreateFolder", [](Api& api, KeptRecords& in) { (void)api.getOrCreateFolder(in.item(), L"folder"); }},
        {"isFileInWorkspace", [](Api& api, KeptRecords&) { (void)api.isFileInWorkspace(Path); }},
        {"canAddFiles",
            [](Api& api, KeptRecords& in) {
                (void)api.canAddFiles(in.item(), TestSupport::texts({L"/a", L"/b"}));
            }},
        {"addFiles",
            [](Api& api, KeptRecords& in) {
                (void)api.addFiles(in.item(), TestSupport::texts({L"/a", L"/b"}));
            }},
        {"syncFiles", [](Api& api, KeptRecords& in) { (void)api.syncFiles(in.items()); }},
        {"deleteFilesOrFolders", [](Api& api, KeptRecords& in) { (void)api.deleteFilesOrFolders(in.items()); }},
        {"getItemsByRelativePaths",
            [](Api& api, KeptRecords& in) { in.keep(api.getItemsByRelativePaths({}, TestSupport::texts({L"a"}))); }},
        {"getItemsByWorkspacePaths",
            [](Api& api, KeptRecords&) {
                (void)api.getItemsByWorkspacePaths(TestSupport::texts({L"W:\\a", L"b"}));
            }},
        {"fileClosedWithinRunningProcess", [](Api& api, KeptRecords&) { api.fileClosedWithinRunningProcess(1, Path); }},
        {"getPropertyDefinitions", [](Api& api, KeptRecords&) { (void)api.getPropertyDefinitions({}); }},
        {"getStringPropertyValues",
            [](Api& api, KeptRecords& in) {
                (void)api.getStringPropertyValues(in.ids(), TestSupport::texts({L"Size"}));
            }},
        {"getCommands", [](Api& api, KeptRecords& in) { in.keep(api.getCommands(in.context())); }},
        {"executeCommand", [](Api& api, KeptRecords& in) { (void)api.executeCommand(in.command(), in.context()); }},
        {"commandImage", [](Api&, KeptRecords& in) { (void)commandImage(in.command()); }},
        {"getPermanentIds", [](Api& api, KeptRecords& in) { (void)api.getPermanentIds(in.ids()); }},
        {"getItemsByPermanentIds",
            [](Api& api, KeptRecords&) {
                (void)api.getItemsByPermanentIds(TestSupport::texts({L"p1", L"p2"}));
            }},
    };
}

std::vector<Kind> oneShotRequests()
{
    return {
        {"discover(window)", [](Api&, KeptRecords&) { (void)Api::discover(nullptr); }},
        {"getVersion(window)",
            [](Api&, KeptRecords&) {
                QVString version;
                (void)Api::getVersion(nullptr, version);
            }},
        {"getRootFolderItem",
            [](Api&, KeptRecords&) {
                Item item;
                (void)Api::getRootFolderItem(nullptr, item);
            }},
        {"canAccessDriveData", [](Api&, KeptRecords&) { (void)Api::canAccessDriveData(nullptr); }},
        {"getFolderContents(window)",
            [](Api&, KeptRecords& in) {
                QVBuffer<Item> items;
                (void)Api::getFolderContents(nullptr, in.item(), items);
                in.keep(items);
            }},
        {"syncItem", [](Api&, KeptRecords& in) { (void)Api::syncItem(nullptr, in.item()); }},
        {"isFileInWorkspace(window)",
            [](Api&, KeptRecords&) {
                bool is = false;
                (void)Api::isFileInWorkspace(nullptr, Path, is);
            }},
        {"checkExistence",
            [](Api&, KeptRecords&) {
                Item item;
                (void)Api::checkExistence(nullptr, Path, item);
            }},
        {"isOffline", [](Api&, KeptRecords&) { (void)Api::isOffline(nullptr); }},
        {"getRootFolderLocalPath",
            [](Api&, KeptRecords&) {
                QVString path;
                Item item;
                (void)Api::getRootFolderLocalPath(nullptr, L"Quorvex.DataSourceType.Drive", path, item);
            }},
        {"toTrueFullPath", [](Api&, KeptRecords&) { (void)Api::toTrueFullPath(L"/a/../b"); }},
        {"getItemByWorkspacePath",
            [](Api&, KeptRecords&) {
                Item item;
                (void)Api::getItemByWorkspacePath(nullptr, Path, item);
            }},
        {"getFullWorkspacePathByPermanentId",
            [](Api&, KeptRecords&) {
                QVString path;
                (void)Api::getFullWorkspacePathByPermanentId(nullptr, L"p1", path);
            }},
        {"getDriveUUIDByPermanentId",
            [](Api&, KeptRecords&) {
                QVUUID drive;
                (void)Api::getDriveUUIDByPermanentId(nullptr, L"p1", drive);
            }},
        {"getPermanentIdByItem",
            [](Api&, KeptRecords& in) {
                QVString id;
                Result result{};
                (void)Api::getPermanentIdByItem(nullptr, in.item(), id, result);
            }},
        {"getPermanentIdByFullWorkspacePath",
            [](Api&, KeptRecords&) {
                QVString id;
                (void)Api::getPermanentIdByFullWorkspacePath(nullptr, Path, id);
            }},
        {"getFolderUrn", [](Api&, KeptRecords& in) { (void)Api::getFolderUrn(nullptr, in.item(), true); }},
        {"getFileUrn", [](Api&, KeptRecords& in) { (void)Api::getFileUrn(nullptr, in.item()); }},
    };
}

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all = [] {
        std::vector<Kind> made = instanceRequests();
        for (Kind& kind : oneShotRequests())
            made.push_back(std::move(kind));
        return made;
    }();
    return all;
}

Json listOf(std::uint64_t count)
{
    Json list = Json::array();
    for (std::uint64_t i = 1; i <= count; ++i)
        list.push_back(TestSupport::item(static_cast<int>(i)));
    return list;
}

template <class Record>
void keepSome(std::vector<Record>& kept, const QVBuffer<Record>& found, std::size_t most, std::mt19937_64& random)
{
    for (const Record& record : found) {
        if (kept.size() < most)
            kept.push_back(record);
        else
            kept[random() % most] = record;
    }
}

} // namespace

void KeptRecords::keep(const QVBuffer<Item>& found) { keepSome(keptItems, found, KeptItems, random); }

void KeptRecords::keep(const QVBuffer<Command>& found) { keepSome(keptCommands, found, KeptCommands, random); }

void KeptRecords::clear()
{
    keptItems.clear();
    keptItems.shrink_to_fit();
    keptCommands.clear();
    keptCommands.shrink_to_fit();
}

Item KeptRecords::item() { return keptItems.empty() ? Item() : keptItems[random() % keptItems.size()]; }

Command KeptRecords::command()
{
    return keptCommands.empty() ? Command() : keptCommands[random() % keptCommands.size()];
}

QVBuffer<Item> KeptRecords::items()
{
    QVBuffer<Item> some;
    for (std::uint64_t left = random() % 4; left > 0; --left)
        some.Append(item());
    return some;
}

QVBuffer<ItemId> KeptRecords::ids()
{
    QVBuffer<ItemId> some;
    for (const Item& each : items())
        some.Append(each.id);
    return some;
}

CommandContext KeptRecords::context()
{
    CommandContext context;
    context.itemId = item().id;
    context.itemIds = ids();
    return context;
}

Requests::Requests(std::uint64_t seed) : random(seed), connections(Connections) { scripted.record(false); }

void Requests::make()
{
    if (random() % ScriptChanges == 0)
        changeScript();
    if (random() % NewConnections == 0)
        connections[random() % connections.size()].reset();
    if (random() % EmptyCaches == 0)
        Api::clearCachedItems();
    if (random() % Queues == 0)
        askQueue();
    else if (random() % OtherThreads == 0)
        std::thread([this] { makeOnThisThread(); }).join();
    else
        makeOnThisThread();
}

void Requests::makeOnThisThread()
{
    const Kind& kind = kinds()[random() % kinds().size()];
    Count& count = made[kind.name];
    ++count.made;
    try {
        kind.make(connection(), records);
    } catch (const ApiException&) {
        ++count.failed;
    }
}

Api& Requests::connection()
{
    auto& chosen = connections[random() % connections.size()];
    if (chosen == nullptr)
        chosen = std::make_unique<Api>();
    return *chosen;
}

void Requests::changeScript()
{
    scripted.reset();
    scripted.record(false);
    const Json items = listOf(random() % 40);
    for (const char* const member : {"GetFolderContents", "GetChildFolders", "GetItemsByRelativePaths"})
        scripted.answer(member, items);
    scripted.answer("GetCommands", Json::array({TestSupport::command(1, 100), TestSupport::command(2)}));
    failSometimes();
}

void Requests::failSometimes()
{
    const TestKit::Failure failure(static_cast<TestKit::FailureKind>(random() % 6), L"a failure");
    TestKit::ScriptedService& kit = scripted.kit;
    switch (random() % 8) {
    case 0:
        return kit.connect.failNext(failure, 20);
    case 1:
        return kit.getFolderContents.fail(failure);
    case 2:
        return kit.getDrives.fail(failure);
    case 3:
        return kit.getCommands.fail(failure);
    case 4:
        return kit.getItemsByWorkspacePaths.fail(failure);
    case 5:
        return kit.syncFiles.fail(failure);
    case 6:
        return scripted.answer("GetChildFolders",
            TestSupport::failingList(listOf(5), 3, TestSupport::failure("TessaportNotRunningException", L"in a list")));
    default:
        return;
    }
}

void Requests::askQueue()
{
    Count& count = made["RequestQueue"];
    RequestQueue queue;
    std::vector<std::future<QVBuffer<Drive>>> answers;
    for (int i = 0; i < 10; ++i)
        answers.push_back(queue.ask([](Api& api) { return api.getDrives(); }));
    if (random() % 2 == 0)
        queue.dropWaiting();
    for (auto& answer : answers) {
        ++count.made;
        try {
            (void)answer.get();
        } catch (const std::exception&) {
            ++count.failed;
        }
    }
}

void Requests::drop()
{
    records.clear();
    for (auto& each : connections)
        each.reset();
    Api::clearCachedItems();
    scripted.reset();
    scripted.record(false);
}

} // namespace Quorvex::Velmora::Soak
