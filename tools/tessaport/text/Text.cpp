#include "tools/tessaport/text/Text.h"

#include <algorithm>

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

std::string printable(std::string_view text)
{
    std::string result(text);
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto byte = static_cast<unsigned char>(result[i]);
        if (byte < 0x20 || byte == 0x7F)
            result[i] = '?';
        // U+0080 to U+009F, which terminals obey, too.
        if (byte == 0xC2 && i + 1 < result.size() && static_cast<unsigned char>(result[i + 1]) < 0xA0)
            result.replace(i, 2, "?");
    }
    return result;
}

std::size_t characterCount(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

} // namespace Quorvex::Velmora::Tool
