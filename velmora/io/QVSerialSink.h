#pragma once

#include <cstdint>
#include <string>

namespace Quorvex::Velmora::IO
{

/// Takes a sequence of typed values in the serial format.
///
/// The format has no header, padding or alignment: values follow each other in the order of the calls, numbers are
/// little-endian, on every platform.
///
/// | value           | bytes                                                                         |
/// |-----------------|-------------------------------------------------------------------------------|
/// | unsigned 32-bit | 4                                                                             |
/// | double          | 8, IEEE 754 binary64                                                          |
/// | bool            | 4, an unsigned 32-bit 0 or 1                                                  |
/// | wide string     | unsigned 32-bit count of UTF-16 code units, then the units as UTF-16LE        |
/// | bytes           | unchanged, without a count                                                    |
///
/// An object is not thread-safe.
class QVSerialSink
{
public:
    virtual ~QVSerialSink() = default;

    /// Writes an integer: 4 bytes.
    virtual void writeUInt32(std::uint32_t value) = 0;

    /// Writes a floating-point number: 8 bytes. Every bit is kept, those of a NaN included.
    virtual void writeDouble(double value) = 0;

    /// Writes a string. Unpaired surrogates are written unchanged.
    ///
    /// @throws std::length_error if the string has more than 2^32-1 UTF-16 code units. Nothing is written then.
    virtual void writeString(const std::wstring& value) = 0;

    /// Writes a bool: 4 bytes, as an integer 0 or 1.
    virtual void writeBool(bool value) = 0;

    /// Writes bytes without their count.
    ///
    /// @param bytes  may be null if `count` is 0.
    /// @param count  in bytes.
    virtual void writeBytes(const void* bytes, std::int64_t count) = 0;
};

} // namespace Quorvex::Velmora::IO
