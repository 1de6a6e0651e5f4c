#include <velmora/io/crc/Crc32.h>

namespace Quorvex::Velmora::IO::Crc32
{
namespace
{

using Update = std::uint32_t (*)(std::uint32_t, const unsigned char*, std::size_t) noexcept;

Update fastestUpdate() noexcept
{
    if (hasFolding512())
        return updateByFolding512;
    return hasFolding128() ? updateByFolding128 : updateBySlicing;
}

} // namespace

std::uint32_t update(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept
{
    // For fewer bytes the tables are as fast as reducing a folded word.
    constexpr std::size_t WorthFolding = 64;
    if (size < WorthFolding)
        return updateBySlicing(crc, bytes, size);
    static const Update fastest = fastestUpdate();
    return fastest(crc, bytes, size);
}

} // namespace Quorvex::Velmora::IO::Crc32
