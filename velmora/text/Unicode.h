// Conversions between wchar_t (32 bits on Linux, 16 on Windows), UTF-16 and UTF-8. None depends on the process's
// locale. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::Common::Unicode
{

constexpr char32_t ReplacementCharacter = 0xFFFD;

constexpr bool isSurrogate(char32_t c) noexcept { return c >= 0xD800 && c <= 0xDFFF; }
constexpr bool isHighSurrogate(char32_t c) noexcept { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t c) noexcept { return c >= 0xDC00 && c <= 0xDFFF; }

constexpr char32_t combineSurrogates(char32_t high, char32_t low) noexcept
{
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// Returns the code point at `position`, which must be less than `text.size()`, and moves `position` after it. An
/// unpaired surrogate is returned as it is.
template <class Char>
constexpr char32_t nextCodePoint(std::basic_string_view<Char> text, std::size_t& position) noexcept
{
    static_assert(sizeof(Char) == 2 || sizeof(Char) == 4);
    if constexpr (sizeof(Char) == 2) {
        const char32_t first = static_cast<char16_t>(text[position++]);
        if (isHighSurrogate(first) && position < text.size()) {
            const char32_t second = static_cast<char16_t>(text[position]);
            if (isLowSurrogate(second)) {
                ++position;
                return combineSurrogates(first, second);
            }
        }
        return first;
    } else {
        return static_cast<char32_t>(text[position++]);
    }
}

/// Appends a code point as one or two UTF-16 code units. A surrogate is appended as it is, so that unpaired ones
/// survive; a value beyond U+10FFFF becomes the replacement character.
template <class String>
void appendUtf16(String& target, char32_t c)
{
    using Unit = typename String::value_type;
    if (c > 0x10FFFF)
        c = ReplacementCharacter;
    if (c < 0x10000) {
        target.push_back(static_cast<Unit>(c));
    } else {
        target.push_back(static_cast<Unit>(0xD800 + ((c - 0x10000) >> 10)));
        target.push_back(static_cast<Unit>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    }
}

/// Appends a code point as one or two wide characters.
inline void appendWide(std::wstring& target, char32_t c)
{
    if constexpr (sizeof(wchar_t) == 2)
        appendUtf16(target, c);
    else
        target.push_back(static_cast<wchar_t>(c));
}

/// Appends a code point, which must be neither a surrogate nor beyond U+10FFFF.
inline void appendUtf8(std::string& target, char32_t c)
{
    const auto put = [&target](
                         char32_t byte) { target.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

/// Returns a wide string as UTF-8, or nothing if it has an unpaired surrogate or a value beyond U+10FFFF.
inline std::optional<std::string> toUtf8Strict(std::wstring_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const char32_t c = nextCodePoint(text, i);
        if (isSurrogate(c) || c > 0x10FFFF)
            return std::nullopt;
        appendUtf8(result, c);
    }
    return result;
}

/// Returns a wide string as UTF-8. A value without a UTF-8 form becomes the replacement character.
inline std::string toUtf8(std::wstring_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const char32_t c = nextCodePoint(text, i);
        appendUtf8(result, isSurrogate(c) || c > 0x10FFFF ? ReplacementCharacter : c);
    }
    return result;
}

/// Returns a UTF-8 string as a wide string. Every byte outside a valid sequence becomes one replacement character.
inline std::wstring fromUtf8(std::string_view text)
{
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const auto byteAt = [&text](std::size_t k) { return static_cast<std::uint8_t>(text[k]); };
        const std::uint8_t lead = byteAt(i);
        const std::size_t length = lead < 0x80                   ? 1
                                   : lead >= 0xC2 && lead < 0xE0 ? 2
                                   : lead >= 0xE0 && lead < 0xF0 ? 3
                                   : lead >= 0xF0 && lead < 0xF5 ? 4
                                                                 : 0;
        char32_t c = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        bool valid = length != 0 && length <= text.size() - i;
        for (std::size_t k = 1; valid && k < length; ++k) {
            valid = (byteAt(i + k) & 0xC0) == 0x80;
            c = (c << 6) | (byteAt(i + k) & 0x3FU);
        }
        const bool overlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
        if (!valid || overlong || isSurrogate(c) || c > 0x10FFFF) {
            appendWide(result, ReplacementCharacter);
            ++i;
        } else {
            appendWide(result, c);
            i += length;
        }
    }
    return result;
}

/// Returns a string of code units of one kind with those of another.
template <class To, class From>
To convertUnits(From text, void (*append)(To&, char32_t))
{
    To result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();)
        append(result, nextCodePoint(text, i));
    return result;
}

/// Returns a wide string as UTF-16. Unpaired surrogates survive.
inline std::u16string toUtf16(std::wstring_view text) { return convertUnits<std::u16string>(text, appendUtf16); }

/// Returns UTF-16 as a wide string. Where wchar_t has 32 bits, a pair becomes one character; unpaired surrogates
/// survive.
inline std::wstring fromUtf16(std::u16string_view text) { return convertUnits<std::wstring>(text, appendWide); }

} // namespace Quorvex::Velmora::Common::Unicode
