#include "tools/tessaport/text/Duration.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Quorvex::Velmora::Tool
{
namespace
{

using std::chrono::milliseconds;

struct Unit {
    std::string_view name;
    milliseconds length;
};

constexpr std::array<Unit, 3> Units{{
    {"min", std::chrono::minutes(1)},
    {"s", std::chrono::seconds(1)},
    {"ms", milliseconds(1)},
}};

constexpr milliseconds Longest = std::chrono::hours(24);

} // namespace

std::optional<milliseconds> parseDuration(std::string_view text)
{
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc())
        return std::nullopt;
    std::string_view name = text.substr(static_cast<std::size_t>(end - text.data()));
    name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
    for (const Unit& unit : Units) {
        if (name == unit.name)
            return number <= static_cast<unsigned long long>(Longest / unit.length)
                       ? std::optional(number * unit.length)
                       : std::nullopt;
    }
    return std::nullopt;
}

std::string toText(milliseconds duration)
{
    for (const Unit& unit : Units) {
        if (duration % unit.length == milliseconds::zero())
            return std::to_string(duration / unit.length) + std::string(unit.name);
    }
    return {};
}

} // namespace Quorvex::Velmora::Tool
