#pragma once

#include <string>
#include <vector>

#include <velmora/api/QVUUID.h>
#include <velmora/platform/WindowHandle.h>

namespace Quorvex::Velmora::TestKit
{

/// A request that reached the scripted service, with its arguments. Those that the request does not have are empty.
///
/// Items are named by their workspace path and commands by their id, as they were scripted. Paths arrive with
/// back-slashes on every platform.
struct Call {
    std::string request; ///< The member of ScriptedService that scripts it, for example "getFolderContents".
    int connection = 0;  ///< The number of its connection, from 1 in the order in which they were opened.

    std::wstring item;                      ///< The folder, the parent or the item in focus.
    std::vector<std::wstring> items;        ///< The items, or the other selected ones.
    std::vector<std::wstring> paths;        ///< Local, workspace or relative paths.
    std::vector<std::wstring> permanentIds; ///< The permanent ids that were looked up.
    std::vector<std::wstring> propertyIds;  ///< The properties whose values were asked for.
    std::wstring name;                      ///< The name of a folder to create.
    std::wstring commandId;                 ///< The command to execute.
    Common::QVUUID driveId = "";            ///< The drive; invalid if the request has none.
    int processId = 0;                      ///< The process that closed a file.
    HWND window = nullptr;                  ///< The window of a connection or of a command context.
};

} // namespace Quorvex::Velmora::TestKit
