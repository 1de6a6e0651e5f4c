#include "velmora/io/crc/Slicing.h"

namespace Quorvex::Velmora::IO::Crc32
{
namespace
{

constexpr Tables makeTables() noexcept
{
    Tables result{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t crc = byte << 24;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc << 1) ^ ((crc >> 31) != 0 ? Polynomial : 0);
        result[0][byte] = crc;
    }
    for (std::size_t slice = 1; slice < SliceCount; ++slice) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = result[slice - 1][byte];
            result[slice][byte] = (before << 8) ^ result[0][before >> 24];
        }
    }
    return result;
}

// Loads 8 bytes at once: sixteen loads of one byte would be the bottleneck.
std::uint64_t loadBigEndian(const unsigned char* bytes) noexcept
{
    std::uint64_t value = 0;
    for (int i = 0; i < 8; ++i)
        value = (value << 8) | bytes[i];
    return value;
}

template <std::size_t FirstSlice>
std::uint32_t lookUp8(std::uint64_t word) noexcept
{
    std::uint32_t crc = 0;
    for (std::size_t i = 0; i < 8; ++i)
        crc ^= tables[FirstSlice + i][(word >> (8 * i)) & 0xFF];
    return crc;
}

} // namespace

constexpr Tables tables = makeTables();

std::uint32_t updateBySlicing(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept
{
    for (; size >= 16; size -= 16, bytes += 16) {
        const std::uint64_t high = loadBigEndian(bytes) ^ (std::uint64_t{crc} << 32);
        crc = lookUp8<8>(high) ^ lookUp8<0>(loadBigEndian(bytes + 8));
    }
    for (; size >= 4; size -= 4, bytes += 4)
        crc = update4(crc, bytes);
    for (; size > 0; --size, ++bytes)
        crc = updateByte(crc, *bytes);
    return crc;
}

} // namespace Quorvex::Velmora::IO::Crc32
