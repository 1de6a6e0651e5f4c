// Reads the records of a reply, which managed/Velmora.Bridge/Replies/ReplyWriter.cs describes, and checks every length
// against the end of the reply before it is believed.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

#include <velmora/bridge/replies/OwnedReply.h>

namespace Quorvex::Velmora::Tessaport
{

/// The reply does not hold what its lengths promise.
class DamagedReply : public std::exception
{
public:
    [[nodiscard]] const char* what() const noexcept override
    {
        return "The reply of the .NET bridge is damaged: its lengths do not agree with its size. Install the library "
               "and "
               "its bridge folder from one release.";
    }
};

class ReplyReader
{
public:
    /// @throws DamagedReply when the header is not one.
    explicit ReplyReader(OwnedReply& owned);

    /// Number of records, which is only as true as the sender: see plausible.
    [[nodiscard]] std::uint32_t count() const noexcept { return recordCount; }

    /// How many records of at least `size` bytes each can follow at the most, out of `promised`. Bounds what is
    /// reserved for a count that nothing has confirmed.
    [[nodiscard]] std::uint32_t plausible(std::uint32_t promised, std::uint32_t size) const noexcept;

    [[nodiscard]] std::uint32_t uint32();
    [[nodiscard]] std::int32_t int32() { return static_cast<std::int32_t>(uint32()); }
    [[nodiscard]] bool flag() { return uint32() != 0; }

    /// `size` bytes behind the next multiple of `alignment`; valid as long as the reply.
    [[nodiscard]] const std::uint8_t* bytes(std::uint64_t size, std::uint64_t alignment);

    [[nodiscard]] std::u16string_view text();
    [[nodiscard]] std::wstring wideText();

    /// The next handle, which is the caller's from now on.
    [[nodiscard]] VelmoraHandle takeHandle();

    [[nodiscard]] const TessaportEntryPoints& table() const noexcept { return owned.table(); }

private:
    OwnedReply& owned;
    const std::uint8_t* position = nullptr;
    const std::uint8_t* end = nullptr;
    const std::uint8_t* begin = nullptr;
    std::uint32_t recordCount = 0;
    std::uint32_t handleCount = 0;
};

} // namespace Quorvex::Velmora::Tessaport
