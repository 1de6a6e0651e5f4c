// One member for each request: arguments, call, conversion.
#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/bridge/conversions/Handles.h>
#include <velmora/bridge/conversions/ToManaged.h>
#include <velmora/bridge/conversions/ToNative.h>
#include <velmora/bridge/replies/ListReceiver.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

// The one record of a reply.
template <class Result>
void read(OwnedReply& reply, Result& result)
{
    ReplyReader reader(reply);
    toNative(reader, result);
}

void read(OwnedReply& reply, bool& result) { result = ReplyReader(reply).flag(); }

using Kind = CrossingTexts::Kind;

} // namespace

template <class Function, class... Arguments>
void QvManagedTessaportService::call(OwnedReply& reply, Function function, Arguments... arguments) const
{
    throwUnlessDone((entryPoints->*function)(service->get(), arguments..., reply.fill()), reply);
}

template <class Result, class Function, class... Arguments>
void QvManagedTessaportService::request(Result& result, Function function, Arguments... arguments) const
{
    OwnedReply reply(*entryPoints);
    call(reply, function, arguments...);
    read(reply, result);
}

template <class Record, class Function, class... Arguments>
void QvManagedTessaportService::request(QVBuffer<Record>& list, Function function, Arguments... arguments) const
{
    ListReceiver<Record> receiver(*entryPoints, list);
    const std::int32_t row = (entryPoints->*function)(service->get(), arguments..., receiver.reply().fill());
    receiver.rethrowFailure();
    throwUnlessDone(row, receiver.reply());
    receiver.finish();
}

void QvManagedTessaportService::discover()
{
    runWhileHandlingExceptions([&] {
        OwnedReply reply(*entryPoints);
        call(reply, &TessaportEntryPoints::discover);
    });
}

QVString QvManagedTessaportService::getVersion()
{
    QVString version;
    runWhileHandlingExceptions([&] { request(version, &TessaportEntryPoints::getVersion); });
    return version;
}

QVBuffer<Drive> QvManagedTessaportService::getDrives()
{
    QVBuffer<Drive> drives;
    runWhileHandlingExceptions([&] { request(drives, &TessaportEntryPoints::getDrives); });
    return drives;
}

QVBuffer<Item> QvManagedTessaportService::getChildFolders(const ItemId& folder)
{
    QVBuffer<Item> folders;
    runWhileHandlingExceptions([&] { request(folders, &TessaportEntryPoints::getChildFolders, toManaged(folder)); });
    return folders;
}

QVBuffer<Item> QvManagedTessaportService::getFolderContents(const ItemId& folder)
{
    QVBuffer<Item> items;
    runWhileHandlingExceptions([&] { request(items, &TessaportEntryPoints::getFolderContents, toManaged(folder)); });
    return items;
}

CommandResult QvManagedTessaportService::addFiles(const ItemId& folder, const QVBuffer<QVString>& localPaths)
{
    CommandResult result;
    runWhileHandlingExceptions([&] {
        const CrossingTexts paths(localPaths, Kind::Paths);
        request(result, &TessaportEntryPoints::addFiles, toManaged(folder), paths.data(), paths.size());
    });
    return result;
}

Item QvManagedTessaportService::getOrCreateFolder(const ItemId& parent, const QVString& name)
{
    Item folder;
    runWhileHandlingExceptions([&] {
        request(folder, &TessaportEntryPoints::getOrCreateFolder, toManaged(parent), toManagedPath(name).get());
    });
    return folder;
}

bool QvManagedTessaportService::canAddFiles(const ItemId& folder, const QVBuffer<QVString>& localPaths)
{
    bool answer = false;
    runWhileHandlingExceptions([&] {
        const CrossingTexts paths(localPaths, Kind::Paths);
        request(answer, &TessaportEntryPoints::canAddFiles, toManaged(folder), paths.data(), paths.size());
    });
    return answer;
}

bool QvManagedTessaportService::isFileInWorkspace(const QVString& localPath)
{
    bool answer = false;
    runWhileHandlingExceptions(
        [&] { request(answer, &TessaportEntryPoints::isFileInWorkspace, toManagedPath(localPath).get()); });
    return answer;
}

CommandResult QvManagedTessaportService::syncFiles(const QVBuffer<Item>& items)
{
    CommandResult result;
    runWhileHandlingExceptions([&] {
        const auto ids = toManaged(items);
        request(result, &TessaportEntryPoints::syncFiles, ids.data(), ids.size());
    });
    return result;
}

CommandResult QvManagedTessaportService::deleteFilesOrFolders(const QVBuffer<Item>& items)
{
    CommandResult result;
    runWhileHandlingExceptions([&] {
        const auto ids = toManaged(items);
        request(result, &TessaportEntryPoints::deleteItems, ids.data(), ids.size());
    });
    return result;
}

QVBuffer<WorkspacePathToItemResult> QvManagedTessaportService::getItemsByWorkspacePaths(
    const QVBuffer<QVString>& workspacePaths)
{
    QVBuffer<WorkspacePathToItemResult> results;
    runWhileHandlingExceptions([&] {
        const CrossingTexts paths(workspacePaths, Kind::Paths);
        request(results, &TessaportEntryPoints::getItemsByWorkspacePaths, paths.data(), paths.size());
    });
    return results;
}

QVBuffer<Item> QvManagedTessaportService::getItemsByRelativePaths(
    const QVUUID& driveId, const QVBuffer<QVString>& relativePaths)
{
    QVBuffer<Item> items;
    runWhileHandlingExceptions([&] {
        const CrossingTexts paths(relativePaths, Kind::Paths);
        request(items, &TessaportEntryPoints::getItemsByRelativePaths, toManaged(driveId), paths.data(), paths.size());
    });
    return items;
}

void QvManagedTessaportService::fileClosedWithinRunningProcess(int processId, const QVString& localPath)
{
    runWhileHandlingExceptions([&] {
        const CrossingText path = toManagedPath(localPath);
        OwnedReply reply(*entryPoints);
        call(reply, &TessaportEntryPoints::fileClosedWithinRunningProcess, static_cast<std::int32_t>(processId),
            path.get());
    });
}

QVBuffer<PropertyDefinition> QvManagedTessaportService::getPropertyDefinitions(const QVUUID& driveId)
{
    QVBuffer<PropertyDefinition> definitions;
    runWhileHandlingExceptions(
        [&] { request(definitions, &TessaportEntryPoints::getPropertyDefinitions, toManaged(driveId)); });
    return definitions;
}

QVBuffer<StringPropertyValue> QvManagedTessaportService::getStringPropertyValues(
    const QVBuffer<ItemId>& items, const QVBuffer<QVString>& propertyIds)
{
    QVBuffer<StringPropertyValue> values;
    runWhileHandlingExceptions([&] {
        const auto ids = toManaged(items);
        const CrossingTexts properties(propertyIds, Kind::Plain);
        request(
            values, &TessaportEntryPoints::getProperties, ids.data(), ids.size(), properties.data(), properties.size());
    });
    return values;
}

QVBuffer<Command> QvManagedTessaportService::getCommands(const CommandContext& context)
{
    QVBuffer<Command> commands;
    runWhileHandlingExceptions(
        [&] { request(commands, &TessaportEntryPoints::getCommands, CrossingContext(context).get()); });
    return commands;
}

CommandResult QvManagedTessaportService::executeCommand(const Command& command, const CommandContext& context)
{
    CommandResult result;
    runWhileHandlingExceptions([&] {
        request(result, &TessaportEntryPoints::executeCommand, toManaged(command), CrossingContext(context).get());
    });
    return result;
}

QVBuffer<ItemIdToPermanentIdResult> QvManagedTessaportService::getPermanentIds(const QVBuffer<ItemId>& items)
{
    QVBuffer<ItemIdToPermanentIdResult> results;
    runWhileHandlingExceptions([&] {
        const auto ids = toManaged(items);
        request(results, &TessaportEntryPoints::getPermanentIds, ids.data(), ids.size());
    });
    return results;
}

QVBuffer<PermanentIdToItemResult> QvManagedTessaportService::getItemsByPermanentIds(
    const QVBuffer<QVString>& permanentIds)
{
    QVBuffer<PermanentIdToItemResult> results;
    runWhileHandlingExceptions([&] {
        const CrossingTexts ids(permanentIds, Kind::Plain);
        request(results, &TessaportEntryPoints::getItemsByPermanentIds, ids.data(), ids.size());
    });
    return results;
}

} // namespace Quorvex::Velmora::Tessaport
