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
    /// with
    ///         another sync application.
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
    RequestScript connect{"TessaportService"}; ///< Opening a connection.
    RequestScript discover{"Discover"};
    AnsweringScript<Common::QVString> getVersion{"GetVersion"};
    ListScript<TessaportAPI::Drive> getDrives{"GetDrives"};
    FolderScript getFolderContents{"GetFolderContents"};
    FolderScript getChildFolders{"GetChildFolders"};
    AnsweringScript<TessaportAPI::Item> getOrCreateFolder{"GetOrCreateFolder"};
    AnsweringScript<bool> isFileInWorkspace{"AreFilesInWorkspace"};
    AnsweringScript<bool> canAddFiles{"CanAddFiles"};
    AnsweringScript<TessaportAPI::CommandResult> addFiles{"AddFiles"};
    AnsweringScript<TessaportAPI::CommandResult> syncFiles{"SyncFiles"};
    AnsweringScript<TessaportAPI::CommandResult> deleteFilesOrFolders{"DeleteItems"};
    ListScript<TessaportAPI::Item> getItemsByRelativePaths{"GetItemsByRelativePaths"};
    ListScript<TessaportAPI::WorkspacePathToItemResult> getItemsByWorkspacePaths{"GetItemsByWorkspacePaths"};
    RequestScript fileClosedWithinRunningProcess{"FileClosedWithinRunningProcess"};
    ListScript<TessaportAPI::PropertyDefinition> getPropertyDefinitions{"GetPropertyDefinitions"};
    ListScript<TessaportAPI::StringPropertyValue> getStringPropertyValues{"GetProperties"};
    /// A menu. Commands are recognised by their id.
    ListScript<TessaportAPI::Command> getCommands{"GetCommands"};
    AnsweringScript<TessaportAPI::CommandResult> executeCommand{"ExecuteCommand"};
    ListScript<ScriptedPermanentId> getPermanentIds{"GetPermanentIds"};
    ListScript<TessaportAPI::PermanentIdToItemResult> getItemsByPermanentIds{"GetItemsByPermanentIds"};
    /// @}

    /// Returns the requests that were made since the last time, in order.
    [[nodiscard]] std::vector<Call> takeCalls();

    /// Forgets all that was set, and all calls. Requests that wait continue at once. The next connection is number 1.
    void reset();
};

} // namespace Quorvex::Velmora::TestKit
