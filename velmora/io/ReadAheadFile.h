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

/// Reads a file or a pipe in large pieces.
///
/// It reads ahead what is available, but waits only for the bytes that are wanted, and the end of the file is final
/// only for a read past it: bytes that are appended later can be read then.
class ReadAheadFile
{
public:
    explicit ReadAheadFile(const std::wstring& path)
    {
        buffer.pubimbue(std::locale::classic());
        buffer.pubsetbuf(memory.get(), BufferSize);
        if (buffer.open(toReadablePath(path), std::ios::in | std::ios::binary) == nullptr)
            fail();
    }

    /// Copies the next bytes. If there are fewer, copies those and fails.
    ///
    /// @return how many bytes were copied.
    std::size_t read(void* target, std::size_t count)
    {
        if (count > bytesAhead())
            return readThrough(target, count);
        if (count > 0)
            std::memcpy(target, ahead(), count);
        skip(count);
        return count;
    }

    /// @return the bytes that have been read ahead; there are bytesAhead() of them.
    [[nodiscard]] const unsigned char* ahead() const noexcept { return buffer.next(); }
    [[nodiscard]] std::size_t bytesAhead() const noexcept { return buffer.available(); }

    /// Moves forward by `count` bytes, at most bytesAhead().
    void skip(std::size_t count) noexcept { buffer.skip(count); }

    /// Drops the bytes that have been read ahead. Nothing more is read.
    void fail()
    {
        skip(bytesAhead());
        stream.setstate(std::ios::failbit);
    }

    [[nodiscard]] bool failed() const { return stream.fail(); }

private:
    /// Gives access to what it holds, so that small values are copied without a virtual call.
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
        stream.read(static_cast<char*>(target), static_cast<std::streamsize>(count));
        return static_cast<std::size_t>(stream.gcount());
    }

    // Less than 64 KiB, a usual size of blocks: a block that does not fit is read without a copy. The standard library
    // uses one byte less than it is given.
    static constexpr std::streamsize BufferSize = 60 * 1024 + 1;

    std::unique_ptr<char[]> memory{new char[static_cast<std::size_t>(BufferSize)]};
    Buffer buffer;
    std::istream stream{&buffer};
};

} // namespace Quorvex::Velmora::IO
