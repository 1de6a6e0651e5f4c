// The requests of QvManagedTessaportService. Each names its number, sets its arguments, and returns its result.
#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/bridge/conversions/ReplyReceiver.h>
#include <velmora/bridge/conversions/RequestArguments.h>
#include <velmora/bridge/conversions/ToNative.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

using Arguments = RequestArguments;
using Request = VelmoraRequest;

constexpr VelmoraArguments NoArguments{};

// The result of requests that return nothing.
struct Nothing {
};

template <class Result>
void read(OwnedReply& reply, Result& result)
{
    RecordReader reader(reply);
    toNative(reader, result);
}

void read(OwnedReply& reply, bool& result) { result = ReplyReader(reply).flag(); }

void read(OwnedReply&, Nothing&) {}

} // namespace

template <class Result>
void QvManagedTessaportService::receive(Request number, const VelmoraArguments& arguments, Result& result) const
{
    OwnedReply reply(*entryPoints);
    throwUnlessDone(entryPoints->request(number, service->get(), &arguments, reply.fill()), reply);
    read(reply, result);
}

template <class Record>
void QvManagedTessaportService::receive(Request number, const VelmoraArguments& arguments, QVBuffer<Record>& list) const
{
    receiveInPieces(number, arguments, list);
}

void QvManagedTessaportService::receive(Request number, const VelmoraArguments& arguments, CommandResult& result) const
{
    receiveInPieces(number, arguments, result);
}

template <class Result>
void QvManagedTessaportService::receiveInPieces(Request number, const VelmoraArguments& arguments, Result& result) const
{
    ReplyReceiver<Result> receiver(*entryPoints, result);
    const std::int32_t row = entryPoints->request(number, service->get(), &arguments, receiver.reply().fill());
    receiver.rethrowFailure();
    throwUnlessDone(row, receiver.reply());
    receiver.finish();
}

template <class Result>
Result QvManagedTessaportService::ask(Request number) const
{
    Result result{};
    runWhileHandlingExceptions([&] { receive(number, NoArguments, result); });
    return result;
}

template <class Result, class SetArguments>
Result QvManagedTessaportService::ask(Request number, SetArguments setArguments) const
{
    Result result{};
    runWhileHandlingExceptions([&] {
        Arguments arguments;
        setArguments(arguments);
        receive(number, arguments.packed(), result);
    });
    return result;
}

void QvManagedTessaportService::discover() { ask<Nothing>(Request::Discover); }

QVString QvManagedTessaportService::getVersion() { return ask<QVString>(Request::GetVersion); }

QVBuffer<Drive> QvManagedTessaportService::getDrives() { return ask<QVBuffer<Drive>>(Request::GetDrives); }

QVBuffer<Item> QvManagedTessaportService::getChildFolders(const ItemId& folder)
{
    return ask<QVBuffer<Item>>(Request::GetChildFolders, [&](Arguments& to) { to.setFolder(folder); });
}

QVBuffer<Item> QvManagedTessaportService::getFolderContents(const ItemId& folder)
{
    return ask<QVBuffer<Item>>(Request::GetFolderContents, [&](Arguments& to) { to.setFolder(folder); });
}

CommandResult QvManagedTessaportService::addFiles(const ItemId& folder, const QVBuffer<QVString>& localPaths)
{
    return ask<CommandResult>(Request::AddFiles, [&](Arguments& to) { to.setFolder(folder).setPaths(localPaths); });
}

Item QvManagedTessaportService::getOrCreateFolder(const ItemId& parent, const QVString& name)
{
    return ask<Item>(Request::GetOrCreateFolder, [&](Arguments& to) { to.setFolder(parent).setPath(name); });
}

bool QvManagedTessaportService::canAddFiles(const ItemId& folder, const QVBuffer<QVString>& localPaths)
{
    return ask<bool>(Request::CanAddFiles, [&](Arguments& to) { to.setFolder(folder).setPaths(localPaths); });
}

bool QvManagedTessaportService::isFileInWorkspace(const QVString& localPath)
{
    return ask<bool>(Request::IsFileInWorkspace, [&](Arguments& to) { to.setPath(localPath); });
}

CommandResult QvManagedTessaportService::syncFiles(const QVBuffer<Item>& items)
{
    return ask<CommandResult>(Request::SyncFiles, [&](Arguments& to) { to.setIds(items); });
}

CommandResult QvManagedTessaportService::deleteFilesOrFolders(const QVBuffer<Item>& items)
{
    return ask<CommandResult>(Request::DeleteItems, [&](Arguments& to) { to.setIds(items); });
}

QVBuffer<WorkspacePathToItemResult> QvManagedTessaportService::getItemsByWorkspacePaths(
    const QVBuffer<QVString>& workspacePaths)
{
    return ask<QVBuffer<WorkspacePathToItemResult>>(
        Request::GetItemsByWorkspacePaths, [&](Arguments& to) { to.setPaths(workspacePaths); });
}

QVBuffer<Item> QvManagedTessaportService::getItemsByRelativePaths(
    const QVUUID& driveId, const QVBuffer<QVString>& relativePaths)
{
    return ask<QVBuffer<Item>>(
        Request::GetItemsByRelativePaths, [&](Arguments& to) { to.setDriveId(driveId).setPaths(relativePaths); });
}

void QvManagedTessaportService::fileClosedWithinRunningProcess(int processId, const QVString& localPath)
{
    ask<Nothing>(
        Request::FileClosedWithinRunningProcess, [&](Arguments& to) { to.setNumber(processId).setPath(localPath); });
}

QVBuffer<PropertyDefinition> QvManagedTessaportService::getPropertyDefinitions(const QVUUID& driveId)
{
    return ask<QVBuffer<PropertyDefinition>>(
        Request::GetPropertyDefinitions, [&](Arguments& to) { to.setDriveId(driveId); });
}

QVBuffer<StringPropertyValue> QvManagedTessaportService::getStringPropertyValues(
    const QVBuffer<ItemId>& items, const QVBuffer<QVString>& propertyIds)
{
    return ask<QVBuffer<StringPropertyValue>>(
        Request::GetProperties, [&](Arguments& to) { to.setIds(items).setStrings(propertyIds); });
}

QVBuffer<Command> QvManagedTessaportService::getCommands(const CommandContext& context)
{
    return ask<QVBuffer<Command>>(Request::GetCommands, [&](Arguments& to) { to.setContext(context); });
}

CommandResult QvManagedTessaportService::executeCommand(const Command& command, const CommandContext& context)
{
    return ask<CommandResult>(
        Request::ExecuteCommand, [&](Arguments& to) { to.setCommand(command).setContext(context); });
}

QVBuffer<ItemIdToPermanentIdResult> QvManagedTessaportService::getPermanentIds(const QVBuffer<ItemId>& items)
{
    return ask<QVBuffer<ItemIdToPermanentIdResult>>(Request::GetPermanentIds, [&](Arguments& to) { to.setIds(items); });
}

QVBuffer<PermanentIdToItemResult> QvManagedTessaportService::getItemsByPermanentIds(
    const QVBuffer<QVString>& permanentIds)
{
    return ask<QVBuffer<PermanentIdToItemResult>>(
        Request::GetItemsByPermanentIds, [&](Arguments& to) { to.setStrings(permanentIds); });
}

} // namespace Quorvex::Velmora::Tessaport
