#include "tools/tessaport/installation/AssemblyFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>

#include "tools/tessaport/platform/Platform.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr const char* NoAssembly = "is not a .NET assembly";
constexpr const char* CutShort = "is cut short";

/// Offsets and sizes in the Portable Executable format.
enum Layout : std::size_t {
    SectionCount = 6,
    StartOfHeader = 0x3C,
    SizeInSectionHeader = 16,
    StartInSectionHeader = 20,
    OptionalHeaderSize = 20,
    OptionalHeader = 24,
    SectionHeaderSize = 40,
    DirectorySize = 8,
    DirectoriesOf32Bits = 96,
    DirectoriesOf64Bits = 112,
};
constexpr std::size_t ClrDirectory = 14;
constexpr std::uint32_t MagicOf64Bits = 0x20B;

/// Little-endian numbers of a file; those beyond its end are missing.
class Numbers
{
public:
    explicit Numbers(const std::string& fileBytes) : bytes(fileBytes) {}

    [[nodiscard]] std::optional<std::uint32_t> at(std::size_t position, std::size_t size) const
    {
        if (position > bytes.size() || bytes.size() - position < size)
            return std::nullopt;
        std::uint32_t number = 0;
        for (std::size_t i = size; i-- > 0;)
            number = number << 8U | static_cast<unsigned char>(bytes[position + i]);
        return number;
    }

private:
    const std::string& bytes;
};

bool hasAllSections(const Numbers& numbers, std::size_t table, std::uint32_t count, std::size_t fileSize)
{
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t header = table + i * SectionHeaderSize;
        const auto size = numbers.at(header + SizeInSectionHeader, 4);
        const auto start = numbers.at(header + StartInSectionHeader, 4);
        if (!size || !start || std::uint64_t{*start} + *size > fileSize)
            return false;
    }
    return true;
}

} // namespace

std::string damageOf(const std::filesystem::path& file)
{
    const auto bytes = Platform::readFile(file);
    if (!bytes)
        return "cannot be read";
    if (bytes->empty())
        return "is empty";
    if (bytes->compare(0, 2, "MZ") != 0)
        return NoAssembly;
    const Numbers numbers(*bytes);
    const auto header = numbers.at(StartOfHeader, 4);
    const auto sections = header ? numbers.at(*header + SectionCount, 2) : std::nullopt;
    const auto optionalSize = header ? numbers.at(*header + OptionalHeaderSize, 2) : std::nullopt;
    const auto magic = header ? numbers.at(*header + OptionalHeader, 2) : std::nullopt;
    if (!sections || !optionalSize || !magic)
        return CutShort;
    if (bytes->compare(*header, 4, std::string("PE\0\0", 4)) != 0)
        return NoAssembly;
    const std::size_t directories = *magic == MagicOf64Bits ? DirectoriesOf64Bits : DirectoriesOf32Bits;
    const auto clr = numbers.at(*header + OptionalHeader + directories + ClrDirectory * DirectorySize, 4);
    if (!clr || !hasAllSections(numbers, *header + OptionalHeader + *optionalSize, *sections, bytes->size()))
        return CutShort;
    return *clr == 0 ? NoAssembly : "";
}

} // namespace Quorvex::Velmora::Tool
