// The lexical half of canonical paths. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::Common
{

/// True for a drive letter with its colon, alone or followed by a slash.
[[nodiscard]] bool hasDriveLetter(std::wstring_view path) noexcept;

/// True for a path that begins at the current folder of a drive, such as "D:x". There are such paths on Windows only.
[[nodiscard]] bool isRelativeToDrive(std::wstring_view path) noexcept;

/// True for a path that begins at a root: a slash of either kind, or a drive letter.
[[nodiscard]] bool isRooted(std::wstring_view path) noexcept;

/// The length of the root that a path begins with: a drive letter with its slash if it has one, a server with its
/// share, or one slash; 0 for a relative path.
[[nodiscard]] std::size_t rootLength(std::wstring_view path) noexcept;

/// The rooted path with back-slashes, without empty, "." and ".." components and without a slash at the end, but for
/// the roots "D:\" and "\"; ".." above the root goes nowhere.
[[nodiscard]] std::wstring lexicallyCanonical(std::wstring_view rooted);

} // namespace Quorvex::Velmora::Common
