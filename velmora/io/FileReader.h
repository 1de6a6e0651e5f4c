#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include <velmora/io/WideFileStream.h>
#include <velmora/io/crc/Crc32.h>

namespace Quorvex::Velmora::IO::Crc32
{

/// Computes the CRC of a file, which it reads in pieces.
class FileReader
{
public:
    /// @param update  one of the functions of Crc32.h.
    FileReader(const std::wstring& path, decltype(&Crc32::update) update) : feed(update)
    {
        openUnbuffered(stream, path, std::ios::in);
    }

    [[nodiscard]] bool atEnd() const { return stream.eof(); }

    /// @return false once a read has failed. Reaching the end is no failure.
    [[nodiscard]] bool sound() const { return !stream.bad() && (!stream.fail() || stream.eof()); }

    [[nodiscard]] std::uint32_t value() const noexcept { return crc; }

    void readPiece()
    {
        stream.read(reinterpret_cast<char*>(piece.get()), PieceSize);
        crc = feed(crc, piece.get(), static_cast<std::size_t>(stream.gcount()));
    }

private:
    // Large enough that system calls cost little, small enough for the processor's cache.
    static constexpr std::streamsize PieceSize = 512 * 1024;

    decltype(&Crc32::update) feed;
    boost::filesystem::ifstream stream;
    std::unique_ptr<unsigned char[]> piece{new unsigned char[static_cast<std::size_t>(PieceSize)]};
    std::uint32_t crc = 0xFFFFFFFFU;
};

} // namespace Quorvex::Velmora::IO::Crc32
