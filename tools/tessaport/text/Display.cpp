#include "tools/tessaport/text/Display.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace Quorvex::Velmora::Tool
{
namespace
{

struct Range {
    char32_t first;
    char32_t last;
};

// Controls, format characters and fillers that show nothing of themselves, in order.
constexpr Range Unsafe[] = {
    {0x00, 0x1F},
    {0x7F, 0x9F},
    {0xAD, 0xAD},
    {0x34F, 0x34F},
    {0x61C, 0x61C},
    {0x115F, 0x1160},
    {0x17B4, 0x17B5},
    {0x180B, 0x180F},
    {0x200B, 0x200F},
    {0x2028, 0x202E},
    {0x2060, 0x206F},
    {0x3164, 0x3164},
    {0xFEFF, 0xFEFF},
    {0xFFA0, 0xFFA0},
    {0xFFF0, 0xFFFB},
    {0x1BCA0, 0x1BCA3},
    {0x1D173, 0x1D17A},
    {0xE0000, 0xE0FFF},
};

bool isUnsafe(char32_t character)
{
    const auto* const range = std::lower_bound(std::begin(Unsafe), std::end(Unsafe), character,
        [](const Range& candidate, char32_t wanted) { return candidate.last < wanted; });
    return range != std::end(Unsafe) && range->first <= character;
}

struct Character {
    char32_t value;
    std::size_t size;
    bool isValid;
};

std::size_t sizeByFirstByte(unsigned char byte)
{
    if (byte < 0x80)
        return 1;
    if (byte >= 0xC2 && byte < 0xE0)
        return 2;
    if (byte >= 0xE0 && byte < 0xF0)
        return 3;
    return byte >= 0xF0 && byte < 0xF5 ? 4 : 0;
}

bool isInRangeOfSize(char32_t value, std::size_t size)
{
    if (size == 3)
        return value >= 0x800 && (value < 0xD800 || value > 0xDFFF);
    return size != 4 || (value >= 0x10000 && value <= 0x10FFFF);
}

// A byte that begins no character is one by itself, and not valid.
Character characterAt(std::string_view text, std::size_t position)
{
    const auto first = static_cast<unsigned char>(text[position]);
    const std::size_t size = sizeByFirstByte(first);
    if (size == 1)
        return {first, 1, true};
    if (size == 0 || text.size() - position < size)
        return {first, 1, false};
    char32_t value = first & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        const auto next = static_cast<unsigned char>(text[position + i]);
        if ((next & 0xC0U) != 0x80)
            return {first, 1, false};
        value = value << 6U | (next & 0x3FU);
    }
    return isInRangeOfSize(value, size) ? Character{value, size, true} : Character{first, 1, false};
}

bool isPlainAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

/// Copies the text, with what `replace` returns in the place of the characters that it returns something for.
template <class Replace>
std::string replaced(std::string_view text, Replace replace)
{
    if (isPlainAscii(text))
        return std::string(text);
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const Character character = characterAt(text, i);
        const std::string replacement = replace(character);
        result += replacement.empty() ? text.substr(i, character.size) : replacement;
        i += character.size;
    }
    return result;
}

std::string escape(unsigned unit)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "\\u%04x", unit);
    return text.data();
}

std::string escaped(char32_t character)
{
    if (character < 0x10000)
        return escape(character);
    const auto offset = static_cast<std::uint32_t>(character - 0x10000);
    return escape(0xD800 + (offset >> 10U)) + escape(0xDC00 + (offset & 0x3FFU));
}

bool isControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

} // namespace

std::string asOneLine(std::string_view text)
{
    return replaced(text, [](const Character& character) -> std::string {
        return character.isValid && isControl(character.value) ? "?" : "";
    });
}

std::string joinedLines(std::string_view text)
{
    std::string result(text);
    std::replace_if(
        result.begin(), result.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return result;
}

std::string safeForTerminal(std::string_view text)
{
    return replaced(text, [](const Character& character) -> std::string {
        if (character.value == '\n' || character.value == '\t')
            return "";
        return !character.isValid || isUnsafe(character.value) ? "?" : "";
    });
}

// Below U+0020 there is only white space between the values: inside strings the writer has escaped it.
std::string safeJson(std::string_view json)
{
    return replaced(json, [](const Character& character) {
        return character.value >= 0x7F && character.isValid && isUnsafe(character.value) ? escaped(character.value)
                                                                                         : std::string();
    });
}

} // namespace Quorvex::Velmora::Tool
