#include "velmora/io/QVBinaryFileSource.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <ios>
#include <utility>

#include <velmora/io/SerialFormat.h>
#include <velmora/io/WideFileStream.h>

namespace Quorvex::Velmora::IO
{

struct QVBinaryFileSource::Impl {
    static constexpr std::size_t BufferSize = 64 * 1024;

    /// Copies the next bytes; fewer than wanted fails.
    /// @return how many bytes there were.
    std::size_t take(void* target, std::size_t wanted)
    {
        if (wanted <= limit - position) {
            copyBuffered(target, wanted);
            return wanted;
        }
        return takeAcrossBuffers(static_cast<unsigned char*>(target), wanted);
    }

    template <std::size_t Size>
    std::array<unsigned char, Size> takeOrZero()
    {
        std::array<unsigned char, Size> bytes{};
        take(bytes.data(), Size);
        return bytes;
    }

    void takeUnits(std::wstring& text, std::size_t count);

    void copyBuffered(void* target, std::size_t count)
    {
        if (count > 0)
            std::memcpy(target, buffer.get() + position, count);
        position += count;
    }

    std::size_t takeAcrossBuffers(unsigned char* target, std::size_t wanted)
    {
        std::size_t taken = limit - position;
        copyBuffered(target, taken);
        if (wanted - taken >= BufferSize)
            return taken + readThrough(target + taken, wanted - taken);
        position = 0;
        limit = readUpTo(buffer.get(), BufferSize);
        const std::size_t rest = std::min(wanted - taken, limit);
        copyBuffered(target + taken, rest);
        taken += rest;
        failed = taken < wanted;
        return taken;
    }

    std::size_t readThrough(unsigned char* target, std::size_t wanted)
    {
        position = limit = 0;
        const std::size_t taken = readUpTo(target, wanted);
        failed = taken < wanted;
        return taken;
    }

    std::size_t readUpTo(unsigned char* target, std::size_t wanted)
    {
        if (failed)
            return 0;
        stream.read(reinterpret_cast<char*>(target), static_cast<std::streamsize>(wanted));
        return static_cast<std::size_t>(stream.gcount());
    }

    void fail()
    {
        position = limit = 0;
        failed = true;
    }

    boost::filesystem::ifstream stream;
    std::unique_ptr<unsigned char[]> buffer{new unsigned char[BufferSize]};
    std::size_t position = 0;
    std::size_t limit = 0;
    bool failed = false;
};

QVBinaryFileSource::QVBinaryFileSource(const std::wstring& path) : m_impl(std::make_unique<Impl>())
{
    openUnbuffered(m_impl->stream, path, std::ios::in);
    m_impl->failed = m_impl->stream.fail();
}

QVBinaryFileSource::~QVBinaryFileSource() = default;

void QVBinaryFileSource::readUInt32(std::uint32_t& out)
{
    out = SerialFormat::decode<std::uint32_t>(m_impl->takeOrZero<4>());
}

void QVBinaryFileSource::readDouble(double& out) { out = SerialFormat::decodeDouble(m_impl->takeOrZero<8>()); }

void QVBinaryFileSource::readString(std::wstring& out)
{
    std::uint32_t count = 0;
    readUInt32(count);
    std::wstring text;
    // Only memory that is there already is taken from the caller before the text is whole.
    if (count <= out.capacity())
        text.swap(out);
    text.clear();
    m_impl->takeUnits(text, count);
    out = std::move(text);
}

bool QVBinaryFileSource::readBool(bool& out)
{
    std::uint32_t value = 0;
    readUInt32(value);
    out = value != 0;
    return out;
}

void QVBinaryFileSource::readBytes(void* bytes, std::int64_t count)
{
    if (count < 0)
        m_impl->fail();
    else
        m_impl->take(bytes, static_cast<std::size_t>(count));
}

bool QVBinaryFileSource::failed() const { return m_impl->failed; }

// Takes what the buffer holds before it asks for more, so that memory for a wrong count is asked for only once the
// bytes have run out.
void QVBinaryFileSource::Impl::takeUnits(std::wstring& text, std::size_t count)
{
    SerialFormat::UnitDecoder decoder(text);
    while (count > 0 && !failed) {
        std::size_t units = std::min(count, (limit - position) / 2);
        if (units > 0) {
            decoder.append(buffer.get() + position, units);
            position += 2 * units;
        } else {
            // Half a unit at the end of the file counts, its other half being zero.
            std::array<unsigned char, 2> unit{};
            units = (take(unit.data(), unit.size()) + 1) / 2;
            decoder.append(unit.data(), units);
        }
        count -= units;
    }
    text.resize(text.size() + count);
}

} // namespace Quorvex::Velmora::IO
