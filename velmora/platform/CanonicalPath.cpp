#include "velmora/platform/CanonicalPath.h"

#include <algorithm>
#include <vector>

namespace Quorvex::Velmora::Common
{
namespace
{

constexpr std::wstring_view Slashes = L"/\\";

constexpr bool isSlash(wchar_t c) noexcept { return c == L'/' || c == L'\\'; }

constexpr bool isLetter(wchar_t c) noexcept { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); }

std::vector<std::wstring_view> componentsOf(std::wstring_view path)
{
    std::vector<std::wstring_view> components;
    while (!path.empty()) {
        const std::size_t end = path.find_first_of(Slashes);
        const std::wstring_view component = path.substr(0, end);
        path.remove_prefix(end == std::wstring_view::npos ? path.size() : end + 1);
        if (component == L"..") {
            if (!components.empty())
                components.pop_back();
        } else if (!component.empty() && component != L".") {
            components.push_back(component);
        }
    }
    return components;
}

// The length of "\\server\share" at the beginning of a path, or 0. Off Windows two forward slashes begin an ordinary
// path.
std::size_t serverLength(std::wstring_view path) noexcept
{
#ifdef _WIN32
    const auto startsServer = isSlash;
#else
    const auto startsServer = [](wchar_t c) { return c == L'\\'; };
#endif
    if (path.size() < 3 || !startsServer(path[0]) || !startsServer(path[1]) || isSlash(path[2]))
        return 0;
    const std::size_t serverEnd = std::min(path.find_first_of(Slashes, 2), path.size());
    const std::size_t shareBegin = std::min(serverEnd + 1, path.size());
    const std::size_t shareEnd = std::min(path.find_first_of(Slashes, shareBegin), path.size());
    return shareEnd == shareBegin ? serverEnd : shareEnd;
}

// The length of what ".." cannot remove: a drive, or on Windows a server with its share.
std::size_t anchorLength(std::wstring_view path) noexcept
{
    if (hasDriveLetter(path))
        return 2;
#ifdef _WIN32
    return serverLength(path);
#else
    return 0;
#endif
}

} // namespace

bool hasDriveLetter(std::wstring_view path) noexcept
{
    return path.size() >= 2 && isLetter(path[0]) && path[1] == L':' && (path.size() == 2 || isSlash(path[2]));
}

bool isRelativeToDrive([[maybe_unused]] std::wstring_view path) noexcept
{
#ifdef _WIN32
    return path.size() >= 2 && isLetter(path[0]) && path[1] == L':' && !hasDriveLetter(path);
#else
    return false;
#endif
}

bool isRooted(std::wstring_view path) noexcept
{
    return hasDriveLetter(path) || (!path.empty() && isSlash(path.front()));
}

std::size_t rootLength(std::wstring_view path) noexcept
{
    if (hasDriveLetter(path))
        return std::min<std::size_t>(path.size(), 3);
    if (isRelativeToDrive(path))
        return 2;
    if (const std::size_t server = serverLength(path); server != 0)
        return server;
    return isRooted(path) ? 1 : 0;
}

std::wstring lexicallyCanonical(std::wstring_view rooted)
{
    const std::size_t anchor = anchorLength(rooted);
    std::wstring result(rooted.substr(0, anchor));
    std::replace(result.begin(), result.end(), L'/', L'\\');
    const bool isServer = anchor > 2;
    const std::vector<std::wstring_view> components = componentsOf(rooted.substr(anchor));
    for (const std::wstring_view component : components) {
        result += L'\\';
        result += component;
    }
    if (components.empty() && !isServer)
        result += L'\\';
    return result;
}

} // namespace Quorvex::Velmora::Common
