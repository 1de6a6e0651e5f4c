#include <array>
#include <cstdio>
#include <fstream>
#include <system_error>

#include <velmora/io/QVChecksum.h>
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/output/Progress.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::size_t PieceSize = 256 * 1024;

struct Fingerprint {
    std::uint32_t value;
    std::uint64_t size;
};

std::uint64_t sizeOf(const fs::path& file)
{
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    return error ? 0 : size;
}

// In pieces, so that a long file shows progress.
Fingerprint fingerprintOf(Output& output, const std::string& file)
{
    const fs::path path = toPath(file);
    std::error_code error;
    if (!fs::exists(path, error))
        throw Failure(ExitCode::NotFound, "no such file");
    if (fs::is_directory(path, error))
        throw Failure(ExitCode::Failure, "it is a folder");
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw Failure(ExitCode::Failure, "it cannot be read; check its permissions");
    Progress progress(output, file, sizeOf(path));
    IO::QVChecksum checksum;
    std::uint64_t done = 0;
    std::string piece(PieceSize, '\0');
    while (stream) {
        stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        checksum.writeBytes(piece.data(), stream.gcount());
        done += static_cast<std::uint64_t>(stream.gcount());
        progress.advanceTo(done);
    }
    if (stream.bad())
        throw Failure(ExitCode::Failure, "it cannot be read to its end");
    return {checksum.value(), done};
}

std::string hexadecimal(std::uint32_t value)
{
    std::array<char, 9> text{};
    std::snprintf(text.data(), text.size(), "%08x", static_cast<unsigned>(value));
    return text.data();
}

ExitCode checksums(Context& context, const std::vector<std::string>& files)
{
    Outcomes outcomes(context);
    for (const std::string& file : files) {
        try {
            const Fingerprint fingerprint = fingerprintOf(context.output, file);
            const std::string value = hexadecimal(fingerprint.value);
            if (outcomes.isJson())
                outcomes.add({{"path", file}, {"checksum", value}, {"size", fingerprint.size}});
            else
                outcomes.line(std::string(value).append("  ").append(file));
        } catch (const Failure& failure) {
            outcomes.failed(file, failure.what(), failure.code);
        }
    }
    return outcomes.finish();
}

} // namespace

void addChecksumCommand(const CommandLine& line)
{
    auto [command, files] = addCommand<std::vector<std::string>>(line, "checksum",
        "Show the 32-bit checksum of files, as QVChecksum computes it", "tessaport checksum drawing.dwg notes.txt",
        checksums);
    command.addOption("file", files, "Local files").valueName("FILE").required();
}

} // namespace Quorvex::Velmora::Tool
