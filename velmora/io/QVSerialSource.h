/// Reading a sequence of typed values.
#pragma once

#include <cstdint>
#include <string>

namespace Quorvex::Velmora::IO
{

/// Reads what a QVSerialSink wrote, with the calls in the same order. Bytes that are missing read as zero, except for
/// readBytes(), which leaves that part of the buffer as it was. An object is for one thread at a time.
class QVSerialSource
{
public:
    virtual ~QVSerialSource() = default;

    virtual void readUInt32(std::uint32_t& out) = 0;
    virtual void readDouble(double& out) = 0;

    /// The text has as many UTF-16 code units as its count says, even when the bytes end before.
    /// @throws std::bad_alloc when there is no memory for them; `out` is then as it was.
    virtual void readString(std::wstring& out) = 0;

    /// Any 32-bit value but 0 is true.
    /// @return the value read, as in `out`.
    virtual bool readBool(bool& out) = 0;
    virtual void readBytes(void* bytes, std::int64_t count) = 0;
};

} // namespace Quorvex::Velmora::IO
