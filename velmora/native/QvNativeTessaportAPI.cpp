// Connections, and the requests on them. The other members of the class are elsewhere in this folder:
//
//   ItemCache.cpp        the item cache
//   SingleRequests.cpp   one-shot operations of one request each; isOffline
//   WorkspacePaths.cpp   getItemByWorkspacePath, toTrueFullPath
//   PermanentIds.cpp     one-shot operations on permanent ids
//   Urns.cpp             getFolderUrn, getFileUrn
//   AddFileProbes.cpp    getRootFolderLocalPath, canAddFile
#include "velmora/native/QvNativeTessaportAPI.h"

#include <memory>
#include <utility>
#include <vector>

#include <velmora/bridge/QvManagedTessaportService.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

using Bridge = Tessaport::QvManagedTessaportService;

// Connections that were replaced by an assignment. They stay open until the process ends; leaked on purpose.
void keepOpen(std::shared_ptr<Bridge> bridge)
{
    static auto* const kept = new std::vector<std::shared_ptr<Bridge>>;
    kept->push_back(std::move(bridge));
}

} // namespace

QvNativeTessaportAPI::QvNativeTessaportAPI() : bridge(std::make_shared<Bridge>()) {}

QvNativeTessaportAPI::QvNativeTessaportAPI(HWND hwnd)
    : bridge(hwnd != nullptr ? std::make_shared<Bridge>(hwnd) : std::make_shared<Bridge>())
{
}

QvNativeTessaportAPI::QvNativeTessaportAPI(const QvNativeTessaportAPI&) : QvNativeTessaportAPI() {}

QvNativeTessaportAPI& QvNativeTessaportAPI::operator=(const QvNativeTessaportAPI& other)
{
    if (bridge != other.bridge) {
        keepOpen(bridge);
        bridge = other.bridge;
    }
    return *this;
}

QvNativeTessaportAPI::~QvNativeTessaportAPI() = default;

void QvNativeTessaportAPI::discover() { bridge->discover(); }

QVString QvNativeTessaportAPI::getVersion() const { return bridge->getVersion(); }

QVBuffer<Drive> QvNativeTessaportAPI::getDrives()
{
    QVBuffer<Drive> drives = bridge->getDrives();
    addCachedItems(drives);
    return drives;
}

QVBuffer<Item> QvNativeTessaportAPI::getFolderContents(const Item& folder)
{
    QVBuffer<Item> items = bridge->getFolderContents(folder.id);
    addCachedItems(items);
    return items;
}

QVBuffer<Item> QvNativeTessaportAPI::getChildFolders(const Item& folder)
{
    QVBuffer<Item> items = bridge->getChildFolders(folder.id);
    addCachedItems(items);
    return items;
}

Item QvNativeTessaportAPI::getOrCreateFolder(const Item& parent, const QVString& name)
{
    Item folder = bridge->getOrCreateFolder(parent.id, name);
    addCachedItem(folder);
    return folder;
}

bool QvNativeTessaportAPI::isFileInWorkspace(const QVString& path) { return bridge->isFileInWorkspace(path); }

bool QvNativeTessaportAPI::canAddFiles(const Item& folder, const QVBuffer<QVString>& paths)
{
    return bridge->canAddFiles(folder.id, paths);
}

CommandResult QvNativeTessaportAPI::addFiles(const Item& folder, const QVBuffer<QVString>& paths)
{
    return bridge->addFiles(folder.id, paths);
}

CommandResult QvNativeTessaportAPI::syncFiles(const QVBuffer<Item>& items) { return bridge->syncFiles(items); }

CommandResult QvNativeTessaportAPI::deleteFilesOrFolders(const QVBuffer<Item>& items)
{
    return bridge->deleteFilesOrFolders(items);
}

QVBuffer<Item> QvNativeTessaportAPI::getItemsByRelativePaths(
    const QVUUID& driveId, const QVBuffer<QVString>& relativePaths)
{
    return bridge->getItemsByRelativePaths(driveId, relativePaths);
}

QVBuffer<WorkspacePathToItemResult> QvNativeTessaportAPI::getItemsByWorkspacePaths(const QVBuffer<QVString>& paths)
{
    QVBuffer<WorkspacePathToItemResult> results = bridge->getItemsByWorkspacePaths(paths);
    addCachedItems(results);
    return results;
}

void QvNativeTessaportAPI::fileClosedWithinRunningProcess(int processId, const QVString& path)
{
    bridge->fileClosedWithinRunningProcess(processId, path);
}

QVBuffer<PropertyDefinition> QvNativeTessaportAPI::getPropertyDefinitions(const QVUUID& driveId)
{
    return bridge->getPropertyDefinitions(driveId);
}

QVBuffer<StringPropertyValue> QvNativeTessaportAPI::getStringPropertyValues(
    const QVBuffer<ItemId>& ids, const QVBuffer<QVString>& propertyDefinitionIds)
{
    return bridge->getStringPropertyValues(ids, propertyDefinitionIds);
}

QVBuffer<Command> QvNativeTessaportAPI::getCommands(const CommandContext& context)
{
    return bridge->getCommands(context);
}

CommandResult QvNativeTessaportAPI::executeCommand(const Command& command, const CommandContext& context)
{
    return bridge->executeCommand(command, context);
}

QVBuffer<ItemIdToPermanentIdResult> QvNativeTessaportAPI::getPermanentIds(const QVBuffer<ItemId>& ids)
{
    return bridge->getPermanentIds(ids);
}

QVBuffer<PermanentIdToItemResult> QvNativeTessaportAPI::getItemsByPermanentIds(const QVBuffer<QVString>& permanentIds)
{
    QVBuffer<PermanentIdToItemResult> results = bridge->getItemsByPermanentIds(permanentIds);
    addCachedItems(results);
    return results;
}

} // namespace Quorvex::Velmora::TessaportAPI
