#include "velmora/logging/RecordTree.h"

namespace Quorvex::Velmora::Logging
{

void RecordTree::clear()
{
    tree.data().clear();
    leftovers = tree.begin();
}

// No two nodes have the same key: if a leftover node has this one, nothing was put under it in this record.
void RecordTree::put(const std::wstring& key, const std::wstring& text)
{
    if (nextLeftoverIs(key)) {
        Tree& node = leftovers->second;
        if (!node.empty())
            node.clear();
        node.data() = text;
        ++leftovers;
    } else {
        dropLeftovers();
        ValueTree::put(tree, KeyPath(key), text);
    }
}

const ValueTree::Tree& RecordTree::finished()
{
    dropLeftovers();
    return tree;
}

// A key of several levels is the key of no node. The empty key means the root, not the node with an empty key.
bool RecordTree::nextLeftoverIs(const std::wstring& key) const
{
    return Tree::const_iterator(leftovers) != tree.end() && !key.empty() && leftovers->first == key;
}

void RecordTree::dropLeftovers() { leftovers = tree.erase(leftovers, tree.end()); }

} // namespace Quorvex::Velmora::Logging
