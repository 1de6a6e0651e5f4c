#pragma once

#include <array>
#include <cstdint>
#include <string>

#include <velmora/api/QVString.h>
#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Common
{

/// A 128-bit identifier; drives have one each.
class VELMORA_API QVUUID
{
public:
    /// Makes a new random identifier (version 4) in a few nanoseconds. It differs at every call, on every thread and
    /// after a fork, and must not be used as a secret.
    QVUUID() noexcept;

    /// Parses the text form: 32 hexadecimal digits of either case in groups of 8-4-4-4-12 joined by hyphens, with or
    /// without braces around them.
    ///
    /// Null and any other text make an invalid identifier. It is nil and compares equal to the all-zero identifier, but
    /// its text form is empty, and a request with it fails with ApiException.
    QVUUID(const char* text) noexcept;

    /// Makes an equal identifier, not a new one.
    QVUUID(const QVUUID& other) noexcept = default;
    ~QVUUID() = default;

    /// Makes this identifier equal to `other`.
    void operator=(const QVUUID& other) noexcept
    {
        bytes = other.bytes;
        valid = other.valid;
    }

    /// Returns the text form: 36 characters with lower-case digits and hyphens, without braces. Empty if the identifier
    /// is invalid.
    [[nodiscard]] QVString getString() const;

    /// Returns the text form as a wide string.
    [[nodiscard]] std::wstring getWString() const;

    /// Returns whether all bits are zero, as those of an invalid identifier are.
    [[nodiscard]] bool isNil() const noexcept;

    /// Compares the bits: an invalid identifier equals the all-zero one.
    [[nodiscard]] bool operator==(const QVUUID& other) const noexcept { return bytes == other.bytes; }
    /// Returns whether operator== does not hold.
    [[nodiscard]] bool operator!=(const QVUUID& other) const noexcept { return !(*this == other); }

private:
    friend struct UuidAccess;

    // In the order of the text form.
    std::array<std::uint8_t, 16> bytes;
    // False when made from text that is not an identifier, which must not be sent as the all-zero one.
    bool valid;
};

} // namespace Quorvex::Velmora::Common
