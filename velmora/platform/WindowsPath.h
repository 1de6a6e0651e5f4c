// Windows paths on the disk, without the limits of the C library: of any length, with any character. Internal.
#pragma once

#include <string>
#include <string_view>

namespace Quorvex::Velmora::Common::WindowsPath
{

/// Returns whether there is a file or folder.
[[nodiscard]] bool exists(std::wstring_view path);

/// Removes a file or an empty folder. Returns whether this succeeded.
bool remove(std::wstring_view path);

/// Returns the path with its links followed and its names spelled as on the disk, as far as it exists.
///
/// @param rooted  a path on a server is returned unchanged, so that no caller waits for the network; one without a
/// drive
///                is taken from the current drive.
[[nodiscard]] std::wstring followed(std::wstring_view rooted);

} // namespace Quorvex::Velmora::Common::WindowsPath
