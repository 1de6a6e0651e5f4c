/// @file
/// CRC-32 with polynomial 0x04C11DB7, most significant bit first. The caller holds the register.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex::Velmora::IO::Crc32
{

constexpr std::uint32_t Polynomial = 0x04C11DB7U;

/// Updates `crc` by `size` bytes, in the fastest way that this processor supports.
/// @return the new register.
std::uint32_t update(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept;

/// The same on every processor: sixteen table look-ups for each 16 bytes.
std::uint32_t updateBySlicing(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept;

/// The same by carry-less multiplication of 128-bit words. Call it only if hasFolding128().
std::uint32_t updateByFolding128(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept;
[[nodiscard]] bool hasFolding128() noexcept;

/// The same by carry-less multiplication of four 128-bit words at once. Call it only if hasFolding512().
std::uint32_t updateByFolding512(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept;
[[nodiscard]] bool hasFolding512() noexcept;

} // namespace Quorvex::Velmora::IO::Crc32
