#include <velmora/io/crc/Crc32.h>

namespace Quorvex::Velmora::IO::Crc32
{
namespace
{

using Update = std::uint32_t (*)(std::uint32_t, const unsigned char*, std::size_t) noexcept;

Update quickestUpdate() noexcept
{
    if (hasFolding512())
        return updateByFolding512;
    return hasFolding128() ? updateByFolding128 : updateBySlicing;
}

} // namespace

std::uint32_t update(std::uint32_t crc, const unsigned char* bytes, std::size_t size) noexcept
{
    // Below this the tables are as quick as reducing a folded word.
    constexpr std::size_t WorthFolding = 64;
    if (size < WorthFolding)
        return updateBySlicing(crc, bytes, size);
    static const Update quickest = quickestUpdate();
    return quickest(crc, bytes, size);
}

} // namespace Quorvex::Velmora::IO::Crc32
