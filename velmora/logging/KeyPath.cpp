#include "velmora/logging/KeyPath.h"

#include <algorithm>
#include <stdexcept>

namespace Quorvex::Velmora::Logging
{
namespace
{

constexpr wchar_t Separator = L'.';

} // namespace

std::wstring_view KeyPath::next() noexcept
{
    const std::size_t end = std::min(m_rest.find(Separator), m_rest.size());
    const std::wstring_view part = m_rest.substr(0, end);
    m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    return part;
}

void refuseTooDeep(const std::wstring& key)
{
    if (key.size() < MaximumDepth)
        return;
    if (std::count(key.begin(), key.end(), Separator) >= static_cast<std::ptrdiff_t>(MaximumDepth))
        throw std::invalid_argument("a key may have at most 1000 levels separated by \".\": use fewer of them");
}

} // namespace Quorvex::Velmora::Logging
