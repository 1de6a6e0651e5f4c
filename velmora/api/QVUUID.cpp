#include "velmora/api/QVUUID.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>

#include <velmora/platform/Random.h>

namespace Quorvex::Velmora::Common
{
namespace
{

constexpr std::size_t TextLength = 36;

constexpr bool isHyphenPosition(std::size_t position) noexcept
{
    return position == 8 || position == 13 || position == 18 || position == 23;
}

std::optional<unsigned> hexDigit(char c) noexcept
{
    if (c >= '0' && c <= '9')
        return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f')
        return static_cast<unsigned>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F')
        return static_cast<unsigned>(c - 'A' + 10);
    return std::nullopt;
}

std::string_view withoutBraces(std::string_view text) noexcept
{
    if (text.size() == TextLength + 2 && text.front() == '{' && text.back() == '}')
        return text.substr(1, TextLength);
    return text;
}

bool parse(std::string_view text, std::array<std::uint8_t, 16>& bytes) noexcept
{
    text = withoutBraces(text);
    if (text.size() != TextLength)
        return false;
    std::size_t digits = 0;
    for (std::size_t i = 0; i < TextLength; ++i) {
        if (isHyphenPosition(i)) {
            if (text[i] != '-')
                return false;
            continue;
        }
        const auto digit = hexDigit(text[i]);
        if (!digit)
            return false;
        std::uint8_t& target = bytes[digits / 2];
        target = static_cast<std::uint8_t>(digits % 2 == 0 ? *digit << 4 : target | *digit);
        ++digits;
    }
    return true;
}

std::array<char, TextLength + 1> format(const std::array<std::uint8_t, 16>& bytes) noexcept
{
    constexpr char Digits[] = "0123456789abcdef";
    std::array<char, TextLength + 1> text{};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < TextLength; ++i) {
        if (isHyphenPosition(i)) {
            text[i] = '-';
            continue;
        }
        const std::uint8_t byte = bytes[digits / 2];
        text[i] = Digits[digits % 2 == 0 ? byte >> 4 : byte & 0xF];
        ++digits;
    }
    return text;
}

} // namespace

QVUUID::QVUUID() noexcept : valid(true)
{
    const std::array<std::uint64_t, 2> random = randomBits();
    std::memcpy(bytes.data(), random.data(), bytes.size());
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
}

QVUUID::QVUUID(const char* text) noexcept : bytes(), valid(text != nullptr && parse(text, bytes))
{
    if (!valid)
        bytes.fill(0);
}

QVString QVUUID::getString() const { return valid ? QVString(format(bytes).data()) : QVString(); }

std::wstring QVUUID::getWString() const { return getString().w_str(); }

bool QVUUID::isNil() const noexcept
{
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

} // namespace Quorvex::Velmora::Common
