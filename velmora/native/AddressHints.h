// Finds where web addresses may begin, 64 characters at a time where the processor can. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#if defined(__SSE2__) || defined(_M_X64)
#define VELMORA_HINTS_SSE2 1
#include <emmintrin.h>
#endif

namespace Quorvex::Velmora::TessaportAPI
{

/// Finds "www" and "://" in a text, in their order.
class AddressHints
{
public:
    static constexpr std::size_t NotFound = std::wstring_view::npos;

    explicit AddressHints(std::wstring_view text) noexcept : text(text) {}

    /// Returns the first position of a hint that is not before `position`, which must not decrease from call to call.
    [[nodiscard]] std::size_t next(std::size_t position) noexcept
    {
        while (position >= block + length || (hints >> (position - block)) == 0) {
            position = position < block + length ? block + length : position;
            if (position >= text.size())
                return NotFound;
            look(position);
        }
        while (((hints >> (position - block)) & 1) == 0)
            ++position;
        return position;
    }

private:
    // A hint has three characters, so the last two of 64 are seen again.
    static constexpr std::size_t BlockLength = 62;

    void look(std::size_t position) noexcept
    {
        block = position;
#if defined(VELMORA_HINTS_SSE2)
        if (text.size() - position >= 64) {
            length = BlockLength;
            hints = hintsOf64(text.data() + position) & ((std::uint64_t{1} << BlockLength) - 1);
            return;
        }
#endif
        hints = 0;
        for (length = 0; length < BlockLength && position + length < text.size(); ++length)
            hints |= std::uint64_t{isHint(position + length)} << length;
    }

    [[nodiscard]] bool isHint(std::size_t position) const noexcept
    {
        if (text.size() - position < 3)
            return false;
        const wchar_t* const c = text.data() + position;
        return (c[0] == L'w' && c[1] == L'w' && c[2] == L'w') || (c[0] == L':' && c[1] == L'/' && c[2] == L'/');
    }

#if defined(VELMORA_HINTS_SSE2)
    /// Returns 16 characters as bytes. Those above 255 become bytes that are not characters of a hint.
    static __m128i bytesOf16(const wchar_t* characters) noexcept
    {
        const auto* const in = reinterpret_cast<const __m128i*>(characters);
        const auto load = [in](int i) { return _mm_loadu_si128(in + i); };
        if constexpr (sizeof(wchar_t) == 2)
            return _mm_packus_epi16(load(0), load(1));
        else
            return _mm_packus_epi16(_mm_packs_epi32(load(0), load(1)), _mm_packs_epi32(load(2), load(3)));
    }

    static std::uint64_t hintsOf64(const wchar_t* characters) noexcept
    {
        std::uint64_t w = 0;
        std::uint64_t colon = 0;
        std::uint64_t slash = 0;
        for (int i = 0; i < 4; ++i) {
            const __m128i bytes = bytesOf16(characters + 16 * i);
            const auto placesOf = [bytes, i](char c) {
                const auto found = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(c))));
                return std::uint64_t{found} << (16 * i);
            };
            w |= placesOf('w');
            colon |= placesOf(':');
            slash |= placesOf('/');
        }
        return (w & (w >> 1) & (w >> 2)) | (colon & (slash >> 1) & (slash >> 2));
    }
#endif

    std::wstring_view text;
    // One bit for each position from `block` on.
    std::uint64_t hints = 0;
    std::size_t block = 0;
    std::size_t length = 0;
};

} // namespace Quorvex::Velmora::TessaportAPI
