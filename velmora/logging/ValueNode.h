// The values of an event.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::Velmora::Logging
{

/// A text and the nodes below it, in the order in which their keys were first put. Events wait for their flush by the
/// hundred thousand, and a flush releases them: a node has two allocations where a property tree's has five.
class ValueNode
{
public:
    /// The node at the key, made where it is missing.
    /// @throws std::invalid_argument for a key of more than MaximumDepth levels.
    ValueNode& at(const std::wstring& key);

    /// The node at the key, or null.
    [[nodiscard]] const ValueNode* find(const std::wstring& key) const noexcept;

    struct Entry;
    [[nodiscard]] const std::vector<Entry>& entries() const noexcept { return m_entries; }

    std::wstring text;

private:
    [[nodiscard]] std::size_t indexOf(std::wstring_view key) const noexcept;
    [[nodiscard]] std::vector<std::uint32_t>::const_iterator placeInOrder(std::wstring_view key) const noexcept;
    std::size_t add(std::wstring_view key);

    std::vector<Entry> m_entries;
    // The entries' indices sorted by key, once there are too many to look through.
    std::vector<std::uint32_t> m_order;
};

struct ValueNode::Entry {
    std::wstring key;
    ValueNode node;
};

} // namespace Quorvex::Velmora::Logging
