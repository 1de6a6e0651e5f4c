// Converts between wide strings and the platform's own paths, whatever the process's locale. Internal.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Common
{

/// Returns the path that a wide string names. Narrow paths are UTF-8; a character without a UTF-8 form becomes U+FFFD.
inline std::filesystem::path nativePath(std::wstring_view text)
{
#ifdef _WIN32
    return std::filesystem::path(text);
#else
    return std::filesystem::path(Unicode::toUtf8(text));
#endif
}

/// Returns a path as a wide string.
inline std::wstring wideText(const std::filesystem::path& path)
{
#ifdef _WIN32
    return path.native();
#else
    return Unicode::fromUtf8(path.native());
#endif
}

} // namespace Quorvex::Velmora::Common
