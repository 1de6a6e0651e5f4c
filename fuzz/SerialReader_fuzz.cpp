// Reads any bytes as a serial file, by any sequence of reads.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include <velmora/io/QVBinaryFileSource.h>
#include <velmora/io/QVChecksum.h>
#include "tests/support/MemoryLimit.h"

namespace
{

using namespace Quorvex::Velmora;

constexpr std::size_t MemoryForOneInput = std::size_t{8} << 20;

/// A file in memory that is reused for every input.
class FileInMemory
{
public:
    void fill(const std::uint8_t* data, std::size_t size)
    {
        if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
    }

    [[nodiscard]] std::wstring path() const { return L"/proc/self/fd/" + std::to_wstring(file); }

private:
    int file = memfd_create("serial", 0);
};

/// Reads one value and writes it to the sink.
void copyValue(unsigned kind, IO::QVSerialSource& source, IO::QVSerialSink& sink)
{
    switch (kind % 4) {
    case 0: {
        std::uint32_t number = 0;
        source.readUInt32(number);
        sink.writeUInt32(number);
        break;
    }
    case 1: {
        double number = 0;
        source.readDouble(number);
        sink.writeDouble(number);
        break;
    }
    case 2: {
        std::wstring text;
        source.readString(text);
        sink.writeString(text);
        break;
    }
    default: {
        std::array<unsigned char, 64> bytes{};
        const std::int64_t count = kind / 4;
        source.readBytes(bytes.data(), count);
        sink.writeBytes(bytes.data(), count);
        break;
    }
    }
}

/// @return how many bytes the value at the start of the data takes.
std::size_t sizeOfValue(unsigned kind, const std::uint8_t* data)
{
    switch (kind % 4) {
    case 0:
        return 4;
    case 1:
        return 8;
    case 2:
        return 4 + 2 * (data[0] | (std::size_t{data[1]} << 8) | (std::size_t{data[2]} << 16) |
                           (std::size_t{data[3]} << 24));
    default:
        return kind / 4;
    }
}

std::uint32_t checksumOf(const std::uint8_t* data, std::size_t size)
{
    IO::QVChecksum checksum;
    checksum.writeBytes(data, static_cast<std::int64_t>(size));
    return checksum.value();
}

} // namespace

// The first byte is the number of reads. Each takes one byte; the rest is the file. The checksum of the values that
// were read must be that of the bytes in the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static FileInMemory file;
    if (size == 0)
        return 0;
    const std::size_t reads = std::min<std::size_t>(data[0], size - 1);
    const std::uint8_t* const kinds = data + 1;
    const std::uint8_t* const content = kinds + reads;
    file.fill(content, size - 1 - reads);

    const TestSupport::MemoryLimit limit(MemoryForOneInput);
    try {
        IO::QVBinaryFileSource source(file.path());
        IO::QVChecksum checksum;
        std::size_t consumed = 0;
        for (std::size_t i = 0; i < reads; ++i) {
            copyValue(kinds[i], source, checksum);
            if (source.failed())
                continue;
            consumed += sizeOfValue(kinds[i], content + consumed);
            if (checksum.value() != checksumOf(content, consumed))
                std::abort();
        }
    } catch (const std::bad_alloc&) {
        // A wrong count may need more memory than there is.
    }
    return 0;
}
