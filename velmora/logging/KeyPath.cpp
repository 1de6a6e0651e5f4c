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
    const std::wstring_view level = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    --levelsLeft;
    return level;
}

std::size_t KeyPath::endOfLevel() const noexcept
{
    if (levelsLeft > 1)
        return std::min(rest.find(Separator), rest.size());
    return rest.back() == Separator ? rest.size() - 1 : rest.size();
}

} // namespace Quorvex::Velmora::Logging
