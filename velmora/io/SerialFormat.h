// The bytes of the serial format, for those who write and those who read it.
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

#include <velmora/text/Unicode.h>

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

/// The number of UTF-16 code units that a wide character takes; beyond U+10FFFF it becomes the replacement character.
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
            "a text of more than 4294967295 UTF-16 code units has no serial form: write it in parts");
    return static_cast<std::uint32_t>(units);
}

/// Writes the units of `text` as UTF-16LE and returns how many bytes that were. There must be room for two units a
/// character.
inline std::size_t encodeUnits(std::wstring_view text, unsigned char* target) noexcept
{
    const auto put = [](unsigned char* at, char32_t unit) {
        at[0] = static_cast<unsigned char>(unit);
        at[1] = static_cast<unsigned char>(unit >> 8);
    };
    char32_t allBits = 0;
    for (const wchar_t wide : text)
        allBits |= static_cast<char32_t>(wide);
    if (allBits < 0x10000) {
        for (std::size_t i = 0; i < text.size(); ++i)
            put(target + 2 * i, static_cast<char32_t>(text[i]));
        return 2 * text.size();
    }
    unsigned char* end = target;
    for (const wchar_t wide : text) {
        auto c = static_cast<char32_t>(wide);
        if (c > 0x10FFFF)
            c = Common::Unicode::ReplacementCharacter;
        if (c < 0x10000) {
            put(end, c);
            end += 2;
        } else {
            put(end, 0xD800 + ((c - 0x10000) >> 10));
            put(end + 2, 0xDC00 + ((c - 0x10000) & 0x3FF));
            end += 4;
        }
    }
    return static_cast<std::size_t>(end - target);
}

/// Hands the bytes of a text to `put(const void*, std::size_t)`, count first, in pieces that need no memory of the
/// text's size.
template <class Put>
void encodeString(std::wstring_view text, Put put)
{
    constexpr std::size_t PieceCharacters = 1024;
    const auto count = encode(countUnits(text));
    put(count.data(), count.size());
    std::array<unsigned char, PieceCharacters * 4> piece;
    for (std::size_t i = 0; i < text.size(); i += PieceCharacters)
        put(piece.data(), encodeUnits(text.substr(i, PieceCharacters), piece.data()));
}

/// Puts a wide text together from pieces of UTF-16LE.
class UnitDecoder
{
public:
    explicit UnitDecoder(std::wstring& target) noexcept : m_target(target) {}

    void append(const unsigned char* bytes, std::size_t units)
    {
        const std::size_t start = m_target.size();
        m_target.resize(start + units);
        wchar_t* out = m_target.data() + start;
        unsigned surrogates = 0;
        for (std::size_t i = 0; i < units; ++i) {
            const unsigned unit = bytes[2 * i] | (static_cast<unsigned>(bytes[2 * i + 1]) << 8);
            surrogates |= static_cast<unsigned>(Common::Unicode::isSurrogate(unit));
            out[i] = static_cast<wchar_t>(unit);
        }
        if (sizeof(wchar_t) > 2 && surrogates != 0)
            joinPairs(start);
    }

private:
    // Starts one character early: the high half of a pair may have ended the piece before.
    void joinPairs(std::size_t start)
    {
        namespace Unicode = Common::Unicode;
        std::size_t end = start == 0 ? 0 : start - 1;
        for (std::size_t i = end; i < m_target.size(); ++i) {
            auto c = static_cast<char32_t>(m_target[i]);
            if (Unicode::isHighSurrogate(c) && i + 1 < m_target.size()) {
                const auto low = static_cast<char32_t>(m_target[i + 1]);
                if (Unicode::isLowSurrogate(low)) {
                    c = Unicode::combineSurrogates(c, low);
                    ++i;
                }
            }
            m_target[end++] = static_cast<wchar_t>(c);
        }
        m_target.resize(end);
    }

    std::wstring& m_target;
};

} // namespace Quorvex::Velmora::IO::SerialFormat
