#pragma once

#include <cstdint>
#include <memory>

#include <velmora/api/Records.h>
#include <velmora/bridge/boundary/ManagedHandle.h>
#include <velmora/bridge/boundary/TessaportEntryPoints.h>
#include <velmora/bridge/boundary/Wrappers.h>
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

/// The one place where the library meets the sync application: owns one of its service objects, and has one member for
/// each request.
///
/// Every request runs on the calling thread. It returns the converted result, or throws an exception of the family in
/// velmora/api/Exceptions.h; the object is usable afterwards.
class QvManagedTessaportService
{
public:
    /// Starts the runtime if it does not run yet.
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
    static void setInternalId(ItemId& id, std::shared_ptr<ItemIdWrapper> wrapper);
    [[nodiscard]] static std::shared_ptr<CommandWrapper> getInternalCommand(const Command& command);
    static void setInternalCommand(Command& command, std::shared_ptr<CommandWrapper> wrapper);

private:
    /// Makes the request and returns its result, empty for one that returns nothing.
    ///
    /// @param setArguments  sets those of a RequestArguments. What it throws is translated like everything else.
    template <class Result>
    Result ask(VelmoraRequest number) const;
    template <class Result, class SetArguments>
    Result ask(VelmoraRequest number, SetArguments setArguments) const;

    /// @throws ManagedFailure if the call fails.
    template <class Result>
    void receive(VelmoraRequest number, const VelmoraArguments& arguments, Result& result) const;
    template <class Record>
    void receive(VelmoraRequest number, const VelmoraArguments& arguments, QVBuffer<Record>& list) const;
    void receive(VelmoraRequest number, const VelmoraArguments& arguments, CommandResult& result) const;
    template <class Result>
    void receiveInPieces(VelmoraRequest number, const VelmoraArguments& arguments, Result& result) const;

    const TessaportEntryPoints* entryPoints = nullptr;
    std::unique_ptr<ManagedHandle> service;
};

} // namespace Quorvex::Velmora::Tessaport
