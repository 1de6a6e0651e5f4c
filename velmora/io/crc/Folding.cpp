// The message is a polynomial over GF(2) whose first bit is the highest power of x. Folding removes a 128-bit word and
// adds its product with x^n, reduced by the polynomial of the CRC, to the word n bits later. The remainder of the
// message does not change, so the last word has the remainder of all of them.
#include <velmora/io/crc/Crc32.h>

#if defined(__x86_64__) || defined(_M_X64)
#define VELMORA_CRC_FOLDING 1
#include <immintrin.h>
#if defined(_MSC_VER) && !defined(__clang__)
#include <intrin.h>
#endif
#endif

// These functions use instructions that the rest of the library must not need.
#if defined(_MSC_VER) && !defined(__clang__)
#define VELMORA_TARGET(features)
#else
#define VELMORA_TARGET(features) [[gnu::target(features)]]
#endif
#define VELMORA_TARGET_128 VELMORA_TARGET("pclmul,ssse3,sse4.1")
#define VELMORA_TARGET_512 VELMORA_TARGET("vpclmulqdq,pclmul,avx512f,avx512bw,avx512dq,avx512vl,ssse3,sse4.1")

namespace Quorvex::Velmora::IO::Crc32
{

#ifdef VELMORA_CRC_FOLDING

namespace
{

constexpr std::size_t WordSize = 16;
constexpr std::size_t WideSize = 64;

/// x^exponent, reduced by the polynomial of the CRC.
constexpr std::uint32_t powerOfX(unsigned exponent) noexcept
{
    std::uint32_t value = 1;
    for (unsigned i = 0; i < exponent; ++i)
        value = (value << 1) ^ ((value >> 31) != 0 ? Polynomial : 0);
    return value;
}

/// The factors that move a word by `Bytes` bytes, one for each of its halves.
template <unsigned Bytes>
struct Distance {
    static constexpr std::uint32_t Low = powerOfX(8 * Bytes);
    static constexpr std::uint32_t High = powerOfX(8 * Bytes + 64);
};

template <unsigned Bytes>
VELMORA_TARGET_128 __m128i factors() noexcept
{
    return _mm_set_epi64x(Distance<Bytes>::High, Distance<Bytes>::Low);
}

VELMORA_TARGET_128 inline __m128i reverseBytes(__m128i word) noexcept
{
    return _mm_shuffle_epi8(word, _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
}

VELMORA_TARGET_128 inline __m128i load(const unsigned char* bytes) noexcept
{
    return reverseBytes(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
}

VELMORA_TARGET_128 inline __m128i fold(__m128i word, __m128i factor, __m128i onto) noexcept
{
    const __m128i high = _mm_clmulepi64_si128(word, factor, 0x11);
    const __m128i low = _mm_clmulepi64_si128(word, factor, 0x00);
    return _mm_xor_si128(_mm_xor_si128(high, low), onto);
}

/// The register, to be added to the first four bytes of the message.
VELMORA_TARGET_128 inline __m128i asFirstWord(std::uint32_t crc) noexcept
{
    return _mm_set_epi32(static_cast<int>(crc), 0, 0, 0);
}

/// Folds the remaining words and reduces the result to the register.
VELMORA_TARGET_128 std::uint32_t finish(__m128i word, const unsigned char* bytes, std::size_t size) noexcept
{
    for (; size >= WordSize; size -= WordSize, bytes += WordSize)
        word = fold(word, factors<WordSize>(), load(bytes));
    alignas(WordSize) unsigned char remainder[WordSize];
    _mm_store_si128(reinterpret_cast<__m128i*>(remainder), reverseBytes(word));
    return updateBySlicing(updateBySlicing(0, remainder, WordSize), bytes, size);
}

// Masks that select every lane: the forms without a mask make g++ warn about its own header.
VELMORA_TARGET_512 inline __m512i inEachLane(__m128i word) noexcept
{
    return _mm512_maskz_broadcast_i32x4(0xFFFF, word);
}

template <int Lane>
VELMORA_TARGET_512 __m128i laneOf(__m512i words) noexcept
{
    return _mm512_maskz_extracti32x4_epi32(0xF, words, Lane);
}

VELMORA_TARGET_512 inline __m512i load512(const unsigned char* bytes) noexcept
{
    const __m512i order = inEachLane(_mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
    return _mm512_shuffle_epi8(_mm512_loadu_si512(bytes), order);
}

VELMORA_TARGET_512 inline __m512i fold512(__m512i words, __m512i factor, __m512i onto) noexcept
{
    constexpr int XorOfThree = 0x96;
    const __m512i high = _mm512_clmulepi64_epi128(words, factor, 0x11);
    const __m512i low = _mm512_clmulepi64_epi128(words, factor, 0x00);
    return _mm512_ternarylogic_epi64(high, low, onto, XorOfThree);
}

#if defined(_MSC_VER) && !defined(__clang__)

struct CpuFeatures {
    bool folding128 = false;
    bool folding512 = false;

    CpuFeatures() noexcept
    {
        const auto bit = [](int word, int n) { return ((static_cast<unsigned>(word) >> n) & 1) != 0; };
        int leaf[4];
        __cpuid(leaf, 0);
        const int lastLeaf = leaf[0];
        __cpuid(leaf, 1);
        folding128 = bit(leaf[2], 1) && bit(leaf[2], 9) && bit(leaf[2], 19);
        const bool savesState = bit(leaf[2], 27);
        if (lastLeaf < 7 || !savesState || (_xgetbv(0) & 0xE6) != 0xE6)
            return;
        __cpuidex(leaf, 7, 0);
        folding512 = folding128 && bit(leaf[1], 16) && bit(leaf[1], 17) && bit(leaf[1], 30) && bit(leaf[1], 31) &&
                     bit(leaf[2], 10);
    }
};

const CpuFeatures& cpuFeatures() noexcept
{
    static const CpuFeatures features;
    return features;
}

#endif

} // namespace

bool hasFolding128() noexcept
{
#if defined(_MSC_VER) && !defined(__clang__)
    return cpuFeatures().folding128;
#else
    return __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("ssse3") && __builtin_cpu_supports("sse4.1");
#endif
}

bool hasFolding512() noexcept
{
#if defined(_MSC_VER) && !defined(__clang__)
    return cpuFeatures().folding512;
#else
    return hasFolding128() && __builtin_cpu_supports("vpclmulqdq") && __builtin_cpu_supports("avx512f") &&
           __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512vl");
#endif
}

VELMORA_TARGET_128
std::uint32_t updateByFolding128(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept
{
    constexpr std::size_t Step = 4 * WordSize;
    if (size < WordSize)
        return updateBySlicing(crc, bytes, size);
    __m128i first = _mm_xor_si128(load(bytes), asFirstWord(crc));
    if (size < 2 * Step)
        return finish(first, bytes + WordSize, size - WordSize);

    // Four independent words hide the latency of the multiplication.
    __m128i second = load(bytes + WordSize);
    __m128i third = load(bytes + 2 * WordSize);
    __m128i fourth = load(bytes + 3 * WordSize);
    const __m128i step = factors<Step>();
    for (bytes += Step, size -= Step; size >= Step; bytes += Step, size -= Step) {
        first = fold(first, step, load(bytes));
        second = fold(second, step, load(bytes + WordSize));
        third = fold(third, step, load(bytes + 2 * WordSize));
        fourth = fold(fourth, step, load(bytes + 3 * WordSize));
    }
    const __m128i next = factors<WordSize>();
    return finish(fold(fold(fold(first, next, second), next, third), next, fourth), bytes, size);
}

VELMORA_TARGET_512
std::uint32_t updateByFolding512(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept
{
    constexpr std::size_t Step = 4 * WideSize;
    if (size < 2 * Step)
        return updateByFolding128(crc, bytes, size);

    __m512i first = _mm512_xor_si512(load512(bytes), _mm512_zextsi128_si512(asFirstWord(crc)));
    __m512i second = load512(bytes + WideSize);
    __m512i third = load512(bytes + 2 * WideSize);
    __m512i fourth = load512(bytes + 3 * WideSize);
    const __m512i step = inEachLane(factors<Step>());
    for (bytes += Step, size -= Step; size >= Step; bytes += Step, size -= Step) {
        first = fold512(first, step, load512(bytes));
        second = fold512(second, step, load512(bytes + WideSize));
        third = fold512(third, step, load512(bytes + 2 * WideSize));
        fourth = fold512(fourth, step, load512(bytes + 3 * WideSize));
    }
    const __m512i nextWide = inEachLane(factors<WideSize>());
    const __m512i words = fold512(fold512(fold512(first, nextWide, second), nextWide, third), nextWide, fourth);

    const __m128i next = factors<WordSize>();
    __m128i word = fold(laneOf<0>(words), next, laneOf<1>(words));
    word = fold(word, next, laneOf<2>(words));
    word = fold(word, next, laneOf<3>(words));
    return finish(word, bytes, size);
}

#else

bool hasFolding128() noexcept { return false; }
bool hasFolding512() noexcept { return false; }

std::uint32_t updateByFolding128(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept
{
    return updateBySlicing(crc, bytes, size);
}

std::uint32_t updateByFolding512(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept
{
    return updateBySlicing(crc, bytes, size);
}

#endif

} // namespace Quorvex::Velmora::IO::Crc32
