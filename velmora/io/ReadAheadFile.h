// A file that is read in large pieces.
#pragma once

#include <cstddef>
#include <cstring>
#include <ios>
#include <istream>
#include <locale>
#include <memory>
#include <string>

#include <velmora/io/WideFileStream.h>

namespace Quorvex::Velmora::IO
{

/// Reads ahead whatever the file has, but neither waits for more bytes than are wanted nor takes the end of the file
/// for the end of reading: bytes that are appended later are read later.
class ReadAheadFile
{
public:
    explicit ReadAheadFile(const std::wstring& path)
    {
        m_buffer.pubimbue(std::locale::classic());
        m_buffer.pubsetbuf(m_memory.get(), BufferSize);
        if (m_buffer.open(toReadablePath(path), std::ios::in | std::ios::binary) == nullptr)
            fail();
    }

    /// Copies the next bytes. If there are fewer, copies those and fails.
    /// @return how many bytes it copied.
    std::size_t read(void* target, std::size_t count)
    {
        if (count > bytesAhead())
            return readThrough(target, count);
        if (count > 0)
            std::memcpy(target, ahead(), count);
        skip(count);
        return count;
    }

    /// @return the bytes that were read ahead, of which there are bytesAhead().
    [[nodiscard]] const unsigned char* ahead() const noexcept { return m_buffer.next(); }
    [[nodiscard]] std::size_t bytesAhead() const noexcept { return m_buffer.available(); }

    /// @param count  at most bytesAhead().
    void skip(std::size_t count) noexcept { m_buffer.skip(count); }

    /// From now on there is nothing to read.
    void fail()
    {
        skip(bytesAhead());
        m_stream.setstate(std::ios::failbit);
    }

    [[nodiscard]] bool failed() const { return m_stream.fail(); }

private:
    /// Shows what it holds, so that small values can be copied without a call.
    class Buffer : public boost::filesystem::filebuf
    {
    public:
        [[nodiscard]] const unsigned char* next() const noexcept
        {
            return reinterpret_cast<const unsigned char*>(gptr());
        }
        [[nodiscard]] std::size_t available() const noexcept { return static_cast<std::size_t>(egptr() - gptr()); }
        void skip(std::size_t count) noexcept { gbump(static_cast<int>(count)); }
    };

    std::size_t readThrough(void* target, std::size_t count)
    {
        m_stream.read(static_cast<char*>(target), static_cast<std::streamsize>(count));
        return static_cast<std::size_t>(m_stream.gcount());
    }

    // Below 64 KiB, a usual size of blocks: what does not fit is read without a copy. The library uses one byte less
    // than it is given.
    static constexpr std::streamsize BufferSize = 60 * 1024 + 1;

    std::unique_ptr<char[]> m_memory{new char[static_cast<std::size_t>(BufferSize)]};
    Buffer m_buffer;
    std::istream m_stream{&m_buffer};
};

} // namespace Quorvex::Velmora::IO
