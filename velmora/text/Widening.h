// Converts UTF-16 to wchar_t, eight characters at a time where the processor can: a listing consists mostly of strings.
// Internal.
#pragma once

#include <cstddef>
#include <string_view>

#include <velmora/text/Unicode.h>

#if defined(__SSE2__) || defined(_M_X64)
#define VELMORA_WIDEN_SSE2 1
#include <emmintrin.h>
#endif

namespace Quorvex::Velmora::Common
{

#if defined(VELMORA_WIDEN_SSE2)
/// Writes eight characters. Returns false, and nothing is written, if one of them is zero, or a surrogate where a pair
/// becomes one character.
inline bool widenEight(const char16_t* source, wchar_t* target) noexcept
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
    const __m128i zeros = _mm_cmpeq_epi16(units, zero);
    auto* const out = reinterpret_cast<__m128i*>(target);
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        if (_mm_movemask_epi8(zeros) != 0)
            return false;
        _mm_storeu_si128(out, units);
    } else {
        const __m128i surrogateMask = _mm_set1_epi16(static_cast<short>(0xF800));
        const __m128i surrogate = _mm_set1_epi16(static_cast<short>(0xD800));
        const __m128i surrogates = _mm_cmpeq_epi16(_mm_and_si128(units, surrogateMask), surrogate);
        if (_mm_movemask_epi8(_mm_or_si128(zeros, surrogates)) != 0)
            return false;
        _mm_storeu_si128(out, _mm_unpacklo_epi16(units, zero));
        _mm_storeu_si128(out + 1, _mm_unpackhi_epi16(units, zero));
    }
    return true;
}
#endif

/// Returns the character at `position`, which must be less than the size, and moves `position` after it.
inline wchar_t nextWide(std::u16string_view source, std::size_t& position) noexcept
{
    if constexpr (sizeof(wchar_t) == sizeof(char16_t))
        return static_cast<wchar_t>(source[position++]);
    else
        return static_cast<wchar_t>(Unicode::nextCodePoint(source, position));
}

/// Writes the beginning of a string, as far as it has neither a zero nor a surrogate that would need a closer look, and
/// vector instructions can do it. `source` may have any alignment.
///
/// @return the number of units, and characters, that were written.
inline std::size_t widenSimple([[maybe_unused]] std::u16string_view source, [[maybe_unused]] wchar_t* target) noexcept
{
    std::size_t position = 0;
#if defined(VELMORA_WIDEN_SSE2)
    for (; source.size() - position >= 8; position += 8) {
        if (!widenEight(source.data() + position, target + position))
            return position;
    }
    // The rest of a longer string is written in one step, together with some characters before it.
    const std::size_t rest = source.size() - 8;
    if (position >= 8 && position < source.size() && widenEight(source.data() + rest, target + rest))
        return source.size();
#endif
    return position;
}

/// Writes a string up to its first zero character and returns the number of characters written, at most
/// `source.size()`. Where wchar_t has 32 bits, a pair becomes one character; unpaired surrogates survive.
inline std::size_t widenToFirstZero(std::u16string_view source, wchar_t* target) noexcept
{
    std::size_t position = widenSimple(source, target);
    wchar_t* out = target + position;
    while (position < source.size() && source[position] != u'\0')
        *out++ = nextWide(source, position);
    return static_cast<std::size_t>(out - target);
}

} // namespace Quorvex::Velmora::Common
