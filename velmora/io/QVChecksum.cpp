#include <velmora/io/QVChecksum.h>

#include <velmora/io/SerialFormat.h>
#include <velmora/io/WideFileStream.h>
#include <velmora/io/crc/Crc32.h>
#include <velmora/io/crc/Slicing.h>

#include <cstddef>
#include <memory>

namespace Quorvex::Velmora::IO
{
namespace
{

/// Reads a file in pieces and keeps the check of what it has read.
class FileChecksum
{
public:
    explicit FileChecksum(const std::wstring& path) { openUnbuffered(m_stream, path, std::ios::in); }

    [[nodiscard]] const boost::filesystem::ifstream& stream() const noexcept { return m_stream; }

    [[nodiscard]] std::uint32_t value() const noexcept { return m_checksum.value(); }

    void readPiece()
    {
        m_stream.read(m_piece.get(), PieceSize);
        m_checksum.writeBytes(m_piece.get(), m_stream.gcount());
    }

private:
    static constexpr std::streamsize PieceSize = 64 * 1024;

    boost::filesystem::ifstream m_stream;
    std::unique_ptr<char[]> m_piece{new char[static_cast<std::size_t>(PieceSize)]};
    QVChecksum m_checksum;
};

} // namespace

void QVChecksum::writeUInt32(std::uint32_t value)
{
    m_register = Crc32::update4(m_register, SerialFormat::encode(value).data());
}

void QVChecksum::writeDouble(double value)
{
    m_register = Crc32::update8(m_register, SerialFormat::encodeDouble(value).data());
}

void QVChecksum::writeString(const std::wstring& value)
{
    SerialFormat::encodeString(value, [this](const unsigned char* bytes, std::size_t count) {
        m_register = Crc32::update(m_register, bytes, count);
    });
}

void QVChecksum::writeBool(bool value) { writeUInt32(value ? 1 : 0); }

void QVChecksum::writeBytes(const void* bytes, std::int64_t count)
{
    if (count > 0)
        m_register =
            Crc32::update(m_register, static_cast<const unsigned char*>(bytes), static_cast<std::size_t>(count));
}

std::uint32_t checksumOfFile(const std::wstring& path)
{
    FileChecksum file(path);
    while (!file.stream().eof())
        file.readPiece();
    return file.value();
}

bool tryChecksumOfFile(const std::wstring& path, std::uint32_t& out)
{
    FileChecksum file(path);
    while (file.stream())
        file.readPiece();
    if (!file.stream().eof() || file.stream().bad())
        return false;
    out = file.value();
    return true;
}

} // namespace Quorvex::Velmora::IO
