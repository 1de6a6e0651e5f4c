#include "velmora/logging/KeyPath.h"

#include <algorithm>

namespace Quorvex::Velmora::Logging
{
namespace
{

constexpr wchar_t Separator = L'.';

} // namespace

std::wstring_view KeyPath::next() noexcept
{
    const std::size_t end = endOfLevel();
    const std::wstring_view level = m_rest.substr(0, end);
    m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    --m_levelsLeft;
    return level;
}

std::size_t KeyPath::endOfLevel() const noexcept
{
    if (m_levelsLeft > 1)
        return std::min(m_rest.find(Separator), m_rest.size());
    return m_rest.back() == Separator ? m_rest.size() - 1 : m_rest.size();
}

} // namespace Quorvex::Velmora::Logging
