#include "velmora/io/QVBinaryFileSink.h"

#include <cstddef>
#include <cstring>
#include <ios>
#include <string_view>

#include <velmora/io/SerialFormat.h>
#include <velmora/io/WideFileStream.h>

namespace Quorvex::Velmora::IO
{

struct QVBinaryFileSink::Impl {
    static constexpr std::size_t BufferSize = 64 * 1024;

    void append(const void* bytes, std::size_t count)
    {
        if (count > BufferSize - used) {
            appendBeyond(static_cast<const unsigned char*>(bytes), count);
            return;
        }
        if (count > 0)
            std::memcpy(buffer.get() + used, bytes, count);
        used += count;
    }

    // Writes full buffers only: the system works twice on a page of which two writes have a part.
    void appendBeyond(const unsigned char* bytes, std::size_t count)
    {
        if (used > 0) {
            const std::size_t room = BufferSize - used;
            std::memcpy(buffer.get() + used, bytes, room);
            bytes += room;
            count -= room;
            used = BufferSize;
            writeOut();
        }
        const std::size_t rest = count % BufferSize;
        writeThrough(bytes, count - rest);
        std::memcpy(buffer.get(), bytes + (count - rest), rest);
        used = rest;
    }

    // Encodes a string in place. Returns false, and nothing is appended, if there may be no room for it.
    bool appendShort(std::wstring_view text)
    {
        constexpr std::size_t CountSize = sizeof(std::uint32_t);
        if (text.size() > BufferSize || CountSize + SerialFormat::mostBytes(text.size()) > BufferSize - used)
            return false;
        unsigned char* const target = buffer.get() + used;
        const std::size_t size = SerialFormat::encodeUnits(text, target + CountSize);
        const auto count = SerialFormat::encode(static_cast<std::uint32_t>(size / 2));
        std::memcpy(target, count.data(), count.size());
        used += CountSize + size;
        return true;
    }

    void writeOut()
    {
        writeThrough(buffer.get(), used);
        used = 0;
    }

    void writeThrough(const void* bytes, std::size_t count)
    {
        stream.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(count));
    }

    void fail()
    {
        writeOut();
        stream.setstate(std::ios::failbit);
    }

    boost::filesystem::ofstream stream;
    std::unique_ptr<unsigned char[]> buffer{new unsigned char[BufferSize]};
    std::size_t used = 0;
};

QVBinaryFileSink::QVBinaryFileSink(const std::wstring& path) : impl(std::make_unique<Impl>())
{
    openUnbuffered(impl->stream, path, std::ios::trunc);
}

QVBinaryFileSink::~QVBinaryFileSink() { impl->writeOut(); }

void QVBinaryFileSink::writeUInt32(std::uint32_t value)
{
    const auto bytes = SerialFormat::encode(value);
    impl->append(bytes.data(), bytes.size());
}

void QVBinaryFileSink::writeDouble(double value)
{
    const auto bytes = SerialFormat::encodeDouble(value);
    impl->append(bytes.data(), bytes.size());
}

void QVBinaryFileSink::writeString(const std::wstring& value)
{
    if (impl->appendShort(value))
        return;
    SerialFormat::encodeString(value, [this](const void* bytes, std::size_t count) { impl->append(bytes, count); });
}

void QVBinaryFileSink::writeBool(bool value) { writeUInt32(value ? 1 : 0); }

void QVBinaryFileSink::writeBytes(const void* bytes, std::int64_t count)
{
    if (count < 0)
        impl->fail();
    else
        impl->append(bytes, static_cast<std::size_t>(count));
}

bool QVBinaryFileSink::failed() const
{
    impl->writeOut();
    return impl->stream.fail();
}

} // namespace Quorvex::Velmora::IO
