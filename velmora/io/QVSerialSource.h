#pragma once

#include <cstdint>
#include <string>

namespace Quorvex::Velmora::IO
{

/// Reads what a QVSerialSink has written, by the same sequence of calls.
///
/// Missing bytes are read as zero, except by readBytes(), which leaves that part of the buffer unchanged. An object is
/// not thread-safe.
class QVSerialSource
{
public:
    virtual ~QVSerialSource() = default;

    /// Reads an integer: 4 bytes.
    virtual void readUInt32(std::uint32_t& out) = 0;

    /// Reads a floating-point number: 8 bytes.
    virtual void readDouble(double& out) = 0;

    /// Reads a string.
    ///
    /// @note Kept for compatibility: the string has as many UTF-16 code units as its count says, even if the bytes end
    ///     earlier. The missing units are zero.
    /// @throws std::bad_alloc if there is not enough memory. `out` is then unchanged.
    virtual void readString(std::wstring& out) = 0;

    /// Reads a bool. Every 32-bit value except 0 is true.
    ///
    /// @return the value of `out`.
    virtual bool readBool(bool& out) = 0;

    /// Reads bytes that were written without a count.
    ///
    /// @param bytes  has room for `count` bytes.
    /// @param count  in bytes.
    virtual void readBytes(void* bytes, std::int64_t count) = 0;
};

} // namespace Quorvex::Velmora::IO
