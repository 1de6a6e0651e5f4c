// Converts wchar_t to UTF-16, eight characters at a time where the processor can: long lists of keys cross the
// boundary. Internal.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include <velmora/text/Unicode.h>

#if defined(__SSE2__) || defined(_M_X64)
#define VELMORA_NARROW_SSE2 1
#include <emmintrin.h>
#endif

namespace Quorvex::Velmora::Common
{

/// Returns the largest number of UTF-16 code units that a string of so many characters can need.
constexpr std::size_t mostUnits(std::size_t characters) noexcept
{
    return sizeof(wchar_t) == sizeof(char16_t) ? characters : 2 * characters;
}

/// Writes code units to memory, with the interface of a string.
struct UnitWriter {
    using value_type = char16_t;

    void push_back(char16_t unit) noexcept { *position++ = unit; }

    char16_t* position;
};

#if defined(VELMORA_NARROW_SSE2)
/// Writes eight characters. Returns false, and nothing is written, if one of them is beyond the basic plane.
inline bool narrowEight(const wchar_t* source, char16_t* target) noexcept
{
    const auto* const characters = reinterpret_cast<const __m128i*>(source);
    const __m128i low = _mm_loadu_si128(characters);
    const __m128i high = _mm_loadu_si128(characters + 1);
    const __m128i beyond = _mm_srli_epi32(_mm_or_si128(low, high), 16);
    if (_mm_movemask_epi8(_mm_cmpeq_epi32(beyond, _mm_setzero_si128())) != 0xFFFF)
        return false;
    // The lower halves are sign-extended, because the packing instruction saturates signed values.
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target),
        _mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(low, 16), 16), _mm_srai_epi32(_mm_slli_epi32(high, 16), 16)));
    return true;
}
#endif

/// Writes the beginning of a string as UTF-16, as far as it has no character beyond the basic plane and vector
/// instructions can do it. Nothing is read from `target`, which may have any alignment.
///
/// @return the number of characters, and units, that were written.
inline std::size_t narrowSimple([[maybe_unused]] std::wstring_view source, [[maybe_unused]] char16_t* target) noexcept
{
    std::size_t position = 0;
#if defined(VELMORA_NARROW_SSE2)
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        if (!source.empty())
            std::memcpy(static_cast<void*>(target), source.data(), source.size() * sizeof(char16_t));
        return source.size();
    }
    for (; source.size() - position >= 8; position += 8) {
        if (!narrowEight(source.data() + position, target + position))
            return position;
    }
    // The rest of a longer string is written in one step, together with some characters before it.
    const std::size_t rest = source.size() - 8;
    if (position >= 8 && position < source.size() && narrowEight(source.data() + rest, target + rest))
        return source.size();
#endif
    return position;
}

/// Writes a string as UTF-16 and returns the number of code units. A character beyond the basic plane becomes a pair;
/// unpaired surrogates survive.
inline std::size_t narrow(std::wstring_view source, char16_t* target) noexcept
{
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        std::memcpy(target, source.data(), source.size() * sizeof(char16_t));
        return source.size();
    } else {
        std::size_t position = narrowSimple(source, target);
        UnitWriter writer{target + position};
        while (position < source.size())
            Unicode::appendUtf16(writer, Unicode::nextCodePoint(source, position));
        return static_cast<std::size_t>(writer.position - target);
    }
}

} // namespace Quorvex::Velmora::Common
