/// @file
/// Between the library's strings and identifiers and those of the standard library.
///
/// With `std::hash` specialized for both, they are keys of the standard library's unordered containers.
#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Gives a workspace path in this platform's own form, to open the file with.
///
/// Only the separators change: nothing is normalised or looked up, so `D:\x` becomes `D:/x` on Linux.
/// @param workspacePath  a path with either slash. On Linux an unpaired surrogate in it becomes U+FFFD.
/// @throws std::bad_alloc only.
[[nodiscard]] inline std::filesystem::path localPath(const Common::QVString& workspacePath)
{
#ifdef _WIN32
    std::wstring text = workspacePath.w_str();
    std::replace(text.begin(), text.end(), L'/', L'\\');
#else
    std::string text = workspacePath.c_str();
    std::replace(text.begin(), text.end(), '\\', '/');
#endif
    return text;
}

/// Gives the local path of an item's file or folder, which exists when the item is in the workspace.
[[nodiscard]] inline std::filesystem::path localPath(const Item& item) { return localPath(item.workspacePath); }

/// Copies a string as UTF-8. An unpaired surrogate becomes U+FFFD.
[[nodiscard]] inline std::string toUtf8(const Common::QVString& string) { return string.c_str(); }

/// Copies a string as it is.
[[nodiscard]] inline std::wstring toWide(const Common::QVString& string) { return string.w_str(); }

/// @name Strings from the standard library's
/// @{

/// Copies a string.
///
/// The result ends at the first zero character. A null pointer gives the empty string. In UTF-8, each byte that is not
/// part of a valid sequence becomes U+FFFD.
/// @throws std::bad_alloc only.
[[nodiscard]] inline Common::QVString toQVString(std::string_view utf8) { return std::string(utf8).c_str(); }
[[nodiscard]] inline Common::QVString toQVString(std::wstring_view wide) { return std::wstring(wide).c_str(); }
[[nodiscard]] inline Common::QVString toQVString(const char* utf8) { return utf8; }
[[nodiscard]] inline Common::QVString toQVString(const wchar_t* wide) { return wide; }

/// Copies a path. Keeps its slashes, so that `localPath(toQVString(path)) == path`.
/// @tparam Path  std::filesystem::path, and nothing that converts to it.
template <class Path, std::enable_if_t<std::is_same_v<Path, std::filesystem::path>, int> = 0>
[[nodiscard]] Common::QVString toQVString(const Path& path)
{
    return path.c_str();
}
/// @}

} // namespace Quorvex::Velmora::TessaportAPI

namespace Quorvex::Velmora::Common
{

/// @name Output
/// @{

/// Writes to a narrow stream as UTF-8, to a wide one as it is.
inline std::ostream& operator<<(std::ostream& stream, const QVString& string) { return stream << string.c_str(); }
inline std::wostream& operator<<(std::wostream& stream, const QVString& string) { return stream << string.w_str(); }
inline std::ostream& operator<<(std::ostream& stream, const QVUUID& id) { return stream << id.getString(); }
inline std::wostream& operator<<(std::wostream& stream, const QVUUID& id) { return stream << id.getString(); }
/// @}

} // namespace Quorvex::Velmora::Common

/// @cond
template <>
struct std::hash<Quorvex::Velmora::Common::QVString> {
    [[nodiscard]] std::size_t operator()(const Quorvex::Velmora::Common::QVString& string) const noexcept
    {
        return std::hash<std::wstring_view>()(string.w_str());
    }
};

template <>
struct std::hash<Quorvex::Velmora::Common::QVUUID> {
    [[nodiscard]] std::size_t operator()(const Quorvex::Velmora::Common::QVUUID& id) const
    {
        // All nil identifiers are equal, also those whose text form is empty.
        return id.isNil() ? 0 : std::hash<Quorvex::Velmora::Common::QVString>()(id.getString());
    }
};
/// @endcond
