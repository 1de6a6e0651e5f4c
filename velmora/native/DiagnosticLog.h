// The lines that this library writes to the host's log. Internal.
#pragma once

#include <exception>
#include <initializer_list>
#include <string_view>
#include <type_traits>

#include <velmora/api/QVCode.h>
#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// A part of a narrow text. A QVString is narrowed when the line is made, because that may need memory.
class NarrowPart
{
public:
    NarrowPart(std::string_view text) noexcept : text(text) {}
    NarrowPart(const char* text) noexcept : text(text) {}
    NarrowPart(const Common::QVString& string) noexcept : string(&string) {}

    [[nodiscard]] std::string_view view() const { return string == nullptr ? text : string->c_str(); }

private:
    std::string_view text;
    const Common::QVString* string = nullptr;
};

/// The parts of a text. They are joined where a failure cannot reach the caller.
using WideParts = std::initializer_list<std::wstring_view>;
using NarrowParts = std::initializer_list<NarrowPart>;

/// Writes "[TP] " and the text, cut after 1000 characters. Narrow text is UTF-8.
///
/// Like the functions below it drops a line that cannot be written: a log that fails must not fail the operation that
/// it reports on.
void logMessage(WideParts text) noexcept;
void logMessage(NarrowParts text) noexcept;

/// Writes "[TP] ERROR: " and the text, cut the same way.
void logErrorText(WideParts text) noexcept;
void logErrorText(NarrowParts text) noexcept;

/// Writes "[TP] ERROR: ", the text, " - " and what() with each of its bytes as one character, cut the same way.
void logError(WideParts text, const std::exception& exception) noexcept;

/// Runs a one-shot operation. An exception derived from std::exception ends it with one line in the log.
///
/// @param failure  what the line says.
/// @param subject  follows on `failure` in the line: the path that the operation is about.
/// @return what the operation returns, or true when it returns nothing. After an exception QVCode::Failure, false or
///         whatever else a value-initialized result is.
template <class Operation>
auto logged(std::wstring_view failure, std::wstring_view subject, Operation operation)
{
    using Result = decltype(operation());
    try {
        if constexpr (std::is_void_v<Result>) {
            operation();
            return true;
        } else {
            return operation();
        }
    } catch (const std::exception& e) {
        logError({failure, subject}, e);
        if constexpr (std::is_void_v<Result>)
            return false;
        else if constexpr (std::is_same_v<Result, Common::QVCode>)
            return Common::QVCode::Failure;
        else
            return Result();
    }
}

template <class Operation>
auto logged(std::wstring_view failure, Operation operation)
{
    return logged(failure, std::wstring_view(), operation);
}

} // namespace Quorvex::Velmora::TessaportAPI
