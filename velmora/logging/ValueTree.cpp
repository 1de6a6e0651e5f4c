#include <velmora/logging/ValueTree.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace Quorvex::Velmora::Logging::ValueTree
{
namespace
{

constexpr wchar_t Separator = L'.';

/// Takes the part of a path up to the next separator off its front. An empty path has no parts, and a separator at the
/// end starts no other.
class PathParts
{
public:
    explicit PathParts(std::wstring_view path) noexcept : m_rest(path) {}

    [[nodiscard]] bool done() const noexcept { return m_rest.empty(); }

    std::wstring next()
    {
        const std::size_t end = std::min(m_rest.find(Separator), m_rest.size());
        std::wstring part(m_rest.substr(0, end));
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
        return part;
    }

private:
    std::wstring_view m_rest;
};

void refuseTooDeep(const std::wstring& key)
{
    if (key.size() < MaximumDepth)
        return;
    if (std::count(key.begin(), key.end(), Separator) >= static_cast<std::ptrdiff_t>(MaximumDepth))
        throw std::invalid_argument("a key may have at most 1000 levels separated by \".\": use fewer of them");
}

} // namespace

Tree& nodeAt(Tree& tree, const std::wstring& key)
{
    refuseTooDeep(key);
    Tree* node = &tree;
    for (PathParts parts(key); !parts.done();) {
        std::wstring part = parts.next();
        const auto found = node->find(part);
        node = found != node->not_found() ? &found->second : &node->push_back({std::move(part), Tree()})->second;
    }
    return *node;
}

const Tree* findNode(const Tree& tree, const std::wstring& key)
{
    const Tree* node = &tree;
    for (PathParts parts(key); !parts.done();) {
        const auto found = node->find(parts.next());
        if (found == node->not_found())
            return nullptr;
        node = &found->second;
    }
    return node;
}

} // namespace Quorvex::Velmora::Logging::ValueTree
