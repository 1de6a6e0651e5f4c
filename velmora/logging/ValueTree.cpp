#include "velmora/logging/ValueTree.h"

namespace Quorvex::Velmora::Logging::ValueTree
{
namespace
{

void add(Tree& parent, const std::wstring& key, KeyPath below, const std::wstring& value)
{
    const auto added = parent.push_back({key, Tree()});
    try {
        put(added->second, below, value);
    } catch (...) {
        parent.erase(added);
        throw;
    }
}

} // namespace

void put(Tree& tree, KeyPath path, const std::wstring& value)
{
    Tree* node = &tree;
    while (!path.done()) {
        const std::wstring key(path.next());
        const auto found = node->find(key);
        if (found == node->not_found())
            return add(*node, key, path, value);
        node = &found->second;
    }
    node->data() = value;
}

const Tree* find(const Tree& tree, KeyPath path)
{
    const Tree* node = &tree;
    while (!path.done()) {
        const auto found = node->find(std::wstring(path.next()));
        if (found == node->not_found())
            return nullptr;
        node = &found->second;
    }
    return node;
}

} // namespace Quorvex::Velmora::Logging::ValueTree
