// Encodes and decodes the values of the serial format.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

#include <velmora/text/Narrowing.h>
#include <velmora/text/Unicode.h>
#include <velmora/text/Widening.h>

namespace Quorvex::Velmora::IO::SerialFormat
{

static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == 8);

template <class Unsigned>
constexpr auto encode(Unsigned value) noexcept
{
    std::array<unsigned char, sizeof(Unsigned)> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(value >> (8 * i));
    return bytes;
}

inline auto encodeDouble(double value) noexcept
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return encode(bits);
}

template <class Unsigned>
constexpr Unsigned decode(const std::array<unsigned char, sizeof(Unsigned)>& bytes) noexcept
{
    Unsigned value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        value = static_cast<Unsigned>(value | (static_cast<Unsigned>(bytes[i]) << (8 * i)));
    return value;
}

inline double decodeDouble(const std::array<unsigned char, 8>& bytes) noexcept
{
    const auto bits = decode<std::uint64_t>(bytes);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// @return the number of UTF-16 code units of a wide character. One beyond U+10FFFF becomes the replacement character.
constexpr std::size_t unitsOf(wchar_t c) noexcept
{
    const auto code = static_cast<char32_t>(c);
    return code >= 0x10000 && code <= 0x10FFFF ? 2 : 1;
}

inline std::uint32_t countUnits(std::wstring_view text)
{
    std::size_t units = text.size();
    if constexpr (sizeof(wchar_t) > 2) {
        for (const wchar_t c : text)
            units += unitsOf(c) - 1;
    }
    if (units > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error(
            "A string of more than 4294967295 UTF-16 code units has no serial form. Write it in parts.");
    return static_cast<std::uint32_t>(units);
}

inline void putUnit(unsigned char* target, char16_t unit) noexcept
{
    target[0] = static_cast<unsigned char>(unit);
    target[1] = static_cast<unsigned char>(unit >> 8);
}

inline unsigned unitAt(const unsigned char* bytes) noexcept
{
    return bytes[0] | (static_cast<unsigned>(bytes[1]) << 8);
}

/// Takes UTF-16 code units as a string does, and writes them as UTF-16LE.
class UnitWriter
{
public:
    using value_type = char16_t;

    explicit UnitWriter(unsigned char* target) noexcept : position(target) {}

    void push_back(char16_t unit) noexcept
    {
        putUnit(position, unit);
        position += 2;
    }

    [[nodiscard]] const unsigned char* end() const noexcept { return position; }

private:
    unsigned char* position;
};

/// The most bytes that a string of so many characters can take.
constexpr std::size_t mostBytes(std::size_t characters) noexcept { return 2 * Common::mostUnits(characters); }

/// encodeUnits() without vector instructions.
inline std::size_t encodeEachUnit(std::wstring_view text, unsigned char* target) noexcept
{
    char32_t allBits = 0;
    for (const wchar_t wide : text)
        allBits |= static_cast<char32_t>(wide);
    if (allBits < 0x10000) {
        for (std::size_t i = 0; i < text.size(); ++i)
            putUnit(target + 2 * i, static_cast<char16_t>(text[i]));
        return 2 * text.size();
    }
    UnitWriter writer(target);
    for (const wchar_t wide : text)
        Common::Unicode::appendUtf16(writer, static_cast<char32_t>(wide));
    return static_cast<std::size_t>(writer.end() - target);
}

/// Writes a string as UTF-16LE.
///
/// @param target  has room for mostBytes().
/// @return the number of bytes written.
inline std::size_t encodeUnits(std::wstring_view text, unsigned char* target) noexcept
{
    // Only processors that are little-endian have these vector instructions.
    const std::size_t simple = Common::narrowSimple(text, reinterpret_cast<char16_t*>(target));
    text.remove_prefix(simple);
    return 2 * simple + encodeEachUnit(text, target + 2 * simple);
}

/// Passes the bytes of a string to `put(const void*, std::size_t)`, count first, in pieces of limited size.
template <class Put>
void encodeString(std::wstring_view text, Put put)
{
    constexpr std::size_t PieceCharacters = 1024;
    const auto count = encode(countUnits(text));
    put(count.data(), count.size());
    std::array<unsigned char, mostBytes(PieceCharacters)> piece;
    for (std::size_t i = 0; i < text.size(); i += PieceCharacters)
        put(piece.data(), encodeUnits(text.substr(i, PieceCharacters), piece.data()));
}

/// Fills a string with as many units of UTF-16LE. Returns false, and the string is not complete, if it would take a
/// closer look at one of them.
inline bool decodeSimple(const unsigned char* bytes, std::wstring& target) noexcept
{
    const std::size_t count = target.size();
    std::size_t position = Common::widenSimple({reinterpret_cast<const char16_t*>(bytes), count}, target.data());
    for (; position < count; ++position) {
        const unsigned unit = unitAt(bytes + 2 * position);
        if (Common::Unicode::isSurrogate(unit))
            return false;
        target[position] = static_cast<wchar_t>(unit);
    }
    return true;
}

/// Appends pieces of UTF-16LE to a wide string.
class UnitDecoder
{
public:
    explicit UnitDecoder(std::wstring& target) noexcept : target(target) {}

    void append(const unsigned char* bytes, std::size_t units)
    {
        const std::size_t start = target.size();
        target.resize(start + units);
        wchar_t* out = target.data() + start;
        unsigned surrogates = 0;
        for (std::size_t i = 0; i < units; ++i) {
            const unsigned unit = unitAt(bytes + 2 * i);
            surrogates |= static_cast<unsigned>(Common::Unicode::isSurrogate(unit));
            out[i] = static_cast<wchar_t>(unit);
        }
        if (sizeof(wchar_t) > 2 && surrogates != 0)
            joinPairs(start);
    }

private:
    // Starts one character early: the previous piece may have ended with the first half of a pair.
    void joinPairs(std::size_t start)
    {
        namespace Unicode = Common::Unicode;
        std::size_t end = start == 0 ? 0 : start - 1;
        for (std::size_t i = end; i < target.size(); ++i) {
            auto c = static_cast<char32_t>(target[i]);
            if (Unicode::isHighSurrogate(c) && i + 1 < target.size()) {
                const auto low = static_cast<char32_t>(target[i + 1]);
                if (Unicode::isLowSurrogate(low)) {
                    c = Unicode::combineSurrogates(c, low);
                    ++i;
                }
            }
            target[end++] = static_cast<wchar_t>(c);
        }
        target.resize(end);
    }

    std::wstring& target;
};

} // namespace Quorvex::Velmora::IO::SerialFormat
