#include "velmora/bridge/boundary/ReplyReader.h"

#include <algorithm>

#include <velmora/bridge/boundary/ReplyLayout.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
ReplyReader::ReplyReader(VelmoraReply& source, const TessaportEntryPoints& table) : reply(source), entryPoints(&table)
{
    if (reply.data == nullptr || reply.size < sizeof(ReplyHeader) ||
        reinterpret_cast<std::uintptr_t>(reply.data) % ReplyAlignment != 0)
        throw DamagedReply();
    const auto header = valueAt<ReplyHeader>(reply.data);
    recordCount = header.recordCount;
    handleCount = header.handleCount;
    if (header.handlesOffset < sizeof(ReplyHeader) || header.handlesOffset > reply.size ||
        header.handlesOffset % ReplyAlignment != 0 ||
        handleCount > (reply.size - header.handlesOffset) / sizeof(VelmoraHandle) || reply.handlesTaken > handleCount)
        throw DamagedReply();
    begin = reply.data;
    position = begin + sizeof(ReplyHeader);
    end = begin + header.handlesOffset;
}

std::uint32_t ReplyReader::plausible(std::uint32_t promised, std::uint32_t size) const noexcept
{
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(promised, bytesLeft() / size));
}

std::u16string_view ReplyReader::string()
{
    const std::uint32_t length = uint32();
    const std::uint8_t* const units = bytes(std::uint64_t{length} * sizeof(char16_t), sizeof(char16_t));
    return {reinterpret_cast<const char16_t*>(units), length};
}

std::wstring ReplyReader::wideString() { return Common::Unicode::fromUtf16(string()); }

} // namespace Quorvex::Velmora::Tessaport
