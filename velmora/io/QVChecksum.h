#pragma once

#include <cstdint>
#include <string>

#include <velmora/io/QVSerialSink.h>

namespace Quorvex::Velmora::IO
{

/// Computes a 32-bit checksum of a sequence of values.
///
/// The value equals the checksum of the file that QVBinaryFileSink writes for the same calls. The algorithm is
/// CRC-32/MPEG-2: polynomial 0x04C11DB7, most significant bit first, initial value 0xFFFFFFFF, no final XOR. The nine
/// ASCII bytes "123456789" give 0x0376E6E7; no bytes give 0xFFFFFFFF.
class QVChecksum final : public QVSerialSink
{
public:
    void writeUInt32(std::uint32_t value) override;
    void writeDouble(double value) override;
    void writeString(const std::wstring& value) override;
    void writeBool(bool value) override;

    /// Adds bytes without their count. A negative count adds nothing.
    void writeBytes(const void* bytes, std::int64_t count) override;

    /// @return the checksum of everything written so far. More can be written afterwards.
    [[nodiscard]] std::uint32_t value() const noexcept { return crc; }

private:
    std::uint32_t crc = 0xFFFFFFFFU;
};

/// Computes the checksum of a file, as QVChecksum does.
///
/// @note Kept for compatibility: it loops forever if the file cannot be opened or read; see tryChecksumOfFile().
std::uint32_t checksumOfFile(const std::wstring& path);

/// Computes the checksum of a file, as QVChecksum does.
///
/// @return false if the file cannot be opened or read to its end. `out` is then unchanged.
bool tryChecksumOfFile(const std::wstring& path, std::uint32_t& out);

} // namespace Quorvex::Velmora::IO
