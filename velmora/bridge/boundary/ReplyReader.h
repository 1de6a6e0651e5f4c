/// @file
/// Reads packed replies (see ReplyLayout.h), and checks every length against the end of the reply before it is used.
#pragma once

#include <cstdint>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

#include <velmora/bridge/boundary/OwnedReply.h>

namespace Quorvex::Velmora::Tessaport
{

/// A reply does not hold what its lengths promise.
class DamagedReply : public std::exception
{
public:
    [[nodiscard]] const char* what() const noexcept override
    {
        return "The reply of the .NET bridge is damaged: its lengths do not agree with its size. Install the library "
               "and its bridge folder from one release.";
    }
};

/// Reads the records of one reply, in the order in which they were written. Every member that reads throws DamagedReply
/// when the reply ends too early.
class ReplyReader
{
public:
    /// @throws DamagedReply if the header is not valid.
    explicit ReplyReader(OwnedReply& owned) : ReplyReader(owned.reply(), owned.table()) {}

    /// Reads a reply, or a piece of one, that someone else owns.
    ReplyReader(VelmoraReply& reply, const TessaportEntryPoints& table);

    /// The number of records. Untrusted: see plausible().
    [[nodiscard]] std::uint32_t count() const noexcept { return recordCount; }

    /// How many of the `promised` records can follow, if each has at least `size` bytes. Bounds what is reserved for an
    /// untrusted count.
    [[nodiscard]] std::uint32_t plausible(std::uint32_t promised, std::uint32_t size) const noexcept;

    /// The size of what has not been read, without the handles.
    [[nodiscard]] std::uint64_t bytesLeft() const noexcept { return static_cast<std::uint64_t>(end - position); }

    [[nodiscard]] std::uint32_t uint32()
    {
        return valueAt<std::uint32_t>(bytes(sizeof(std::uint32_t), sizeof(std::uint32_t)));
    }
    [[nodiscard]] std::int32_t int32() { return static_cast<std::int32_t>(uint32()); }
    [[nodiscard]] bool flag() { return uint32() != 0; }

    /// Returns `size` bytes that begin at the next multiple of `alignment`, a power of two. Valid as long as the reply.
    [[nodiscard]] const std::uint8_t* bytes(std::uint64_t size, std::uint64_t alignment)
    {
        const std::uint64_t gap = (0 - static_cast<std::uint64_t>(position - begin)) & (alignment - 1);
        const std::uint64_t left = bytesLeft();
        if (gap > left || size > left - gap)
            throw DamagedReply();
        const std::uint8_t* const found = position + gap;
        position = found + size;
        return found;
    }

    [[nodiscard]] std::u16string_view string();
    [[nodiscard]] std::wstring wideString();

    /// Returns the next handle, which the caller now owns.
    [[nodiscard]] VelmoraHandle takeHandle()
    {
        if (reply.handlesTaken >= handleCount)
            throw DamagedReply();
        return valueAt<VelmoraHandle>(end + reply.handlesTaken++ * sizeof(VelmoraHandle));
    }

    [[nodiscard]] const TessaportEntryPoints& table() const noexcept { return *entryPoints; }

private:
    template <class Value>
    [[nodiscard]] static Value valueAt(const std::uint8_t* place) noexcept
    {
        Value value;
        std::memcpy(&value, place, sizeof value);
        return value;
    }

    VelmoraReply& reply;
    const TessaportEntryPoints* entryPoints;
    const std::uint8_t* position = nullptr;
    const std::uint8_t* end = nullptr;
    const std::uint8_t* begin = nullptr;
    std::uint32_t recordCount = 0;
    std::uint32_t handleCount = 0;
};

} // namespace Quorvex::Velmora::Tessaport
