#include "velmora/platform/CanonicalPath.h"

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

// What ".." does not climb over: a drive, or a server with its share.
std::wstring rootOf(std::wstring_view& path)
{
    if (hasDriveLetter(path)) {
        std::wstring root(path.substr(0, 2));
        path.remove_prefix(2);
        return root;
    }
#ifdef _WIN32
    if (path.size() > 2 && isSlash(path[0]) && isSlash(path[1]) && !isSlash(path[2])) {
        std::size_t end = path.find_first_of(Slashes, 2);
        if (end != std::wstring_view::npos)
            end = path.find_first_of(Slashes, end + 1);
        std::wstring root(path.substr(0, end));
        for (wchar_t& c : root)
            c = c == L'/' ? L'\\' : c;
        path.remove_prefix(end == std::wstring_view::npos ? path.size() : end);
        return root;
    }
#endif
    return {};
}

} // namespace

bool hasDriveLetter(std::wstring_view path) noexcept
{
    return path.size() >= 2 && isLetter(path[0]) && path[1] == L':' && (path.size() == 2 || isSlash(path[2]));
}

bool isRooted(std::wstring_view path) noexcept
{
    return hasDriveLetter(path) || (!path.empty() && isSlash(path.front()));
}

std::wstring lexicallyCanonical(std::wstring_view rooted)
{
    std::wstring result = rootOf(rooted);
    const std::vector<std::wstring_view> components = componentsOf(rooted);
    for (const std::wstring_view component : components) {
        result += L'\\';
        result += component;
    }
    if (components.empty())
        result += L'\\';
    return result;
}

} // namespace Quorvex::Velmora::Common
