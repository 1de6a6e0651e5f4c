#include "velmora/io/QVChecksum.h"

#include <cstddef>

#include <velmora/io/FileReader.h>
#include <velmora/io/SerialFormat.h>
#include <velmora/io/crc/Crc32.h>
#include <velmora/io/crc/Slicing.h>

namespace Quorvex::Velmora::IO
{

void QVChecksum::writeUInt32(std::uint32_t value) { crc = Crc32::update4(crc, SerialFormat::encode(value).data()); }

void QVChecksum::writeDouble(double value) { crc = Crc32::update8(crc, SerialFormat::encodeDouble(value).data()); }

void QVChecksum::writeString(const std::wstring& value)
{
    SerialFormat::encodeString(
        value, [this](const unsigned char* bytes, std::size_t count) { crc = Crc32::update(crc, bytes, count); });
}

void QVChecksum::writeBool(bool value) { writeUInt32(value ? 1 : 0); }

void QVChecksum::writeBytes(const void* bytes, std::int64_t count)
{
    if (count > 0)
        crc = Crc32::update(crc, static_cast<const unsigned char*>(bytes), static_cast<std::size_t>(count));
}

std::uint32_t checksumOfFile(const std::wstring& path)
{
    Crc32::FileReader file(path, Crc32::update);
    while (!file.atEnd())
        file.readPiece();
    return file.value();
}

bool tryChecksumOfFile(const std::wstring& path, std::uint32_t& out)
{
    Crc32::FileReader file(path, Crc32::update);
    while (file.sound() && !file.atEnd())
        file.readPiece();
    if (!file.sound())
        return false;
    out = file.value();
    return true;
}

} // namespace Quorvex::Velmora::IO
