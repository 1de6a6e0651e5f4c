#include "velmora/bridge/ExceptionTranslation.h"

#include <exception>

#include <velmora/api/Exceptions.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

// The rows are tried in this order by managed/Velmora.Bridge/Boundary/Failure.cs.
[[noreturn]] void throwRow(std::int32_t row, const std::wstring& message)
{
    const wchar_t* const text = message.c_str();
    const std::size_t length = message.size();
    switch (row) {
    case 1:
        throwTessaportApiRequiresUpdateException(text, length);
    case 2:
        throwTessaportForcedUpdateException(text, length);
    case 3:
        throwTessaportNotRunningException(text, length);
    case 4:
        throwTessaportNotInstalledException(text, length);
    case 5:
        throwTessaportRequiresUpdateException(text, length);
    default:
        throwApiException(text, length);
    }
}

} // namespace

void throwUnlessDone(std::int32_t row, OwnedReply& reply)
{
    if (row != 0)
        throw ManagedFailure(row, reply.message());
}

void rethrowAsNative()
{
    try {
        throw;
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
