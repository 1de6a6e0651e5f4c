// CRC-32 with polynomial 0x04C11DB7, most significant bit first, on a register that the caller keeps.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex::Velmora::IO::Crc32
{

constexpr std::uint32_t Polynomial = 0x04C11DB7U;

/// Feeds `size` bytes into `crc` by the quickest way that this processor has.
std::uint32_t update(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept;

/// Works on every processor: sixteen table look-ups for each 16 bytes.
std::uint32_t updateBySlicing(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept;

/// By carry-less multiplication of 128-bit words. Only where hasFolding128().
std::uint32_t updateByFolding128(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept;
[[nodiscard]] bool hasFolding128() noexcept;

/// By carry-less multiplication of four 128-bit words at once. Only where hasFolding512().
std::uint32_t updateByFolding512(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept;
[[nodiscard]] bool hasFolding512() noexcept;

} // namespace Quorvex::Velmora::IO::Crc32
