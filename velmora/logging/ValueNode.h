#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <velmora/logging/KeyPath.h>

namespace Quorvex::Velmora::Logging
{

/// The values of an event: a string and the nodes below it, in the order in which their keys were first put.
///
/// Hundreds of thousands of events can wait for a flush, which releases them all. A node takes two allocations; one of
/// a property tree would take five.
class ValueNode
{
public:
    /// Sets the text of the node at the path, creating missing nodes. If an allocation fails, nothing has changed.
    void put(KeyPath path, const std::wstring& value);

    /// @return the node at the path, or null.
    [[nodiscard]] const ValueNode* find(KeyPath path) const noexcept;

    struct Entry;
    [[nodiscard]] const std::vector<Entry>& entries() const noexcept { return children; }

    std::wstring text;

private:
    [[nodiscard]] std::size_t indexOf(std::wstring_view key) const noexcept;
    [[nodiscard]] std::vector<std::uint32_t>::const_iterator placeInOrder(std::wstring_view key) const noexcept;
    [[nodiscard]] std::vector<std::uint32_t> sortedOrder() const;
    void add(Entry entry);
    void addToOrder(std::wstring_view key);

    std::vector<Entry> children;
    // The indices of the entries, sorted by key, once there are too many to search one by one.
    std::vector<std::uint32_t> order;
};

struct ValueNode::Entry {
    std::wstring key;
    ValueNode node;
};

} // namespace Quorvex::Velmora::Logging
