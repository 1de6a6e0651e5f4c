/// Writing a sequence of typed values.
#pragma once

#include <cstdint>
#include <string>

namespace Quorvex::Velmora::IO
{

/// Takes typed values in the serial format: back to back in call order, without header, padding or alignment, numbers
/// little-endian, on every platform alike.
///
/// | value           | bytes                                                                         |
/// |-----------------|-------------------------------------------------------------------------------|
/// | unsigned 32-bit | 4                                                                             |
/// | double          | 8, IEEE 754 binary64                                                          |
/// | bool            | 4, an unsigned 32-bit 0 or 1                                                  |
/// | wide text       | unsigned 32-bit count of UTF-16 code units, then the units as UTF-16LE        |
/// | bytes           | as they are, without a count                                                  |
///
/// An object is for one thread at a time.
class QVSerialSink
{
public:
    virtual ~QVSerialSink() = default;

    virtual void writeUInt32(std::uint32_t value) = 0;
    virtual void writeDouble(double value) = 0;

    /// Unpaired surrogates are written as they stand.
    /// @throws std::length_error before anything is written when the text has more than 2^32-1 UTF-16 code units.
    virtual void writeString(const std::wstring& value) = 0;
    virtual void writeBool(bool value) = 0;
    virtual void writeBytes(const void* bytes, std::int64_t count) = 0;
};

} // namespace Quorvex::Velmora::IO
