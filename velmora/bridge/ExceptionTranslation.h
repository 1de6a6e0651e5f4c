// Turns what goes wrong inside a request into the exceptions that hosts know.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include <velmora/bridge/replies/OwnedReply.h>

namespace Quorvex::Velmora::Tessaport
{

/// A managed exception, as it comes over the boundary. Never leaves runWhileHandlingExceptions.
class ManagedFailure
{
public:
    ManagedFailure(std::int32_t row, std::wstring message) : rowNumber(row), text(std::move(message)) {}

    /// Number of the first row of the exception table whose managed type fits.
    [[nodiscard]] std::int32_t row() const noexcept { return rowNumber; }
    [[nodiscard]] const std::wstring& message() const noexcept { return text; }

private:
    std::int32_t rowNumber;
    std::wstring text;
};

/// @param row  what the call returned; its message stands in the reply.
/// @throws ManagedFailure unless the row is 0.
void throwUnlessDone(std::int32_t row, OwnedReply& reply);

/// Runs the operation once. A managed failure leaves as the native exception of its row, with its message unchanged; a
/// native exception as ApiException with its what(), unless it is an ApiException already.
void runWhileHandlingExceptions(std::function<void()> operation);

[[noreturn]] void throwTessaportApiRequiresUpdateException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwTessaportForcedUpdateException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwTessaportNotRunningException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwTessaportNotInstalledException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwTessaportRequiresUpdateException(const wchar_t* message, std::size_t length);
[[noreturn]] void throwApiException(const wchar_t* message, std::size_t length);

} // namespace Quorvex::Velmora::Tessaport
