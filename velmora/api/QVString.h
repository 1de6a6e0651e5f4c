/// The text type of every record and request.
#pragma once

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Common
{

/// An owned text that can be read both as wide (`wchar_t`) and as narrow (UTF-8) text.
///
/// A value type: copies behave as deep copies, and cost next to nothing. Const operations, copying included, may run on
/// several threads at once. Allocation failure is reported as std::bad_alloc.
class VELMORA_API QVString
{
public:
    /// The empty text.
    QVString() noexcept = default;

    /// Text of a zero-terminated UTF-8 string; null gives the empty text. Every byte that is not part of valid UTF-8
    /// becomes U+FFFD.
    QVString(const char* text);

    /// Text of a zero-terminated wide string, kept character by character; null gives the empty text.
    QVString(const wchar_t* text);

    QVString(const QVString& other) noexcept;
    QVString(QVString&& other) noexcept : representation(other.representation) { other.representation = nullptr; }
    ~QVString()
    {
        if (representation != nullptr)
            release(representation);
    }

    QVString& operator=(const QVString& other) noexcept;
    QVString& operator=(QVString&& other) noexcept;
    QVString& operator=(const wchar_t* text);

    /// Exact, case-sensitive equality.
    [[nodiscard]] bool operator==(const QVString& other) const noexcept;
    [[nodiscard]] bool operator!=(const QVString& other) const noexcept { return !(*this == other); }

    /// Order by character code.
    [[nodiscard]] bool operator<(const QVString& other) const noexcept;

    /// The text as zero-terminated UTF-8, valid while this object lives and is not assigned to. An unpaired surrogate
    /// reads as U+FFFD. Never null.
    [[nodiscard]] const char* c_str() const;

    /// The text as a zero-terminated wide string, valid while this object lives and is not assigned to. Never null.
    [[nodiscard]] const wchar_t* w_str() const noexcept;

    /// True when the text has no characters.
    [[nodiscard]] bool Empty() const noexcept { return representation == nullptr; }

private:
    friend struct TextAccess;
    struct Representation;

    static void release(Representation* text) noexcept;
    void swap(QVString& other) noexcept;

    // Null is the empty text.
    Representation* representation = nullptr;
};

} // namespace Quorvex::Velmora::Common
