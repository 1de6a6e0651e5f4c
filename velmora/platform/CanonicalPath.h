// The lexical half of canonical paths. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::Common
{

/// True for a path that begins with a drive letter and a colon.
[[nodiscard]] bool hasDriveLetter(std::wstring_view path) noexcept;

/// True for a path that begins at a root: a slash of either kind, or a drive letter.
[[nodiscard]] bool isRooted(std::wstring_view path) noexcept;

/// The rooted path with back-slashes, without empty, "." and ".." components and without a slash at the end; ".." above
/// the root goes nowhere.
[[nodiscard]] std::wstring lexicallyCanonical(std::wstring_view rooted);

} // namespace Quorvex::Velmora::Common
