/// @file
/// The class that hosts use, with everything that its signatures name.
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

/// A connection to the sync application, and one-shot operations that open a connection of their own.
///
/// Start here:
///
/// @code
/// QvNativeTessaportAPI tessaport;
/// for (const Drive& drive : tessaport.getDrives())
///     std::cout << drive.name.c_str() << '\n';
/// @endcode
///
/// Requests on a connection report failures by exception (see Exceptions.h), one-shot operations by their result and a
/// line in the diagnostic log (see QVLog.h).
///
/// Every operation runs on the calling thread and blocks until the sync application has answered; there is no time
/// limit. The class is not thread-safe: all connections share the item cache, which has no lock, so make one call at a
/// time in the whole process, constructors and destructors included. Records may be used and destroyed on any thread.
///
/// The first connection of a process starts the .NET runtime, which stays until the process ends; RuntimeOptions.h says
/// where it is looked for.
class VELMORA_API QvNativeTessaportAPI
{
public:
    /// Opens a connection without a window.
    ///
    /// @throws ApiException when .NET or the sync application's assembly cannot be loaded; the message says what was
    ///         looked for, where, and what to do. Also ApiException or one of its subclasses for whatever the sync
    ///         application reports.
    QvNativeTessaportAPI();

    /// Opens a connection for a window of the host, above which the sync application may show dialogs.
    ///
    /// @param hwnd  the window; null means no window.
    /// @throws ApiException as the constructor without a window does.
    explicit QvNativeTessaportAPI(HWND hwnd);

    /// Opens a new connection without a window. Takes nothing from `other`.
    QvNativeTessaportAPI(const QvNativeTessaportAPI& other);

    /// Shares the connection of `other`, which stays open as long as one of the two objects uses it.
    ///
    /// @note Kept for compatibility: this object's previous connection stays open until the process ends.
    QvNativeTessaportAPI& operator=(const QvNativeTessaportAPI& other);

    /// Closes the connection, unless another object shares it. Items and commands that came from it stay valid.
    virtual ~QvNativeTessaportAPI();

    /// @name Requests on a connection
    ///
    /// Each request throws ApiException or one of its subclasses when the sync application reports a failure. The
    /// connection stays usable, and the item cache is unchanged. Items, ids and commands must have come from this
    /// library: a request with a default-constructed one fails with ApiException. An empty buffer is passed on like any
    /// other and answered by the sync application.
    ///
    /// What a request does to files, and which items it can do it to, is up to the sync application. Where the local
    /// service (docs/local-service.md) decides something that a host can rely on only there, this is said.
    /// @{

    /// Checks that the sync application is installed, runs and is recent enough, and has it look for its drives.
    ///
    /// Changes nothing in this object or in the item cache. No other request needs it with the local service; a host
    /// calls it first to learn early whether the sync application can be used.
    void discover();

    /// Returns the version of the sync application.
    [[nodiscard]] QVString getVersion() const;

    /// Lists the drives, in the sync application's order. Adds the root folder of each to the item cache.
    [[nodiscard]] QVBuffer<Drive> getDrives();

    /// Lists the files and folders directly inside a folder, in the sync application's order. Adds each to the item
    /// cache.
    [[nodiscard]] QVBuffer<Item> getFolderContents(const Item& folder);

    /// Lists the folders directly inside a folder, in the sync application's order. Adds each to the item cache.
    [[nodiscard]] QVBuffer<Item> getChildFolders(const Item& folder);

    /// Returns a folder inside another one, and creates it if it does not exist. Adds it to the item cache.
    ///
    /// @param parent  the folder in which to look.
    /// @param name    may name several levels, separated by either slash; missing levels are created.
    Item getOrCreateFolder(const Item& parent, const QVString& name);

    /// Returns whether a local file is in a workspace.
    ///
    /// @param path  an absolute local path; either slash is accepted.
    [[nodiscard]] bool isFileInWorkspace(const QVString& path);

    /// Returns whether all of some local files could be added to a folder.
    [[nodiscard]] bool canAddFiles(const Item& folder, const QVBuffer<QVString>& paths);

    /// Adds copies of local files to a folder. Nothing is added to the item cache.
    ///
    /// With the local service a file replaces the one of the same name in the folder as its new version.
    ///
    /// @param folder  the folder that receives them.
    /// @param paths   absolute local paths; either slash is accepted.
    /// @return see CommandResult.
    CommandResult addFiles(const Item& folder, const QVBuffer<QVString>& paths);

    /// Brings items up to date on both sides, folders with everything below them.
    ///
    /// @return see CommandResult.
    CommandResult syncFiles(const QVBuffer<Item>& items);

    /// Deletes items on both sides, folders with everything below them. The item cache keeps them; see
    /// removeCachedItem().
    ///
    /// @return see CommandResult.
    CommandResult deleteFilesOrFolders(const QVBuffer<Item>& items);

    /// Looks items up by their paths relative to the root of a drive.
    ///
    /// @param driveId        Drive::id of the drive.
    /// @param relativePaths  either slash is accepted.
    /// @return the items in the sync application's order. The local service skips paths at which there is no item, so
    ///         match the results by Item::relativePath and not by their position.
    [[nodiscard]] QVBuffer<Item> getItemsByRelativePaths(
        const QVUUID& driveId, const QVBuffer<QVString>& relativePaths);

    /// Looks items up by their local paths. Adds those that were found to the item cache.
    ///
    /// @param paths  absolute local paths; either slash is accepted.
    /// @return one result for each path, in the order of the paths. A path at which there is no item has a result other
    ///         than Result::Success.
    [[nodiscard]] QVBuffer<WorkspacePathToItemResult> getItemsByWorkspacePaths(const QVBuffer<QVString>& paths);

    /// Tells the sync application that a process has closed a file, so that it can sync the file.
    void fileClosedWithinRunningProcess(int processId, const QVString& path);

    /// Lists the properties that a drive defines.
    [[nodiscard]] QVBuffer<PropertyDefinition> getPropertyDefinitions(const QVUUID& driveId);

    /// Returns the values of properties of items, each as text.
    ///
    /// @return the values in the sync application's order. There is no value for a property that an item does not have,
    ///         so match them by their drive, relative path and property id and not by their position.
    [[nodiscard]] QVBuffer<StringPropertyValue> getStringPropertyValues(
        const QVBuffer<ItemId>& ids, const QVBuffer<QVString>& propertyDefinitionIds);

    /// Lists the commands that the sync application offers for a context.
    [[nodiscard]] QVBuffer<Command> getCommands(const CommandContext& context);

    /// Executes a command that getCommands() returned.
    ///
    /// @return see CommandResult.
    CommandResult executeCommand(const Command& command, const CommandContext& context);

    /// Returns the permanent ids of items: text that still names an item after it was renamed or moved.
    ///
    /// @return one result for each id, in the order of the ids.
    [[nodiscard]] QVBuffer<ItemIdToPermanentIdResult> getPermanentIds(const QVBuffer<ItemId>& ids);

    /// Looks items up by their permanent ids. Adds those that were found to the item cache.
    ///
    /// @return one result for each permanent id, in the order of the ids. An id that names no item has a result other
    ///         than Result::Success.
    [[nodiscard]] QVBuffer<PermanentIdToItemResult> getItemsByPermanentIds(const QVBuffer<QVString>& permanentIds);

    /// @}
    /// @name Item cache
    ///
    /// The items that the requests above reported, by their full workspace path, for the whole process. It has no
    /// limit.
    ///
    /// @note Kept for compatibility: the first item reported for a path stays until it is removed, even if a later
    /// request reports it differently. A host that needs fresh data removes the item first.
    /// @{

    /// Removes the item at a local path.
    ///
    /// @param path  absolute, or relative to the current directory; either slash is accepted.
    /// @return whether there was such an item.
    /// @throws std::filesystem::filesystem_error when the current directory does not exist any more.
    static bool removeCachedItem(const QVString& path);

    /// Removes all items.
    static void clearCachedItems();

    /// @}
    /// @name One-shot operations
    ///
    /// Each opens a connection for the window `hwnd` (null means no window) and closes it before it returns.
    ///
    /// Unless noted otherwise no operation throws an exception derived from std::exception. It writes the failure as
    /// one line to the diagnostic log, leaves its outputs unchanged and returns false, QVCode::Failure or empty
    /// strings. A negative answer of the sync application has the same result, mostly without a line. A line that
    /// cannot be written is dropped.
    /// @{

    /// Does what discover() does.
    static bool discover(HWND hwnd);

    /// Returns the version of the sync application.
    static bool getVersion(HWND hwnd, QVString& outVersion);

    /// Returns the root folder of the first drive.
    ///
    /// @note Kept for compatibility: without a drive `outItem` is left unchanged, and nothing says so.
    /// @throws ApiException or one of its subclasses, as the requests on a connection do.
    static void getRootFolderItemWithExceptions(HWND hwnd, Item& outItem);

    /// Returns the root folder of the first drive, and a status instead of an exception.
    ///
    /// @note Kept for compatibility: without a drive the result is QVCode::Success and `outItem` is left unchanged.
    static QVCode getRootFolderItem(HWND hwnd, Item& outItem);

    /// Returns whether the contents of the first drive's root can be listed.
    ///
    /// @note Kept for compatibility: without a drive it lists the contents of a default-constructed item, so the result
    ///       is false with a line in the log.
    static bool canAccessDriveData(HWND hwnd);

    /// Lists the files and folders directly inside a folder. On success the list replaces `outItems`.
    static bool getFolderContents(HWND hwnd, const Item& folder, QVBuffer<Item>& outItems);

    /// Brings one item up to date on both sides.
    ///
    /// @return CommandResult::isSuccess of the sync.
    static bool syncItem(HWND hwnd, const Item& item);

    /// Finds out whether a local file is in a workspace.
    static QVCode isFileInWorkspace(HWND hwnd, const QVString& path, bool& outInWorkspace);

    /// Does what getItemByWorkspacePath() does.
    static bool checkExistence(HWND hwnd, const QVString& path, Item& outItem);

    /// Returns whether a drive is offline: whether the permanent id of its root cannot be had for that reason.
    ///
    /// @throws ApiException or one of its subclasses, from opening the connection and from listing the drives.
    /// @note Kept for compatibility: unlike other one-shot operations it throws.
    static bool isOffline(HWND hwnd);

    /// Finds the first folder, directly in the root of a drive of a type, that accepts new files.
    ///
    /// It asks the sync application about a small file in the temporary folder, and removes that file again.
    ///
    /// @note Kept for compatibility: without a folder for temporary files it fails, with the reason in the log.
    /// @param hwnd          as for all one-shot operations.
    /// @param driveType     only "Quorvex.DataSourceType.Drive" is supported.
    /// @param outLocalPath  the folder's workspace path with back-slashes; may have been written on failure.
    /// @param outItem       the folder; may have been written on failure.
    static QVCode getRootFolderLocalPath(HWND hwnd, const QVString& driveType, QVString& outLocalPath, Item& outItem);

    /// Returns the absolute, normalized form of a path, as .NET's System.IO.Path.GetFullPath gives it on this platform.
    /// Starts the runtime if no connection has.
    ///
    /// @throws ApiException with .NET's message for a path that has no such form.
    static std::wstring toTrueFullPath(const std::wstring& path);

    /// Looks an item up by its local path. Takes it from the item cache, without a connection, if it is there.
    ///
    /// Writes a line to the diagnostic log when the sync application knows no item at the path.
    ///
    /// @note Kept for compatibility: unlike other one-shot operations it throws.
    /// @param hwnd           as for all one-shot operations.
    /// @param workspacePath  absolute, or relative to the current directory; either slash is accepted.
    /// @param outItem        the item.
    /// @throws std::filesystem::filesystem_error when the current directory does not exist any more, and std::bad_alloc
    ///         when memory runs out before the sync application is asked.
    static bool getItemByWorkspacePath(HWND hwnd, const QVString& workspacePath, Item& outItem);

    /// Looks up the workspace path of the item that a permanent id names.
    static bool getFullWorkspacePathByPermanentId(HWND hwnd, QVString permanentId, QVString& outPath);

    /// Looks up the item that a permanent id names.
    static bool getItemByPermanentId(HWND hwnd, QVString permanentId, Item& outItem);

    /// Looks up the drive of the item that a permanent id names.
    static bool getDriveUUIDByPermanentId(HWND hwnd, QVString permanentId, QVUUID& outDriveId);

    /// Looks up the permanent id of an item.
    ///
    /// @param hwnd            as for all one-shot operations.
    /// @param item            an item that this library returned.
    /// @param outPermanentId  the id.
    /// @param outResult       the outcome for this item, on failure too. Unchanged when the request failed with an
    ///                        exception or brought no result at all.
    static bool getPermanentIdByItem(HWND hwnd, const Item& item, QVString& outPermanentId, Result& outResult);

    /// Looks up the permanent id of the item at a local path, which is found as by getItemByWorkspacePath().
    static bool getPermanentIdByFullWorkspacePath(HWND hwnd, const QVString& path, QVString& outPermanentId);

    /// Returns the cloud identifiers of the folder at a local path.
    ///
    /// A folder without a URN of its own has that of the folder that holds it.
    ///
    /// @note Kept for compatibility: the folder that holds it is asked for without `useParentFolderKey`, by a property
    ///       that drives with projects do not have.
    /// @param hwnd                as for all one-shot operations.
    /// @param workspacePath       the item is found with either slash, as by getItemByWorkspacePath().
    /// @param useParentFolderKey  read the property that names the folder as the parent of its items.
    /// @return project id and URN as UTF-8. Drives without projects have no project id, and there may be a project id
    ///         without a URN. Both are empty when there is no answer.
    /// @note Kept for compatibility: the drive is the first one with whose root path `workspacePath` begins as it was
    ///       given, ignoring case. So a path with forward slashes has no answer where the root is `D:\Drive`, and
    ///       `D:\Drive2\x` is taken for a path of that drive.
    static std::tuple<std::string, std::string> getFolderUrn(
        HWND hwnd, const std::wstring& workspacePath, bool useParentFolderKey);

    /// Returns the cloud identifiers of a folder; see the overload for paths.
    static std::tuple<std::string, std::string> getFolderUrn(HWND hwnd, const Item& item, bool useParentFolderKey);

    /// Returns the cloud identifiers of the file at a local path.
    ///
    /// @param hwnd           as for all one-shot operations.
    /// @param workspacePath  as for getFolderUrn(), with the same note.
    /// @return project id and URN as UTF-8; either or both may be empty, as for getFolderUrn().
    static std::tuple<std::string, std::string> getFileUrn(HWND hwnd, const std::wstring& workspacePath);

    /// Returns the cloud identifiers of a file; see the overload for paths.
    static std::tuple<std::string, std::string> getFileUrn(HWND hwnd, const Item& item);

    /// Returns whether the sync application would accept a new file in a local folder. It asks as
    /// getRootFolderLocalPath() does, with the same note.
    static bool canAddFile(HWND hwnd, const QVString& folderPath);

    /// @}

private:
    static void addCachedItem(const Item& item);
    static void addCachedItems(const QVBuffer<Item>& items);
    static void addCachedItems(const QVBuffer<Drive>& drives);
    static void addCachedItems(const QVBuffer<WorkspacePathToItemResult>& results);
    static void addCachedItems(const QVBuffer<PermanentIdToItemResult>& results);

    std::shared_ptr<Tessaport::QvManagedTessaportService> bridge;
};

} // namespace Quorvex::Velmora::TessaportAPI
