// Writes values to a file in the current folder, reads them back, and compares checksums.
#include <cstdint>
#include <exception>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>

#include <velmora/io/QVBinaryFileSink.h>
#include <velmora/io/QVBinaryFileSource.h>
#include <velmora/io/QVChecksum.h>

namespace
{

using namespace Quorvex::Velmora;

struct Settings {
    std::uint32_t version = 1;
    std::wstring folder;
    double zoom = 1;
    bool offline = false;
};

/// The only place that knows the order of the values, for the file and for the checksum.
void write(const Settings& settings, IO::QVSerialSink& sink)
{
    sink.writeUInt32(settings.version);
    sink.writeString(settings.folder);
    sink.writeDouble(settings.zoom);
    sink.writeBool(settings.offline);
}

void save(const Settings& settings, const std::wstring& path)
{
    IO::QVBinaryFileSink sink(path);
    write(settings, sink);
    if (sink.failed())
        throw std::runtime_error("the file cannot be written: check the folder and the space on its disk");
}

Settings load(const std::wstring& path)
{
    Settings settings;
    IO::QVBinaryFileSource source(path);
    source.readUInt32(settings.version);
    source.readString(settings.folder);
    source.readDouble(settings.zoom);
    source.readBool(settings.offline);
    if (source.failed())
        throw std::runtime_error("the file is missing or too short");
    return settings;
}

std::uint32_t fingerprint(const Settings& settings)
{
    IO::QVChecksum checksum;
    write(settings, checksum);
    return checksum.value();
}

std::uint32_t fingerprintOfFile(const std::wstring& path)
{
    std::uint32_t value = 0;
    if (!IO::tryChecksumOfFile(path, value))
        throw std::runtime_error("the file cannot be read");
    return value;
}

} // namespace

int main()
try {
    const std::wstring path = L"settings.bin";
    Settings settings;
    settings.folder = L"C:\\Drive\\Pl\xE4ne";
    settings.zoom = 1.25;

    save(settings, path);
    const Settings loaded = load(path);
    const std::uint32_t expected = fingerprint(settings);
    std::cout << "fingerprint " << std::hex << std::setw(8) << std::setfill('0') << expected << '\n';
    if (fingerprint(loaded) != expected || fingerprintOfFile(path) != expected)
        throw std::runtime_error("the values that were read are not those that were written");
    std::cout << "read back " << std::dec << loaded.folder.size() << " characters of a folder's name\n";
    return 0;
} catch (const std::exception& error) {
    std::cerr << "value_file: " << error.what() << '\n';
    return 1;
}
