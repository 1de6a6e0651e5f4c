#include "velmora/logging/RecordTree.h"

namespace Quorvex::Velmora::Logging
{

void RecordTree::clear()
{
    m_tree.data().clear();
    m_leftovers = m_tree.begin();
}

// No two nodes have the same key, so a leftover one was not put in this record under its key.
void RecordTree::put(const std::wstring& key, const std::wstring& text)
{
    if (nextLeftoverIs(key)) {
        Tree& node = m_leftovers->second;
        if (!node.empty())
            node.clear();
        node.data() = text;
        ++m_leftovers;
    } else {
        dropLeftovers();
        ValueTree::put(m_tree, KeyPath(key), text);
    }
}

const ValueTree::Tree& RecordTree::finished()
{
    dropLeftovers();
    return m_tree;
}

// A key of several levels is the key of no node. The empty key means the root, not the node with an empty key.
bool RecordTree::nextLeftoverIs(const std::wstring& key) const
{
    return Tree::const_iterator(m_leftovers) != m_tree.end() && !key.empty() && m_leftovers->first == key;
}

void RecordTree::dropLeftovers() { m_leftovers = m_tree.erase(m_leftovers, m_tree.end()); }

} // namespace Quorvex::Velmora::Logging
