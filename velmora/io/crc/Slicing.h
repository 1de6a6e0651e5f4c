// The lookup tables, and updates by few bytes, which are worth inlining.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include <velmora/io/crc/Crc32.h>

namespace Quorvex::Velmora::IO::Crc32
{

constexpr std::size_t SliceCount = 16;

/// Table k contains, for each byte, the remainder of that byte followed by k zero bytes.
using Tables = std::array<std::array<std::uint32_t, 256>, SliceCount>;
extern const Tables tables;

inline std::uint32_t updateByte(std::uint32_t crc, unsigned char byte) noexcept
{
    return (crc << 8) ^ tables[0][(crc >> 24) ^ byte];
}

inline std::uint32_t update4(std::uint32_t crc, const unsigned char* bytes) noexcept
{
    return tables[3][bytes[0] ^ (crc >> 24)] ^ tables[2][bytes[1] ^ ((crc >> 16) & 0xFF)] ^
           tables[1][bytes[2] ^ ((crc >> 8) & 0xFF)] ^ tables[0][bytes[3] ^ (crc & 0xFF)];
}

inline std::uint32_t update8(std::uint32_t crc, const unsigned char* bytes) noexcept
{
    return tables[7][bytes[0] ^ (crc >> 24)] ^ tables[6][bytes[1] ^ ((crc >> 16) & 0xFF)] ^
           tables[5][bytes[2] ^ ((crc >> 8) & 0xFF)] ^ tables[4][bytes[3] ^ (crc & 0xFF)] ^ tables[3][bytes[4]] ^
           tables[2][bytes[5]] ^ tables[1][bytes[6]] ^ tables[0][bytes[7]];
}

} // namespace Quorvex::Velmora::IO::Crc32
