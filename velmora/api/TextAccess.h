// What QVString does for this library only: it takes UTF-16, several strings in one allocation, and tells its length.
// Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <velmora/api/QVString.h>
#include <velmora/api/TextPool.h>

namespace Quorvex::Velmora::Common
{

/// A string to make: where it goes, and its UTF-16. It ends at its first zero character.
struct TextAssignment {
    QVString* target;
    std::u16string_view source;
};

struct TextAccess {
    /// Assigns all strings in one allocation that lives as long as any of them or any copy. If the allocation fails,
    /// nothing is assigned.
    static void assign(const TextAssignment* assignments, std::size_t count);

    /// Does the same in a block of the pool, with room for something else.
    ///
    /// @param roomSize    bytes, aligned for any type.
    /// @param roomOwners  how many times releaseRoom() will be called.
    /// @return the room; null if its size is 0.
    static void* assign(TextPool& pool, const TextAssignment* assignments, std::size_t count, std::size_t roomSize,
        std::uint32_t roomOwners);

    static void releaseRoom(void* room) noexcept;

    [[nodiscard]] static std::wstring_view view(const QVString& text) noexcept;
    [[nodiscard]] static QVString make(std::wstring_view text);
};

} // namespace Quorvex::Velmora::Common
