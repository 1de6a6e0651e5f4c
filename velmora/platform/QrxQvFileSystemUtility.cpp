#include "velmora/platform/QrxQvFileSystemUtility.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <velmora/platform/CanonicalPath.h>
#include <velmora/platform/NativePath.h>
#ifdef _WIN32
#include <velmora/platform/WindowsPath.h>
#endif

namespace Quorvex::Velmora::Common
{
namespace
{

namespace fs = std::filesystem;

constexpr std::wstring_view Slashes = L"/\\";

#ifdef _WIN32

std::wstring followed(std::wstring_view rooted) { return WindowsPath::followed(rooted); }
bool existsOnDisk(const std::wstring& path) { return WindowsPath::exists(path); }
bool removeFromDisk(const std::wstring& path) { return WindowsPath::remove(path); }

#else

// A path of the sync application, and a string that is not a path on this platform, have a lexical form only.
bool mayBeOnDisk(std::wstring_view path) { return !hasDriveLetter(path) && Unicode::toUtf8Strict(path).has_value(); }

fs::path diskPath(std::wstring_view path)
{
    std::string narrow = Unicode::toUtf8(path);
    for (char& c : narrow)
        c = c == '\\' ? '/' : c;
    return narrow;
}

// Returns the path with its links followed as far as it exists; empty if this fails.
std::wstring followed(std::wstring_view rooted)
{
    if (!mayBeOnDisk(rooted))
        return {};
    std::error_code error;
    fs::path found = fs::weakly_canonical(diskPath(rooted), error);
    return error ? std::wstring() : wideText(found);
}

bool existsOnDisk(const std::wstring& path)
{
    std::error_code error;
    return fs::exists(nativePath(path), error);
}

bool removeFromDisk(const std::wstring& path)
{
    std::error_code error;
    return fs::remove(nativePath(path), error);
}

#endif

std::wstring absolute(const std::wstring& path, const std::wstring& base)
{
    if (isRooted(path) || isRelativeToDrive(path))
        return path;
    return path.empty() ? base : QrxQvFileSystemUtility::combine(base, path);
}

} // namespace

bool QrxQvFileSystemUtility::exists(const std::wstring& path) { return existsOnDisk(path); }

std::wstring QrxQvFileSystemUtility::currentPath() { return wideText(fs::current_path()); }

std::wstring QrxQvFileSystemUtility::canonical(const std::wstring& path, const std::wstring& base)
{
    const std::wstring rooted = absolute(path, base);
    const std::wstring onDisk = followed(rooted);
    return lexicallyCanonical(onDisk.empty() ? rooted : onDisk);
}

std::wstring QrxQvFileSystemUtility::parentPath(const std::wstring& path)
{
    const std::size_t root = rootLength(path);
    const std::size_t lastOfName = path.find_last_not_of(Slashes);
    if (lastOfName == std::wstring::npos || lastOfName < root)
        return path.substr(0, root);
    const std::size_t slash = path.find_last_of(Slashes, lastOfName);
    if (slash == std::wstring::npos || slash < root)
        return path.substr(0, root);
    const std::size_t lastOfParent = path.find_last_not_of(Slashes, slash);
    return path.substr(0, lastOfParent == std::wstring::npos ? root : std::max(lastOfParent + 1, root));
}

bool QrxQvFileSystemUtility::remove(const std::wstring& path) { return removeFromDisk(path); }

std::wstring QrxQvFileSystemUtility::combine(const std::wstring& folder, const std::wstring& name)
{
    if (folder.empty() || Slashes.find(folder.back()) != std::wstring_view::npos)
        return folder + name;
    return folder + static_cast<wchar_t>(fs::path::preferred_separator) + name;
}

std::wstring QrxQvFileSystemUtility::tempPath() { return wideText(fs::temp_directory_path()); }

} // namespace Quorvex::Velmora::Common
