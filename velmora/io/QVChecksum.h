/// A 32-bit cyclic redundancy check over serialised values and over files.
#pragma once

#include <cstdint>
#include <string>

#include <velmora/io/QVSerialSink.h>

namespace Quorvex::Velmora::IO
{

/// Fingerprints a sequence of values with the calls that would serialise it: the value equals the check of the file
/// that QVBinaryFileSink writes for the same calls.
///
/// The check is CRC-32/MPEG-2: polynomial 0x04C11DB7, most significant bit first, initial value 0xFFFFFFFF, no final
/// XOR. The nine ASCII bytes "123456789" give 0x0376E6E7; no bytes give 0xFFFFFFFF.
class QVChecksum final : public QVSerialSink
{
public:
    void writeUInt32(std::uint32_t value) override;
    void writeDouble(double value) override;
    void writeString(const std::wstring& value) override;
    void writeBool(bool value) override;

    /// A negative count adds nothing.
    void writeBytes(const void* bytes, std::int64_t count) override;

    /// @return the check of everything written so far; writing may go on.
    [[nodiscard]] std::uint32_t value() const noexcept { return m_register; }

private:
    std::uint32_t m_register = 0xFFFFFFFFU;
};

/// The check over a whole file, as QVChecksum computes it.
///
/// Reads until the end of the file and leaves by no other way: with a path that cannot be opened or read it never
/// returns. Use tryChecksumOfFile() where that can happen.
std::uint32_t checksumOfFile(const std::wstring& path);

/// The check over a whole file, as QVChecksum computes it.
///
/// @return false, with `out` as it was, when the file cannot be opened or read to its end.
bool tryChecksumOfFile(const std::wstring& path, std::uint32_t& out);

} // namespace Quorvex::Velmora::IO
