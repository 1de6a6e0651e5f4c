#include "velmora/logging/ValueTree.h"

#include <velmora/logging/KeyPath.h>

namespace Quorvex::Velmora::Logging::ValueTree
{

Tree& nodeAt(Tree& tree, const std::wstring& key)
{
    refuseTooDeep(key);
    Tree* node = &tree;
    for (KeyPath path(key); !path.done();) {
        std::wstring part(path.next());
        const auto found = node->find(part);
        node = found != node->not_found() ? &found->second : &node->push_back({std::move(part), Tree()})->second;
    }
    return *node;
}

const Tree* findNode(const Tree& tree, const std::wstring& key)
{
    const Tree* node = &tree;
    for (KeyPath path(key); !path.done();) {
        const auto found = node->find(std::wstring(path.next()));
        if (found == node->not_found())
            return nullptr;
        node = &found->second;
    }
    return node;
}

} // namespace Quorvex::Velmora::Logging::ValueTree
