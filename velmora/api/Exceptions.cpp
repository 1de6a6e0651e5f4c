#include "velmora/api/Exceptions.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

wchar_t* duplicated(const wchar_t* source, std::size_t length)
{
    if (length >= std::numeric_limits<std::size_t>::max() / sizeof(wchar_t))
        throw std::bad_alloc();
    auto* const copy = static_cast<wchar_t*>(std::malloc((length + 1) * sizeof(wchar_t)));
    if (copy == nullptr)
        throw std::bad_alloc();
    std::size_t count = 0;
    for (; count < length && source[count] != L'\0'; ++count)
        copy[count] = source[count];
    copy[count] = L'\0';
    return copy;
}

std::shared_ptr<const char> narrowForm(const wchar_t* message)
{
    const std::optional<std::string> utf8 = Common::Unicode::toUtf8Strict(message);
    if (!utf8)
        return {std::shared_ptr<const char>(), "bad conversion"};
    auto text = std::make_shared<std::string>(*utf8);
    return {text, text->c_str()};
}

} // namespace

ApiException::ApiException() : ApiException(L"", 0) {}

ApiException::ApiException(const wchar_t* text, std::size_t count)
    : message(copyOf(text, count)), length(text == nullptr ? 0 : count)
{
}

ApiException::ApiException(const ApiException& other)
    : std::exception(), message(copyOf(other.message.get(), other.length))
{
}

ApiException::ApiException(ApiException&& other) : ApiException(std::as_const(other)) {}

ApiException::~ApiException() = default;

ApiException& ApiException::operator=(const ApiException& other)
{
    if (this == &other)
        return *this;
    std::exception::operator=(other);
    message = other.message;
    length = other.length;
    std::atomic_store(&narrow, std::atomic_load(&other.narrow));
    return *this;
}

ApiException& ApiException::operator=(ApiException&& other) { return *this = std::as_const(other); }

const char* ApiException::what() const noexcept
{
    if (message == nullptr)
        return "";
    try {
        std::shared_ptr<const char> made = std::atomic_load(&narrow);
        if (made.get() == nullptr) {
            auto own = narrowForm(message.get());
            // Another thread may have been first. Its result stays, because pointers to it may have been given out.
            made = std::atomic_compare_exchange_strong(&narrow, &made, own) ? own : made;
        }
        return made.get();
    } catch (...) {
        return "out of memory";
    }
}

const wchar_t* ApiException::getErrorMessage() const noexcept { return message.get(); }

void ApiException::copyInfo(const wchar_t*& source, wchar_t*& target, std::size_t count)
{
    target = source == nullptr ? nullptr : duplicated(source, count);
}

ApiException::SharedText ApiException::copyOf(const wchar_t* source, std::size_t count)
{
    wchar_t* copy = nullptr;
    copyInfo(source, copy, count);
    return copy == nullptr ? SharedText() : SharedText(copy, [](wchar_t* text) { std::free(text); });
}

ApiExpectedException::ApiExpectedException() : ApiExpectedException(L"", L"", 0) {}

ApiExpectedException::ApiExpectedException(const wchar_t* text, const wchar_t* code, std::size_t count)
    : ApiException(text, count), errorCode(copyOf(code, count))
{
}

ApiExpectedException::ApiExpectedException(const ApiExpectedException& other)
    : ApiException(L"", 0), errorCode(copyOf(other.errorCode.get(), other.givenLength()))
{
}

ApiExpectedException::ApiExpectedException(ApiExpectedException&& other) : ApiExpectedException(std::as_const(other)) {}

ApiExpectedException::~ApiExpectedException() = default;

ApiExpectedException& ApiExpectedException::operator=(const ApiExpectedException& other)
{
    if (this == &other)
        return *this;
    ApiException::operator=(other);
    errorCode = other.errorCode;
    return *this;
}

ApiExpectedException& ApiExpectedException::operator=(ApiExpectedException&& other)
{
    return *this = std::as_const(other);
}

const wchar_t* ApiExpectedException::getErrorCode() const noexcept { return errorCode.get(); }

HttpException::HttpException() : HttpException(L"", L"", 0) {}
HttpException::HttpException(const wchar_t* message, const wchar_t* errorCode, std::size_t length)
    : ApiExpectedException(message, errorCode, length)
{
}
HttpException::HttpException(const HttpException& other) = default;
HttpException::HttpException(HttpException&& other) = default;
HttpException::~HttpException() = default;
HttpException& HttpException::operator=(const HttpException& other) = default;
HttpException& HttpException::operator=(HttpException&& other) = default;

TessaportNotInstalledException::TessaportNotInstalledException() : TessaportNotInstalledException(L"", 0) {}
TessaportNotInstalledException::TessaportNotInstalledException(const wchar_t* message, std::size_t length)
    : ApiException(message, length)
{
}
TessaportNotInstalledException::TessaportNotInstalledException(const TessaportNotInstalledException& other) = default;
TessaportNotInstalledException::TessaportNotInstalledException(TessaportNotInstalledException&& other) = default;
TessaportNotInstalledException::~TessaportNotInstalledException() = default;
TessaportNotInstalledException& TessaportNotInstalledException::operator=(
    const TessaportNotInstalledException& other) = default;
TessaportNotInstalledException& TessaportNotInstalledException::operator=(
    TessaportNotInstalledException&& other) = default;

TessaportNotRunningException::TessaportNotRunningException() : TessaportNotRunningException(L"", 0) {}
TessaportNotRunningException::TessaportNotRunningException(const wchar_t* message, std::size_t length)
    : ApiException(message, length)
{
}
TessaportNotRunningException::TessaportNotRunningException(const TessaportNotRunningException& other) = default;
TessaportNotRunningException::TessaportNotRunningException(TessaportNotRunningException&& other) = default;
TessaportNotRunningException::~TessaportNotRunningException() = default;
TessaportNotRunningException& TessaportNotRunningException::operator=(
    const TessaportNotRunningException& other) = default;
TessaportNotRunningException& TessaportNotRunningException::operator=(TessaportNotRunningException&& other) = default;

TessaportRequiresUpdateException::TessaportRequiresUpdateException() : TessaportRequiresUpdateException(L"", 0) {}
TessaportRequiresUpdateException::TessaportRequiresUpdateException(const wchar_t* message, std::size_t length)
    : ApiException(message, length)
{
}
TessaportRequiresUpdateException::TessaportRequiresUpdateException(
    const TessaportRequiresUpdateException& other) = default;
TessaportRequiresUpdateException::TessaportRequiresUpdateException(TessaportRequiresUpdateException&& other) = default;
TessaportRequiresUpdateException::~TessaportRequiresUpdateException() = default;
TessaportRequiresUpdateException& TessaportRequiresUpdateException::operator=(
    const TessaportRequiresUpdateException& other) = default;
TessaportRequiresUpdateException& TessaportRequiresUpdateException::operator=(
    TessaportRequiresUpdateException&& other) = default;

TessaportApiRequiresUpdateException::TessaportApiRequiresUpdateException() : TessaportApiRequiresUpdateException(L"", 0)
{
}
TessaportApiRequiresUpdateException::TessaportApiRequiresUpdateException(const wchar_t* message, std::size_t length)
    : ApiException(message, length)
{
}
TessaportApiRequiresUpdateException::TessaportApiRequiresUpdateException(
    const TessaportApiRequiresUpdateException& other) = default;
TessaportApiRequiresUpdateException::TessaportApiRequiresUpdateException(
    TessaportApiRequiresUpdateException&& other) = default;
TessaportApiRequiresUpdateException::~TessaportApiRequiresUpdateException() = default;
TessaportApiRequiresUpdateException& TessaportApiRequiresUpdateException::operator=(
    const TessaportApiRequiresUpdateException& other) = default;
TessaportApiRequiresUpdateException& TessaportApiRequiresUpdateException::operator=(
    TessaportApiRequiresUpdateException&& other) = default;

TessaportForcedUpdateException::TessaportForcedUpdateException() : TessaportForcedUpdateException(L"", 0) {}
TessaportForcedUpdateException::TessaportForcedUpdateException(const wchar_t* message, std::size_t length)
    : ApiException(message, length)
{
}
TessaportForcedUpdateException::TessaportForcedUpdateException(const TessaportForcedUpdateException& other) = default;
TessaportForcedUpdateException::TessaportForcedUpdateException(TessaportForcedUpdateException&& other) = default;
TessaportForcedUpdateException::~TessaportForcedUpdateException() = default;
TessaportForcedUpdateException& TessaportForcedUpdateException::operator=(
    const TessaportForcedUpdateException& other) = default;
TessaportForcedUpdateException& TessaportForcedUpdateException::operator=(
    TessaportForcedUpdateException&& other) = default;

} // namespace Quorvex::Velmora::TessaportAPI
