// Makes QVStrings from texts that crossed the C boundary, and reads their length without a search. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::Common
{

/// One text to make: where it goes, and its UTF-16. It ends at its first zero character.
struct TextAssignment {
    QVString* target;
    std::u16string_view source;
};

struct TextAccess {
    /// Assigns all the texts in one allocation that lives as long as any of them, or any copy.
    /// When memory runs out nothing is assigned.
    static void assign(const TextAssignment* assignments, std::size_t count) { assign(assignments, count, 0, 0); }

    /// The same with room for `roomSize` bytes of something else in the allocation, aligned for anything. The room has
    /// `roomOwners` owners of its own, each of which calls releaseRoom when it goes.
    /// @return the room; null when its size is 0.
    static void* assign(
        const TextAssignment* assignments, std::size_t count, std::size_t roomSize, std::uint32_t roomOwners);

    static void releaseRoom(void* room) noexcept;

    [[nodiscard]] static std::wstring_view view(const QVString& text) noexcept;
    [[nodiscard]] static QVString make(std::wstring_view text);
};

} // namespace Quorvex::Velmora::Common
