/// @file
/// Turns what goes wrong inside a request into the exceptions that hosts know.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include <velmora/bridge/boundary/OwnedReply.h>

namespace Quorvex::Velmora::Tessaport
{

/// A managed exception, as it crosses the boundary. Does not leave runWhileHandlingExceptions().
class ManagedFailure
{
public:
    ManagedFailure(std::int32_t row, std::wstring message) : rowNumber(row), text(std::move(message)) {}

    /// The number of the first row of the exception table whose managed type fits.
    [[nodiscard]] std::int32_t row() const noexcept { return rowNumber; }
    [[nodiscard]] const std::wstring& message() const noexcept { return text; }

private:
    std::int32_t rowNumber;
    std::wstring text;
};

/// Throws if a call has failed.
///
/// @param row  what the call returned; unless it is 0, `reply` holds the message.
/// @throws ManagedFailure unless the row is 0.
void throwUnlessDone(std::int32_t row, OwnedReply& reply);

/// Throws the exception that is being handled as hosts know it: a ManagedFailure as the native exception of its row,
/// with its message unchanged; an ApiException as it is; another std::exception as ApiException with its what().
[[noreturn]] void rethrowAsNative();

/// Runs the operation once, and translates what it throws as rethrowAsNative() does.
template <class Operation>
void runWhileHandlingExceptions(Operation operation)
{
    try {
        operation();
    } catch (...) {
        rethrowAsNative();
    }
}

[[noreturn]] void throwTessaportApiRequiresUpdateException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwTessaportForcedUpdateException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwTessaportNotRunningException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwTessaportNotInstalledException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwTessaportRequiresUpdateException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwApiException(const wchar_t* message, std::size_t length);

} // namespace Quorvex::Velmora::Tessaport
