// The values of one record after the other.
#pragma once

#include <string>

#include <velmora/logging/ValueTree.h>

namespace Quorvex::Velmora::Logging
{

/// A tree that is filled anew for each record. Records of a log mostly have the same keys in the same order: while they
/// do, the nodes of the record before are used again, which takes no memory.
class RecordTree
{
public:
    /// Empties the tree.
    void clear();

    void put(const std::wstring& key, const std::wstring& text);

    /// The tree of what was put since the last clear().
    const ValueTree::Tree& finished();

private:
    using Tree = ValueTree::Tree;

    [[nodiscard]] bool nextLeftoverIs(const std::wstring& key) const;
    void dropLeftovers();

    Tree m_tree;
    // The nodes from here to the end are left over from the record before.
    Tree::iterator m_leftovers = m_tree.end();
};

} // namespace Quorvex::Velmora::Logging
