#pragma once

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Common
{

/// An owned string that can be read both as wide (`wchar_t`) and as narrow (UTF-8) string.
///
/// A value type: a copy behaves as a deep copy and costs a few nanoseconds. Const operations, copying included, may run
/// on several threads at once.
///
/// @throws std::bad_alloc when an allocation fails.
class VELMORA_API QVString
{
public:
    /// The empty string.
    QVString() noexcept = default;

    /// Converts a zero-terminated UTF-8 string; null gives the empty string. Every byte that is not part of valid UTF-8
    /// becomes U+FFFD.
    QVString(const char* string);

    /// Copies a zero-terminated wide string character by character; null gives the empty string.
    QVString(const wchar_t* string);

    /// Makes an equal string; see the class.
    QVString(const QVString& other) noexcept;

    /// Takes over the string; `other` is empty afterwards.
    QVString(QVString&& other) noexcept : representation(other.representation) { other.representation = nullptr; }
    ~QVString()
    {
        if (representation != nullptr)
            release(representation);
    }

    /// Replaces the string, which ends the validity of what c_str() and w_str() have returned.
    QVString& operator=(const QVString& other) noexcept;

    /// Replaces the string by that of `other`, which is empty afterwards.
    QVString& operator=(QVString&& other) noexcept;

    /// Replaces the string by a copy of a zero-terminated wide one; null gives the empty string.
    QVString& operator=(const wchar_t* string);

    /// Compares exactly, with regard to case.
    [[nodiscard]] bool operator==(const QVString& other) const noexcept;
    /// Returns whether operator== does not hold.
    [[nodiscard]] bool operator!=(const QVString& other) const noexcept { return !(*this == other); }

    /// Orders strings by the codes of their characters.
    [[nodiscard]] bool operator<(const QVString& other) const noexcept;

    /// Returns the string as zero-terminated UTF-8, never null. An unpaired surrogate becomes U+FFFD. The result is
    /// valid until this object is destroyed or assigned to.
    [[nodiscard]] const char* c_str() const;

    /// Returns the string as a zero-terminated wide string, never null. The result is valid until this object is
    /// destroyed or assigned to.
    [[nodiscard]] const wchar_t* w_str() const noexcept;

    /// Returns whether the string has no characters.
    [[nodiscard]] bool Empty() const noexcept { return representation == nullptr; }

private:
    friend struct TextAccess;
    struct Representation;

    static void release(Representation* text) noexcept;
    void swap(QVString& other) noexcept;

    // Null is the empty string.
    Representation* representation = nullptr;
};

} // namespace Quorvex::Velmora::Common
