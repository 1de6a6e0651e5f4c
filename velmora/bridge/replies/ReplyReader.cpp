#include <velmora/bridge/replies/ReplyReader.h>

#include <algorithm>
#include <cstring>

#include <velmora/platform/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

constexpr std::uint64_t HeaderSize = 16;
constexpr std::uint64_t Alignment = 8;

template <class Number>
Number numberAt(const std::uint8_t* position) noexcept
{
    Number value;
    std::memcpy(&value, position, sizeof value);
    return value;
}

} // namespace

ReplyReader::ReplyReader(OwnedReply& source) : owned(source)
{
    const VelmoraReply& reply = owned.reply();
    if (reply.data == nullptr || reply.size < HeaderSize ||
        reinterpret_cast<std::uintptr_t>(reply.data) % Alignment != 0)
        throw DamagedReply();
    recordCount = numberAt<std::uint32_t>(reply.data);
    handleCount = numberAt<std::uint32_t>(reply.data + 4);
    const auto handlesOffset = numberAt<std::uint64_t>(reply.data + 8);
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

std::uint32_t ReplyReader::uint32()
{
    return numberAt<std::uint32_t>(bytes(sizeof(std::uint32_t), sizeof(std::uint32_t)));
}

const std::uint8_t* ReplyReader::bytes(std::uint64_t size, std::uint64_t alignment)
{
    const auto offset = static_cast<std::uint64_t>(position - begin);
    const std::uint64_t gap = (alignment - offset % alignment) % alignment;
    const auto left = static_cast<std::uint64_t>(end - position);
    if (gap > left || size > left - gap)
        throw DamagedReply();
    const std::uint8_t* const found = position + gap;
    position = found + size;
    return found;
}

std::u16string_view ReplyReader::text()
{
    const std::uint32_t length = uint32();
    const std::uint8_t* const units = bytes(std::uint64_t{length} * sizeof(char16_t), sizeof(char16_t));
    return {reinterpret_cast<const char16_t*>(units), length};
}

std::wstring ReplyReader::wideText() { return Common::Unicode::fromUtf16(text()); }

VelmoraHandle ReplyReader::takeHandle()
{
    VelmoraReply& reply = owned.reply();
    if (reply.handlesTaken >= handleCount)
        throw DamagedReply();
    const auto handle = numberAt<VelmoraHandle>(end + reply.handlesTaken * sizeof(VelmoraHandle));
    ++reply.handlesTaken;
    return handle;
}

} // namespace Quorvex::Velmora::Tessaport
