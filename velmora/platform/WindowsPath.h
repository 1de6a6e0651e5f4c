// What Windows knows of a path, without the limits of the C library: long paths, any character. Internal.
#pragma once

#include <string>
#include <string_view>

namespace Quorvex::Velmora::Common::WindowsPath
{

/// True when something is there.
[[nodiscard]] bool exists(std::wstring_view path);

/// Removes a file or an empty folder; false when there was none or it cannot be removed.
bool remove(std::wstring_view path);

/// The path with its links followed and its names written as they are on the disk, as far as it exists. A path of a
/// server stays as it is, so that nobody waits for the network; one without a drive gets the current one.
[[nodiscard]] std::wstring followed(std::wstring_view rooted);

} // namespace Quorvex::Velmora::Common::WindowsPath
