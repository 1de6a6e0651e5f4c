// The lexical part of canonical paths: what needs no look at the disk. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::Common
{

/// Returns whether a path begins with a drive letter and its colon, followed by a slash or nothing.
[[nodiscard]] bool hasDriveLetter(std::wstring_view path) noexcept;

/// Returns whether a path is relative to the current folder of a drive, as "D:x" is on Windows. Always false elsewhere.
[[nodiscard]] bool isRelativeToDrive(std::wstring_view path) noexcept;

/// Returns whether a path begins at a root: with either slash or a drive letter.
[[nodiscard]] bool isRooted(std::wstring_view path) noexcept;

/// Returns the length of the root at the beginning of a path: a drive letter with its slash if it has one, a server
/// with its share, or one slash. 0 for a relative path.
[[nodiscard]] std::size_t rootLength(std::wstring_view path) noexcept;

/// Returns a path that begins at a root with back-slashes and without empty, "." and ".." components. Only the roots
/// "D:\" and "\" end with a slash. ".." at the root is dropped.
[[nodiscard]] std::wstring lexicallyCanonical(std::wstring_view rooted);

} // namespace Quorvex::Velmora::Common
