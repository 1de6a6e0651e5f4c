#include "velmora/logging/ValueNode.h"

#include <algorithm>
#include <numeric>

#include <velmora/logging/KeyPath.h>

namespace Quorvex::Velmora::Logging
{
namespace
{

constexpr std::size_t ManyEntries = 32;

} // namespace

ValueNode& ValueNode::at(const std::wstring& key)
{
    refuseTooDeep(key);
    ValueNode* node = this;
    for (KeyPath path(key); !path.done();) {
        const std::wstring_view part = path.next();
        std::size_t index = node->indexOf(part);
        if (index == node->m_entries.size())
            index = node->add(part);
        node = &node->m_entries[index].node;
    }
    return *node;
}

const ValueNode* ValueNode::find(const std::wstring& key) const noexcept
{
    const ValueNode* node = this;
    for (KeyPath path(key); !path.done();) {
        const std::size_t index = node->indexOf(path.next());
        if (index == node->m_entries.size())
            return nullptr;
        node = &node->m_entries[index].node;
    }
    return node;
}

/// The number of entries when there is none with the key.
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

std::size_t ValueNode::add(std::wstring_view key)
{
    const auto index = static_cast<std::uint32_t>(m_entries.size());
    m_entries.push_back({std::wstring(key), {}});
    if (!m_order.empty()) {
        m_order.insert(placeInOrder(key), index);
    } else if (m_entries.size() > ManyEntries) {
        m_order.resize(m_entries.size());
        std::iota(m_order.begin(), m_order.end(), 0U);
        std::sort(m_order.begin(), m_order.end(),
            [this](std::uint32_t left, std::uint32_t right) { return m_entries[left].key < m_entries[right].key; });
    }
    return index;
}

} // namespace Quorvex::Velmora::Logging
