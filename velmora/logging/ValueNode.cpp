#include "velmora/logging/ValueNode.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace Quorvex::Velmora::Logging
{
namespace
{

constexpr std::size_t ManyEntries = 32;

// Most events have several values.
constexpr std::size_t FirstCapacity = 4;

/// Ensures that the next push_back() cannot fail.
template <class Element>
void reserveOneMore(std::vector<Element>& elements)
{
    if (elements.size() == elements.capacity())
        elements.reserve(std::max(FirstCapacity, 2 * elements.size()));
}

} // namespace

void ValueNode::put(KeyPath path, const std::wstring& value)
{
    ValueNode* node = this;
    while (!path.done()) {
        const std::wstring_view key = path.next();
        const std::size_t index = node->indexOf(key);
        if (index == node->children.size()) {
            Entry entry{std::wstring(key), {}};
            entry.node.put(path, value);
            node->add(std::move(entry));
            return;
        }
        node = &node->children[index].node;
    }
    node->text = value;
}

const ValueNode* ValueNode::find(KeyPath path) const noexcept
{
    const ValueNode* node = this;
    while (!path.done()) {
        const std::size_t index = node->indexOf(path.next());
        if (index == node->children.size())
            return nullptr;
        node = &node->children[index].node;
    }
    return node;
}

/// @return the number of entries if none has the key.
std::size_t ValueNode::indexOf(std::wstring_view key) const noexcept
{
    if (!order.empty()) {
        const auto place = placeInOrder(key);
        return place != order.end() && children[*place].key == key ? *place : children.size();
    }
    const auto found =
        std::find_if(children.begin(), children.end(), [key](const Entry& entry) { return entry.key == key; });
    return static_cast<std::size_t>(found - children.begin());
}

std::vector<std::uint32_t>::const_iterator ValueNode::placeInOrder(std::wstring_view key) const noexcept
{
    return std::lower_bound(order.begin(), order.end(), key,
        [this](std::uint32_t index, std::wstring_view wanted) { return children[index].key < wanted; });
}

std::vector<std::uint32_t> ValueNode::sortedOrder() const
{
    std::vector<std::uint32_t> sorted(children.size());
    std::iota(sorted.begin(), sorted.end(), 0U);
    std::sort(sorted.begin(), sorted.end(),
        [this](std::uint32_t left, std::uint32_t right) { return children[left].key < children[right].key; });
    return sorted;
}

// Whatever can fail comes before the first change that shows.
void ValueNode::add(Entry entry)
{
    reserveOneMore(children);
    addToOrder(entry.key);
    children.push_back(std::move(entry));
}

void ValueNode::addToOrder(std::wstring_view key)
{
    if (children.size() < ManyEntries)
        return;
    if (order.empty())
        order = sortedOrder();
    order.insert(placeInOrder(key), static_cast<std::uint32_t>(children.size()));
}

} // namespace Quorvex::Velmora::Logging
