// Converts identifiers from and to the 16 bytes in which they cross the C boundary. Internal.
#pragma once

#include <cstdint>
#include <cstring>

#include <velmora/api/QVUUID.h>

namespace Quorvex::Velmora::Common
{

struct UuidAccess {
    static void assign(QVUUID& target, const std::uint8_t* bytes) noexcept
    {
        std::memcpy(target.bytes.data(), bytes, target.bytes.size());
        target.valid = true;
    }

    /// Returns false for an identifier that was made from text that is not one.
    [[nodiscard]] static bool isValid(const QVUUID& id) noexcept { return id.valid; }
    [[nodiscard]] static const std::uint8_t* bytes(const QVUUID& id) noexcept { return id.bytes.data(); }
};

} // namespace Quorvex::Velmora::Common
