#pragma once

#include <vector>

#include <velmora/api/Records.h>
#include <velmora/api/RuntimeOptions.h>
#include <velmora/testkit/Call.h>
#include <velmora/testkit/Failure.h>
#include <velmora/testkit/RequestScript.h>
#include <velmora/testkit/ScriptedRecords.h>

namespace Quorvex::Velmora::TestKit
{

/// A sync application for the tests of a host: a test sets what each request returns, lets it fail or wait, and reads
/// the requests that were made.
///
/// @code
/// ScriptedService service;
/// const Drive drive = makeDrive(L"Harbour Project");
/// service.getDrives.answer({drive});
/// service.getFolderContents.answer({makeFile(drive, L"Plan.txt")});
/// service.syncFiles.fail(L"Quota exceeded.");
///
/// runTheHost();
///
/// EXPECT_EQ(service.syncFiles.takeCalls().size(), 1);
/// @endcode
///
/// It runs in the test's own process: the library starts .NET as always, with this service in place of the sync
/// application. What is tested needs no change, but must not call setRuntimeOptions() itself, which throws
/// std::logic_error once .NET runs.
///
/// Without a script there is one drive, "Drive 1", with nothing in it. Every operation succeeds, every lookup finds
/// nothing, and no file is in the workspace. Nothing on the disk is read or changed; the exception is canAddFiles,
/// which reads the files that are offered.
///
/// All scripted services of a process script the same one, so there is one at a time. Its members may be used on any
/// thread, and several at the same time. The constructor makes requests: no other request may run meanwhile.
class ScriptedService
{
public:
    /// Starts .NET with the scripted service, unless an earlier object has, and resets the script.
    ///
    /// @param options  `apiFolder` names the folder of the scripted service; empty means the one that is installed with
    ///                 this kit. It is found from the place of the library VelmoraTessaport. Counts for the first
    ///                 object of the process.
    /// @throws std::logic_error if a connection was opened before the first object was made, which has started .NET
    ///         with another sync application.
    /// @throws std::runtime_error if the scripted service is not installed.
    /// @throws TessaportAPI::ApiException if .NET cannot be started.
    explicit ScriptedService(const TessaportAPI::RuntimeOptions& options = {});

    /// Resets the script, so that requests that wait continue. An object must be destroyed before the process exits: it
    /// must not be global.
    ~ScriptedService();

    ScriptedService(const ScriptedService&) = delete;
    ScriptedService& operator=(const ScriptedService&) = delete;

    /// @name Requests
    /// Named after the members of QvNativeTessaportAPI that make them. One-shot operations and some members make
    /// several.
    /// @{

    /// Opening a connection: by the constructors of QvNativeTessaportAPI, by one-shot operations, and by the first
    /// request of a queue. Call::window is the window.
    RequestScript connect{"TessaportService"};

    /// Scripts QvNativeTessaportAPI::discover(). It has no answer, and succeeds without a script.
    RequestScript discover{"Discover"};

    /// Scripts QvNativeTessaportAPI::getVersion(): "3.1.4" without a script.
    AnsweringScript<Common::QVString> getVersion{"GetVersion"};

    /// Scripts QvNativeTessaportAPI::getDrives(): one drive without a script. Some one-shot operations make this
    /// request too.
    ListScript<TessaportAPI::Drive> getDrives{"GetDrives"};

    /// Scripts QvNativeTessaportAPI::getFolderContents(), for all folders or one. Call::item is the folder.
    FolderScript getFolderContents{"GetFolderContents"};

    /// Scripts QvNativeTessaportAPI::getChildFolders(), for all folders or one. Call::item is the folder.
    FolderScript getChildFolders{"GetChildFolders"};

    /// Scripts QvNativeTessaportAPI::getOrCreateFolder(). Call::item is the parent, Call::name the folder in it.
    AnsweringScript<TessaportAPI::Item> getOrCreateFolder{"GetOrCreateFolder"};

    /// Scripts QvNativeTessaportAPI::isFileInWorkspace(): false without a script. Call::paths has the path.
    AnsweringScript<bool> isFileInWorkspace{"AreFilesInWorkspace"};

    /// Scripts QvNativeTessaportAPI::canAddFiles(): true without a script. Call::item is the folder.
    AnsweringScript<bool> canAddFiles{"CanAddFiles"};

    /// Scripts QvNativeTessaportAPI::addFiles(). Call::item is the folder, and Call::paths has the local files.
    AnsweringScript<TessaportAPI::CommandResult> addFiles{"AddFiles"};

    /// Scripts QvNativeTessaportAPI::syncFiles() and its one-shot operation syncItem(). Call::items are the items.
    AnsweringScript<TessaportAPI::CommandResult> syncFiles{"SyncFiles"};

    /// Scripts QvNativeTessaportAPI::deleteFilesOrFolders(). Call::items are the items.
    AnsweringScript<TessaportAPI::CommandResult> deleteFilesOrFolders{"DeleteItems"};

    /// Scripts QvNativeTessaportAPI::getItemsByRelativePaths(). Call::driveId is the drive.
    ListScript<TessaportAPI::Item> getItemsByRelativePaths{"GetItemsByRelativePaths"};

    /// Scripts QvNativeTessaportAPI::getItemsByWorkspacePaths(). One-shot operations look up paths by this request too,
    /// unless the item cache has the item.
    ListScript<TessaportAPI::WorkspacePathToItemResult> getItemsByWorkspacePaths{"GetItemsByWorkspacePaths"};

    /// Scripts QvNativeTessaportAPI::fileClosedWithinRunningProcess(). It has no answer. Call::processId is the
    /// process.
    RequestScript fileClosedWithinRunningProcess{"FileClosedWithinRunningProcess"};

    /// Scripts QvNativeTessaportAPI::getPropertyDefinitions(). Call::driveId is the drive.
    ListScript<TessaportAPI::PropertyDefinition> getPropertyDefinitions{"GetPropertyDefinitions"};

    /// Scripts QvNativeTessaportAPI::getStringPropertyValues(). Call::propertyIds are the properties.
    ListScript<TessaportAPI::StringPropertyValue> getStringPropertyValues{"GetProperties"};

    /// Scripts QvNativeTessaportAPI::getCommands(): a menu, whose commands are recognised by their id.
    ListScript<TessaportAPI::Command> getCommands{"GetCommands"};

    /// Scripts QvNativeTessaportAPI::executeCommand(). Call::commandId is the command.
    AnsweringScript<TessaportAPI::CommandResult> executeCommand{"ExecuteCommand"};

    /// Scripts QvNativeTessaportAPI::getPermanentIds(). Call::items are the items.
    ListScript<ScriptedPermanentId> getPermanentIds{"GetPermanentIds"};

    /// Scripts QvNativeTessaportAPI::getItemsByPermanentIds(). Call::permanentIds has the ids.
    ListScript<TessaportAPI::PermanentIdToItemResult> getItemsByPermanentIds{"GetItemsByPermanentIds"};

    /// @}

    /// Returns the requests that were made since the last time, in order.
    [[nodiscard]] std::vector<Call> takeCalls();

    /// Forgets all that was set, and all calls. Requests that wait continue at once. The next connection is number 1.
    void reset();
};

} // namespace Quorvex::Velmora::TestKit
