// The check over a file, read piece by piece.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include <velmora/io/WideFileStream.h>
#include <velmora/io/crc/Crc32.h>

namespace Quorvex::Velmora::IO::Crc32
{

class FileReader
{
public:
    /// @param update  the way to feed a register, such as Crc32::update.
    FileReader(const std::wstring& path, decltype(&Crc32::update) update) : m_update(update)
    {
        openUnbuffered(m_stream, path, std::ios::in);
    }

    [[nodiscard]] bool atEnd() const { return m_stream.eof(); }

    /// Whether nothing has gone wrong so far; reaching the end has not.
    [[nodiscard]] bool sound() const { return !m_stream.bad() && (!m_stream.fail() || m_stream.eof()); }

    [[nodiscard]] std::uint32_t value() const noexcept { return m_register; }

    void readPiece()
    {
        m_stream.read(reinterpret_cast<char*>(m_piece.get()), PieceSize);
        m_register = m_update(m_register, m_piece.get(), static_cast<std::size_t>(m_stream.gcount()));
    }

private:
    // Large enough for the calls of the system not to count, small enough for the processor's cache.
    static constexpr std::streamsize PieceSize = 512 * 1024;

    decltype(&Crc32::update) m_update;
    boost::filesystem::ifstream m_stream;
    std::unique_ptr<unsigned char[]> m_piece{new unsigned char[static_cast<std::size_t>(PieceSize)]};
    std::uint32_t m_register = 0xFFFFFFFFU;
};

} // namespace Quorvex::Velmora::IO::Crc32
