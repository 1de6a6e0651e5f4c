/// The identifier type of drives.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include <velmora/api/QVString.h>
#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Common
{

/// A 128-bit identifier held by value.
class VELMORA_API QVUUID
{
public:
    /// A new random identifier (version 4), different at every call, on every thread and after a fork. Costs a few
    /// nanoseconds; not for secrets.
    QVUUID() noexcept;

    /// Reads the text form: 32 hexadecimal digits of either case in groups of 8-4-4-4-12 joined by hyphens, with or
    /// without braces around them. Null and any other text give a nil identifier whose text form is empty; a request
    /// made with it fails with ApiException.
    QVUUID(const char* text) noexcept;

    QVUUID(const QVUUID& other) noexcept = default;
    ~QVUUID() = default;

    void operator=(const QVUUID& other) noexcept
    {
        bytes = other.bytes;
        valid = other.valid;
    }

    /// The text form: 36 characters with lower-case digits and hyphens, without braces.
    [[nodiscard]] QVString getString() const;
    [[nodiscard]] std::wstring getWString() const;

    /// True for the all-zero identifier.
    [[nodiscard]] bool isNil() const noexcept;

    [[nodiscard]] bool operator==(const QVUUID& other) const noexcept { return bytes == other.bytes; }
    [[nodiscard]] bool operator!=(const QVUUID& other) const noexcept { return !(*this == other); }

private:
    friend struct UuidAccess;

    // In the order of the text form.
    std::array<std::uint8_t, 16> bytes;
    // False when made from text that is no identifier: it must not pass for the all-zero one.
    bool valid;
};

} // namespace Quorvex::Velmora::Common
