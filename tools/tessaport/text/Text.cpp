#include "tools/tessaport/text/Text.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace Quorvex::Velmora::Tool
{

std::string asciiLower(std::string_view text)
{
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

std::size_t characterCount(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::optional<std::int64_t> toNumber(std::string_view text)
{
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end && !text.empty() ? std::optional(number) : std::nullopt;
}

std::string counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

} // namespace Quorvex::Velmora::Tool
