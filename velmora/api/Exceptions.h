/// The exceptions by which requests report failures.
#pragma once

#include <cstddef>
#include <exception>
#include <memory>

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// A request failed. The base of all exceptions of this library, and what is thrown when no more special one fits.
///
/// Carries a wide message. After an assignment both objects share one text; every getter may be called on any thread.
/// A copy keeps the message but not the length that the message was built with, so that a copy of the copy has an empty
/// message: catch by reference. Constructors and copies report allocation failure as std::bad_alloc.
class VELMORA_API ApiException : public std::exception
{
public:
    /// An empty message.
    ApiException();

    /// @param message  copied up to its terminator, at most `length` characters of it; null gives no message.
    /// @param length   number of characters.
    ApiException(const wchar_t* message, std::size_t length);

    ApiException(const ApiException& other);
    ApiException(ApiException&& other);
    ~ApiException() override;

    ApiException& operator=(const ApiException& other);
    ApiException& operator=(ApiException&& other);

    /// The message as UTF-8, valid while this object lives and is not assigned to. Empty when there is no message,
    /// "bad conversion" when it has no UTF-8 form.
    [[nodiscard]] const char* what() const noexcept override;

    /// The message; null when the exception was built from a null one. Valid as what() is.
    [[nodiscard]] const wchar_t* getErrorMessage() const noexcept;

protected:
    /// Sets `target` to a new copy of at most `length` characters of `source`, to be released with std::free, or to
    /// null when `source` is null.
    void copyInfo(const wchar_t*& source, wchar_t*& target, std::size_t length);

    /// A text that exceptions share after an assignment. Null stands for no text.
    using SharedText = std::shared_ptr<wchar_t>;

    /// copyInfo into a shared text.
    SharedText copyOf(const wchar_t* source, std::size_t length);

    /// The number of characters given to the constructor; 0 in a copy.
    [[nodiscard]] std::size_t givenLength() const noexcept { return length; }

private:
    SharedText message;
    std::size_t length = 0;
    // The narrow form, made when first asked for: what() must return text that stays valid.
    mutable std::shared_ptr<const char> narrow;
};

/// A failure that carries an error code beside its message. Not raised by this library; for hosts.
class VELMORA_API ApiExpectedException : public ApiException
{
public:
    /// Empty message and code.
    ApiExpectedException();

    /// @param length  number of characters of the message; of the error code, too, at most so many are kept.
    ApiExpectedException(const wchar_t* message, const wchar_t* errorCode, std::size_t length);

    /// Copies the error code, and not the message.
    ApiExpectedException(const ApiExpectedException& other);
    ApiExpectedException(ApiExpectedException&& other);
    ~ApiExpectedException() override;

    ApiExpectedException& operator=(const ApiExpectedException& other);
    ApiExpectedException& operator=(ApiExpectedException&& other);

    /// The error code; null when the exception was built from a null one.
    [[nodiscard]] const wchar_t* getErrorCode() const noexcept;

private:
    SharedText errorCode;
};

/// A failed web request. Not raised by this library; for hosts.
class VELMORA_API HttpException : public ApiExpectedException
{
public:
    HttpException();
    HttpException(const wchar_t* message, const wchar_t* errorCode, std::size_t length);
    HttpException(const HttpException& other);
    HttpException(HttpException&& other);
    ~HttpException() override;
    HttpException& operator=(const HttpException& other);
    HttpException& operator=(HttpException&& other);
};

/// The sync application is not installed.
class VELMORA_API TessaportNotInstalledException : public ApiException
{
public:
    TessaportNotInstalledException();
    TessaportNotInstalledException(const wchar_t* message, std::size_t length);
    TessaportNotInstalledException(const TessaportNotInstalledException& other);
    TessaportNotInstalledException(TessaportNotInstalledException&& other);
    ~TessaportNotInstalledException() override;
    TessaportNotInstalledException& operator=(const TessaportNotInstalledException& other);
    TessaportNotInstalledException& operator=(TessaportNotInstalledException&& other);
};

/// The sync application is installed but not running.
class VELMORA_API TessaportNotRunningException : public ApiException
{
public:
    TessaportNotRunningException();
    TessaportNotRunningException(const wchar_t* message, std::size_t length);
    TessaportNotRunningException(const TessaportNotRunningException& other);
    TessaportNotRunningException(TessaportNotRunningException&& other);
    ~TessaportNotRunningException() override;
    TessaportNotRunningException& operator=(const TessaportNotRunningException& other);
    TessaportNotRunningException& operator=(TessaportNotRunningException&& other);
};

/// The sync application must be updated before it can serve requests.
class VELMORA_API TessaportRequiresUpdateException : public ApiException
{
public:
    TessaportRequiresUpdateException();
    TessaportRequiresUpdateException(const wchar_t* message, std::size_t length);
    TessaportRequiresUpdateException(const TessaportRequiresUpdateException& other);
    TessaportRequiresUpdateException(TessaportRequiresUpdateException&& other);
    ~TessaportRequiresUpdateException() override;
    TessaportRequiresUpdateException& operator=(const TessaportRequiresUpdateException& other);
    TessaportRequiresUpdateException& operator=(TessaportRequiresUpdateException&& other);
};

/// The sync application's programming interface must be updated.
class VELMORA_API TessaportApiRequiresUpdateException : public ApiException
{
public:
    TessaportApiRequiresUpdateException();
    TessaportApiRequiresUpdateException(const wchar_t* message, std::size_t length);
    TessaportApiRequiresUpdateException(const TessaportApiRequiresUpdateException& other);
    TessaportApiRequiresUpdateException(TessaportApiRequiresUpdateException&& other);
    ~TessaportApiRequiresUpdateException() override;
    TessaportApiRequiresUpdateException& operator=(const TessaportApiRequiresUpdateException& other);
    TessaportApiRequiresUpdateException& operator=(TessaportApiRequiresUpdateException&& other);
};

/// An update of the sync application is pending that must be made first.
class VELMORA_API TessaportForcedUpdateException : public ApiException
{
public:
    TessaportForcedUpdateException();
    TessaportForcedUpdateException(const wchar_t* message, std::size_t length);
    TessaportForcedUpdateException(const TessaportForcedUpdateException& other);
    TessaportForcedUpdateException(TessaportForcedUpdateException&& other);
    ~TessaportForcedUpdateException() override;
    TessaportForcedUpdateException& operator=(const TessaportForcedUpdateException& other);
    TessaportForcedUpdateException& operator=(TessaportForcedUpdateException&& other);
};

} // namespace Quorvex::Velmora::TessaportAPI
