#include "velmora/bridge/ExceptionTranslation.h"

#include <exception>

#include <velmora/api/Exceptions.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

using Throw = void (*)(const wchar_t*, std::size_t);

// In the order in which the managed half tries them; the row after the last is every other managed exception.
constexpr Throw Rows[] = {
    throwTessaportApiRequiresUpdateException,
    throwTessaportForcedUpdateException,
    throwTessaportNotRunningException,
    throwTessaportNotInstalledException,
    throwTessaportRequiresUpdateException,
    throwApiException,
};
constexpr std::int32_t LastRow = sizeof Rows / sizeof *Rows;

[[noreturn]] void throwRow(std::int32_t row, const std::wstring& message)
{
    const bool known = row >= 1 && row <= LastRow;
    Rows[(known ? row : LastRow) - 1](message.c_str(), message.size());
    std::terminate(); // Not reached: every row throws.
}

} // namespace

void throwUnlessDone(std::int32_t row, OwnedReply& reply)
{
    if (row != 0)
        throw ManagedFailure(row, reply.message());
}

void runWhileHandlingExceptions(std::function<void()> operation)
{
    try {
        operation();
    } catch (const ManagedFailure& failure) {
        throwRow(failure.row(), failure.message());
    } catch (const TessaportAPI::ApiException&) {
        throw;
    } catch (const std::exception& failure) {
        const std::wstring message = Common::Unicode::fromUtf8(failure.what());
        throwApiException(message.c_str(), message.size());
    }
}

void throwTessaportApiRequiresUpdateException(const wchar_t* message, std::size_t length)
{
    throw TessaportAPI::TessaportApiRequiresUpdateException(message, length);
}

void throwTessaportForcedUpdateException(const wchar_t* message, std::size_t length)
{
    throw TessaportAPI::TessaportForcedUpdateException(message, length);
}

void throwTessaportNotRunningException(const wchar_t* message, std::size_t length)
{
    throw TessaportAPI::TessaportNotRunningException(message, length);
}

void throwTessaportNotInstalledException(const wchar_t* message, std::size_t length)
{
    throw TessaportAPI::TessaportNotInstalledException(message, length);
}

void throwTessaportRequiresUpdateException(const wchar_t* message, std::size_t length)
{
    throw TessaportAPI::TessaportRequiresUpdateException(message, length);
}

void throwApiException(const wchar_t* message, std::size_t length)
{
    throw TessaportAPI::ApiException(message, length);
}

} // namespace Quorvex::Velmora::Tessaport
