#include "velmora/logging/ValueNode.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace Quorvex::Velmora::Logging
{
namespace
{

constexpr std::size_t ManyEntries = 32;

/// Ensures that the next push_back() cannot fail. Doubles the capacity, as a vector does by itself.
template <class Element>
void reserveOneMore(std::vector<Element>& elements)
{
    if (elements.size() == elements.capacity())
        elements.reserve(std::max<std::size_t>(1, 2 * elements.size()));
}

} // namespace

void ValueNode::put(KeyPath path, const std::wstring& value)
{
    ValueNode* node = this;
    while (!path.done()) {
        const std::wstring_view key = path.next();
        const std::size_t index = node->indexOf(key);
        if (index == node->m_entries.size()) {
            Entry entry{std::wstring(key), {}};
            entry.node.put(path, value);
            node->add(std::move(entry));
            return;
        }
        node = &node->m_entries[index].node;
    }
    node->text = value;
}

const ValueNode* ValueNode::find(KeyPath path) const noexcept
{
    const ValueNode* node = this;
    while (!path.done()) {
        const std::size_t index = node->indexOf(path.next());
        if (index == node->m_entries.size())
            return nullptr;
        node = &node->m_entries[index].node;
    }
    return node;
}

/// @return the number of entries if none has the key.
std::size_t ValueNode::indexOf(std::wstring_view key) const noexcept
{
    if (!m_order.empty()) {
        const auto place = placeInOrder(key);
        return place != m_order.end() && m_entries[*place].key == key ? *place : m_entries.size();
    }
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [key](const Entry& entry) { return entry.key == key; });
    return static_cast<std::size_t>(found - m_entries.begin());
}

std::vector<std::uint32_t>::const_iterator ValueNode::placeInOrder(std::wstring_view key) const noexcept
{
    return std::lower_bound(m_order.begin(), m_order.end(), key,
        [this](std::uint32_t index, std::wstring_view wanted) { return m_entries[index].key < wanted; });
}

std::vector<std::uint32_t> ValueNode::sortedOrder() const
{
    std::vector<std::uint32_t> order(m_entries.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(),
        [this](std::uint32_t left, std::uint32_t right) { return m_entries[left].key < m_entries[right].key; });
    return order;
}

// Whatever can fail comes before the first change that shows.
void ValueNode::add(Entry entry)
{
    reserveOneMore(m_entries);
    addToOrder(entry.key);
    m_entries.push_back(std::move(entry));
}

void ValueNode::addToOrder(std::wstring_view key)
{
    if (m_entries.size() < ManyEntries)
        return;
    if (m_order.empty())
        m_order = sortedOrder();
    m_order.insert(placeInOrder(key), static_cast<std::uint32_t>(m_entries.size()));
}

} // namespace Quorvex::Velmora::Logging
