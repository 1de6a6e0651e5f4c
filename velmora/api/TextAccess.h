// Makes QVStrings from texts that crossed the C boundary, and reads their length without a search. Internal.
#pragma once

#include <cstddef>
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
    static void assign(const TextAssignment* assignments, std::size_t count);

    [[nodiscard]] static std::wstring_view view(const QVString& text) noexcept;
    [[nodiscard]] static QVString make(std::wstring_view text);
};

} // namespace Quorvex::Velmora::Common
