#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <windows.h>

/// Lets the user pick a file of a drive. A file that is only on the server is brought to this computer.
///
/// @return the local path of the file, which exists; nothing if the user has cancelled.
[[nodiscard]] std::optional<std::filesystem::path> openFromDrive(HWND owner);

/// Lets the user pick a folder of a drive and a name in it, and asks before an existing file is replaced.
///
/// @param name  proposed to the user.
/// @return the local path to write to, whose folder exists; nothing if the user has cancelled. The host writes the file
///         and syncs it then.
[[nodiscard]] std::optional<std::filesystem::path> saveToDrive(HWND owner, const std::wstring& name);
