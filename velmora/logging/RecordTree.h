#pragma once

#include <string>

#include <velmora/logging/ValueTree.h>

namespace Quorvex::Velmora::Logging
{

/// A tree of values that is filled again for each record.
///
/// The records of a log mostly have the same keys in the same order. As long as they do, the nodes of the previous
/// record are reused, which takes no allocation.
class RecordTree
{
public:
    /// Starts a record without values.
    void clear();

    /// Sets the text at the key, creating missing levels. If an allocation fails, the record is unchanged.
    void put(const std::wstring& key, const std::wstring& text);

    /// @return what was put since the last clear().
    const ValueTree::Tree& finished();

private:
    using Tree = ValueTree::Tree;

    [[nodiscard]] bool nextLeftoverIs(const std::wstring& key) const;
    void dropLeftovers();

    Tree tree;
    // The nodes from here to the end are left over from the previous record.
    Tree::iterator leftovers = tree.end();
};

} // namespace Quorvex::Velmora::Logging
