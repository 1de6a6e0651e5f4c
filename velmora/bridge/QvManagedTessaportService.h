// The one place where the library meets the sync application: one member for each of its requests.
#pragma once

#include <cstdint>
#include <memory>

#include <velmora/api/Records.h>
#include <velmora/bridge/ManagedHandle.h>
#include <velmora/bridge/Wrappers.h>
#include <velmora/bridge/replies/OwnedReply.h>
#include <velmora/bridge/replies/ReplyReader.h>
#include <velmora/platform/WindowHandle.h>

namespace Quorvex::Velmora::Tessaport
{

using Common::QVBuffer;
using Common::QVString;
using Common::QVUUID;
using TessaportAPI::Command;
using TessaportAPI::CommandContext;
using TessaportAPI::CommandResult;
using TessaportAPI::Drive;
using TessaportAPI::Item;
using TessaportAPI::ItemId;
using TessaportAPI::ItemIdToPermanentIdResult;
using TessaportAPI::PermanentIdToItemResult;
using TessaportAPI::PropertyDefinition;
using TessaportAPI::StringPropertyValue;
using TessaportAPI::WorkspacePathToItemResult;

/// Owns one service object of the sync application. Every member runs on the calling thread and either returns the
/// converted result or throws an exception of the family in velmora/api/Exceptions.h; the object stays usable.
class QvManagedTessaportService
{
public:
    /// Starts the runtime if nothing has.
    QvManagedTessaportService();
    explicit QvManagedTessaportService(HWND window);
    QvManagedTessaportService(const QvManagedTessaportService&) = delete;
    QvManagedTessaportService& operator=(const QvManagedTessaportService&) = delete;
    virtual ~QvManagedTessaportService();

    void discover();
    [[nodiscard]] QVString getVersion();
    [[nodiscard]] QVBuffer<Drive> getDrives();
    [[nodiscard]] QVBuffer<Item> getChildFolders(const ItemId& folder);
    [[nodiscard]] QVBuffer<Item> getFolderContents(const ItemId& folder);
    [[nodiscard]] CommandResult addFiles(const ItemId& folder, const QVBuffer<QVString>& localPaths);
    [[nodiscard]] Item getOrCreateFolder(const ItemId& parent, const QVString& name);
    [[nodiscard]] bool canAddFiles(const ItemId& folder, const QVBuffer<QVString>& localPaths);
    [[nodiscard]] bool isFileInWorkspace(const QVString& localPath);
    [[nodiscard]] CommandResult syncFiles(const QVBuffer<Item>& items);
    [[nodiscard]] CommandResult deleteFilesOrFolders(const QVBuffer<Item>& items);
    [[nodiscard]] QVBuffer<WorkspacePathToItemResult> getItemsByWorkspacePaths(
        const QVBuffer<QVString>& workspacePaths);
    [[nodiscard]] QVBuffer<Item> getItemsByRelativePaths(
        const QVUUID& driveId, const QVBuffer<QVString>& relativePaths);
    void fileClosedWithinRunningProcess(int processId, const QVString& localPath);
    [[nodiscard]] QVBuffer<PropertyDefinition> getPropertyDefinitions(const QVUUID& driveId);
    [[nodiscard]] QVBuffer<StringPropertyValue> getStringPropertyValues(
        const QVBuffer<ItemId>& items, const QVBuffer<QVString>& propertyIds);
    [[nodiscard]] QVBuffer<Command> getCommands(const CommandContext& context);
    [[nodiscard]] CommandResult executeCommand(const Command& command, const CommandContext& context);
    [[nodiscard]] QVBuffer<ItemIdToPermanentIdResult> getPermanentIds(const QVBuffer<ItemId>& items);
    [[nodiscard]] QVBuffer<PermanentIdToItemResult> getItemsByPermanentIds(const QVBuffer<QVString>& permanentIds);

    [[nodiscard]] static std::shared_ptr<ItemIdWrapper> getInternalId(const ItemId& id);
    /// The handle that the id's wrapper holds, or null when it has no wrapper. Without the count that a copy costs:
    /// requests name many ids.
    [[nodiscard]] static const ManagedHandle* findHandle(const ItemId& id) noexcept;
    static void setInternalId(ItemId& id, std::shared_ptr<ItemIdWrapper> wrapper);
    /// setInternalId of a new wrapper in `room` (see IdRoom.h), which takes the reader's next handle.
    static void setInternalId(ItemId& id, void* room, ReplyReader& reader);

    [[nodiscard]] static std::shared_ptr<CommandWrapper> getInternalCommand(const Command& command);
    static void setInternalCommand(Command& command, std::shared_ptr<CommandWrapper> wrapper);

private:
    /// @throws ManagedFailure when the call fails.
    template <class Function, class... Arguments>
    void call(OwnedReply& reply, Function function, Arguments... arguments) const;

    /// call(), and the result out of its reply.
    template <class Result, class Function, class... Arguments>
    void request(Result& result, Function function, Arguments... arguments) const;
    template <class Record, class Function, class... Arguments>
    void request(QVBuffer<Record>& list, Function function, Arguments... arguments) const;

    const TessaportEntryPoints* entryPoints = nullptr;
    std::unique_ptr<ManagedHandle> service;
};

} // namespace Quorvex::Velmora::Tessaport
