#include "velmora/bridge/replies/ReplyReader.h"

#include <algorithm>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

constexpr std::uint64_t HeaderSize = 16;
constexpr std::uint64_t Alignment = 8;

} // namespace

ReplyReader::ReplyReader(VelmoraReply& source, const TessaportEntryPoints& table) : reply(source), entryPoints(&table)
{
    if (reply.data == nullptr || reply.size < HeaderSize ||
        reinterpret_cast<std::uintptr_t>(reply.data) % Alignment != 0)
        throw DamagedReply();
    recordCount = number<std::uint32_t>(reply.data);
    handleCount = number<std::uint32_t>(reply.data + 4);
    const auto handlesOffset = number<std::uint64_t>(reply.data + 8);
    if (handlesOffset < HeaderSize || handlesOffset > reply.size || handlesOffset % Alignment != 0 ||
        handleCount > (reply.size - handlesOffset) / sizeof(VelmoraHandle) || reply.handlesTaken > handleCount)
        throw DamagedReply();
    begin = reply.data;
    position = begin + HeaderSize;
    end = begin + handlesOffset;
}

std::uint32_t ReplyReader::plausible(std::uint32_t promised, std::uint32_t size) const noexcept
{
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(promised, static_cast<std::uint64_t>(end - position) / size));
}

std::u16string_view ReplyReader::text()
{
    const std::uint32_t length = uint32();
    const std::uint8_t* const units = bytes(std::uint64_t{length} * sizeof(char16_t), sizeof(char16_t));
    return {reinterpret_cast<const char16_t*>(units), length};
}

std::wstring ReplyReader::wideText() { return Common::Unicode::fromUtf16(text()); }

} // namespace Quorvex::Velmora::Tessaport
