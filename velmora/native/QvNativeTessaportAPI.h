/// The library's one class: connections to the sync application, and operations that need none.
///
/// Start here. With a connection:
///
///     QvNativeTessaportAPI tessaport;
///     for (const Drive& drive : tessaport.getDrives())
///         std::wcout << drive.name.w_str() << L'\n';
///
/// Operations on an object report failures by exception (see Exceptions.h). Static operations open a connection for the
/// one call, write a line to the diagnostic log when something fails (see QVLog.h) and return false,
/// QVCode::Failure or empty texts.
///
/// Threads: every operation runs on the calling thread and waits for the sync application. The item cache and a table
/// of property names are shared by all connections without a lock, so calls of this class, constructors and destructors
/// included, are to be made one at a time. Records may be used and destroyed on any thread.
///
/// The first connection of a process starts the .NET runtime, which then stays until the process ends;
/// RuntimeOptions.h says where it is looked for.
#pragma once

#include <memory>
#include <string>
#include <tuple>

#include <velmora/api/Exceptions.h>
#include <velmora/api/Records.h>
#include <velmora/native/RuntimeOptions.h>
#include <velmora/platform/Export.h>
#include <velmora/platform/WindowHandle.h>

namespace Quorvex::Velmora::Tessaport
{
class QvManagedTessaportService;
}

namespace Quorvex::Velmora::TessaportAPI
{

using Common::QVBuffer;
using Common::QVCode;
using Common::QVString;
using Common::QVUUID;

class VELMORA_API QvNativeTessaportAPI
{
public:
    /// Opens a connection without a window.
    ///
    /// @throws ApiException when .NET or the sync application's assembly cannot be loaded; the message says what was
    ///         looked for, where, and what to do. Also whatever the sync application reports, as one of the kinds of
    ///         Exceptions.h.
    QvNativeTessaportAPI();

    /// Opens a connection for the host's window, above which the sync application may show dialogs. Null: as without.
    explicit QvNativeTessaportAPI(HWND hwnd);

    /// Opens a new connection of its own, without a window; takes nothing from `other`.
    QvNativeTessaportAPI(const QvNativeTessaportAPI& other);

    /// Makes both objects use the connection of `other`, which stays open until the last of them is gone. The former
    /// connection of this object stays open to the end of the process.
    QvNativeTessaportAPI& operator=(const QvNativeTessaportAPI& other);

    /// Closes the connection. Items and commands that came from it stay valid.
    virtual ~QvNativeTessaportAPI();

    // ---- Requests on a connection. Each throws ApiException or one of its kinds when the sync application reports a
    // ---- failure; the connection stays usable and the item cache is then untouched. Items, ids and commands given to
    // ---- them must have come from this library; one made by hand fails with ApiException.

    /// Finds the running sync application.
    void discover();

    /// The version of the sync application.
    [[nodiscard]] QVString getVersion() const;

    /// The drives of the sync application, in its order. The root of each is put into the item cache.
    [[nodiscard]] QVBuffer<Drive> getDrives();

    /// The files and folders directly in a folder, as the sync application knows them now, in its order. Each is put
    /// into the item cache.
    [[nodiscard]] QVBuffer<Item> getFolderContents(const Item& folder);

    /// The folders directly in a folder, in the sync application's order. Each is put into the item cache.
    [[nodiscard]] QVBuffer<Item> getChildFolders(const Item& folder);

    /// The folder `name` in `parent`, made when there is none. Either slash separates nested names. The folder is put
    /// into the item cache.
    Item getOrCreateFolder(const Item& parent, const QVString& name);

    /// True when the local file `path` belongs to a workspace.
    [[nodiscard]] bool isFileInWorkspace(const QVString& path);

    /// True when all the local files `paths` could be added to `folder`.
    [[nodiscard]] bool canAddFiles(const Item& folder, const QVBuffer<QVString>& paths);

    /// Adds local files to a folder. Nothing is put into the item cache.
    CommandResult addFiles(const Item& folder, const QVBuffer<QVString>& paths);

    /// Brings items and what is beneath them up to date on both sides.
    CommandResult syncFiles(const QVBuffer<Item>& items);

    /// Deletes items and what is beneath them. The item cache keeps them: see removeCachedItem.
    CommandResult deleteFilesOrFolders(const QVBuffer<Item>& items);

    /// The items at paths relative to the root of a drive.
    [[nodiscard]] QVBuffer<Item> getItemsByRelativePaths(
        const QVUUID& driveId, const QVBuffer<QVString>& relativePaths);

    /// One result for each local path. Items that were found are put into the item cache.
    [[nodiscard]] QVBuffer<WorkspacePathToItemResult> getItemsByWorkspacePaths(const QVBuffer<QVString>& paths);

    /// Tells the sync application that a process has closed a file.
    void fileClosedWithinRunningProcess(int processId, const QVString& path);

    /// The properties that a drive defines.
    [[nodiscard]] QVBuffer<PropertyDefinition> getPropertyDefinitions(const QVUUID& driveId);

    /// The values of properties of items, each as text.
    [[nodiscard]] QVBuffer<StringPropertyValue> getStringPropertyValues(
        const QVBuffer<ItemId>& ids, const QVBuffer<QVString>& propertyDefinitionIds);

    /// The commands that the sync application offers for a context.
    [[nodiscard]] QVBuffer<Command> getCommands(const CommandContext& context);

    /// Executes a command that getCommands returned.
    CommandResult executeCommand(const Command& command, const CommandContext& context);

    /// One result for each id.
    [[nodiscard]] QVBuffer<ItemIdToPermanentIdResult> getPermanentIds(const QVBuffer<ItemId>& ids);

    /// One result for each permanent id. Items that were found are put into the item cache.
    [[nodiscard]] QVBuffer<PermanentIdToItemResult> getItemsByPermanentIds(const QVBuffer<QVString>& permanentIds);

    // ---- The item cache: what the requests above reported, by full workspace path, for the whole process. The first
    // ---- item reported for a path stays until it is removed; a host that wants a fresh one removes it first.

    /// Removes the item at a local path, of either slash, absolute or relative to the current directory.
    ///
    /// @return false when there was none.
    /// @throws std::filesystem::filesystem_error when the current directory is gone.
    static bool removeCachedItem(const QVString& path);

    /// Removes all items.
    static void clearCachedItems();

    // ---- One call, one answer. Each opens its own connection for `hwnd` (null: without a window) and closes it.
    // Unless
    // ---- said otherwise, outputs are untouched on failure and a failure by std::exception is logged and not thrown.

    /// Finds the running sync application.
    static bool discover(HWND hwnd);

    static bool getVersion(HWND hwnd, QVString& outVersion);

    /// The root folder of the first drive. Without a drive `outItem` is left as it is.
    ///
    /// @throws as the requests on a connection do.
    static void getRootFolderItemWithExceptions(HWND hwnd, Item& outItem);

    /// The same with a status. Without a drive it is QVCode::Success, and `outItem` is left as it is.
    static QVCode getRootFolderItem(HWND hwnd, Item& outItem);

    /// True when the contents of the first drive's root can be listed.
    static bool canAccessDriveData(HWND hwnd);

    static bool getFolderContents(HWND hwnd, const Item& folder, QVBuffer<Item>& outItems);

    /// Brings one item up to date on both sides; the answer is the sync application's.
    static bool syncItem(HWND hwnd, const Item& item);

    static QVCode isFileInWorkspace(HWND hwnd, const QVString& path, bool& outInWorkspace);

    /// As getItemByWorkspacePath.
    static bool checkExistence(HWND hwnd, const QVString& path, Item& outItem);

    /// True when the root of a drive cannot be asked for its permanent id because the drive is offline.
    ///
    /// @throws as the requests on a connection do, from opening the connection and from listing the drives.
    static bool isOffline(HWND hwnd);

    /// The first folder, directly in the root of a drive of type `driveType`, that accepts new files. Only
    /// "Quorvex.DataSourceType.Drive" is answered. Whether files are accepted is found out with a small file in the
    /// temporary folder, which is removed again.
    ///
    /// @param outLocalPath  the folder's workspace path with back-slashes; may have been written on failure.
    /// @param outItem       the folder; may have been written on failure.
    static QVCode getRootFolderLocalPath(HWND hwnd, const QVString& driveType, QVString& outLocalPath, Item& outItem);

    /// The absolute, normalised form of a path, as .NET's System.IO.Path.GetFullPath gives it on this platform. Starts
    /// the runtime when no connection has.
    ///
    /// @throws ApiException for a path that has none, with .NET's message.
    static std::wstring toTrueFullPath(const std::wstring& path);

    /// The item at a local path, of either slash, absolute or relative to the current directory. Answered from the item
    /// cache when it is there, without a connection.
    ///
    /// @throws std::filesystem::filesystem_error when the current directory is gone.
    static bool getItemByWorkspacePath(HWND hwnd, const QVString& workspacePath, Item& outItem);

    static bool getFullWorkspacePathByPermanentId(HWND hwnd, QVString permanentId, QVString& outPath);
    static bool getItemByPermanentId(HWND hwnd, QVString permanentId, Item& outItem);
    static bool getDriveUUIDByPermanentId(HWND hwnd, QVString permanentId, QVUUID& outDriveId);

    /// @param outResult  the outcome for this item, written whenever the request was answered.
    static bool getPermanentIdByItem(HWND hwnd, const Item& item, QVString& outPermanentId, Result& outResult);
    static bool getPermanentIdByFullWorkspacePath(HWND hwnd, const QVString& path, QVString& outPermanentId);

    /// The cloud identifiers (project id, URN) of a folder, as UTF-8; both empty when there is no answer.
    ///
    /// @param useParentFolderKey  read the property that names the folder as a parent.
    static std::tuple<std::string, std::string> getFolderUrn(
        HWND hwnd, const std::wstring& workspacePath, bool useParentFolderKey);
    static std::tuple<std::string, std::string> getFolderUrn(HWND hwnd, const Item& item, bool useParentFolderKey);

    /// The cloud identifiers (project id, URN) of a file, as UTF-8; both empty when there is no answer.
    static std::tuple<std::string, std::string> getFileUrn(HWND hwnd, const std::wstring& workspacePath);
    static std::tuple<std::string, std::string> getFileUrn(HWND hwnd, const Item& item);

    /// True when the sync application would accept a new file in a local folder, found out as in
    /// getRootFolderLocalPath.
    static bool canAddFile(HWND hwnd, const QVString& folderPath);

private:
    static void addCachedItem(const Item& item);
    static void addCachedItems(const QVBuffer<Item>& items);
    static void addCachedItems(const QVBuffer<Drive>& drives);
    static void addCachedItems(const QVBuffer<WorkspacePathToItemResult>& results);
    static void addCachedItems(const QVBuffer<PermanentIdToItemResult>& results);

    std::shared_ptr<Tessaport::QvManagedTessaportService> bridge;
};

} // namespace Quorvex::Velmora::TessaportAPI
