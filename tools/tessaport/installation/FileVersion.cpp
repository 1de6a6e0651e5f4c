#include "tools/tessaport/installation/FileVersion.h"

#include <cstdint>

#include "tools/tessaport/platform/Platform.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

// VS_FIXEDFILEINFO begins with this number and the version of the structure, 1.0.
constexpr char Signature[] = {'\xBD', '\x04', '\xEF', '\xFE', '\x00', '\x00', '\x01', '\x00'};
constexpr std::size_t VersionOffset = sizeof Signature;

unsigned numberAt(const std::string& bytes, std::size_t position)
{
    return static_cast<unsigned>(static_cast<unsigned char>(bytes[position])) |
           static_cast<unsigned>(static_cast<unsigned char>(bytes[position + 1])) << 8U;
}

} // namespace

std::optional<std::string> fileVersion(const std::filesystem::path& file)
{
    const auto bytes = Platform::readFile(file);
    if (!bytes)
        return std::nullopt;
    const std::size_t start = bytes->find(Signature, 0, sizeof Signature);
    if (start == std::string::npos || bytes->size() - start < VersionOffset + 8)
        return std::nullopt;
    // Two 32-bit numbers, each with its more significant half second.
    const std::size_t version = start + VersionOffset;
    std::string text;
    for (const std::size_t part : {version + 2, version, version + 6, version + 4})
        text += (text.empty() ? "" : ".") + std::to_string(numberAt(*bytes, part));
    return text;
}

} // namespace Quorvex::Velmora::Tool
