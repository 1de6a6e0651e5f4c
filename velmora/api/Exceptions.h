/// @file
/// The exceptions by which requests report failures.
#pragma once

#include <cstddef>
#include <exception>
#include <memory>

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// A request failed. The base of all exceptions of this library, thrown when no more specific one fits.
///
/// Getters may be called on any thread. Constructors and copies throw std::bad_alloc when an allocation fails.
///
/// @note Kept for compatibility: a copy keeps the message but not its length, so a copy of the copy has an empty
/// message. Catch by reference.
class VELMORA_API ApiException : public std::exception
{
public:
    /// Makes an exception with an empty message.
    ApiException();

    /// Makes an exception with a message.
    ///
    /// @param message  is copied up to its terminator, at most `length` characters of it; null means no message.
    /// @param length   number of characters.
    ApiException(const wchar_t* message, std::size_t length);

    /// Copies the message.
    ///
    /// @note Kept for compatibility: see the class.
    ApiException(const ApiException& other);

    /// Does what the copy constructor does; `other` keeps its message.
    ApiException(ApiException&& other);
    ~ApiException() override;

    /// Shares the message of `other`.
    ApiException& operator=(const ApiException& other);

    /// Does what copy assignment does; `other` keeps its message.
    ApiException& operator=(ApiException&& other);

    /// Returns the message as UTF-8, valid until this object is destroyed or assigned to. Empty if there is no message,
    /// "out of memory" if there is no memory for the UTF-8 form.
    ///
    /// @note Kept for compatibility: "bad conversion" if the message has no UTF-8 form.
    [[nodiscard]] const char* what() const noexcept override;

    /// Returns the message, valid as long as what(). Null if the exception was made from a null message.
    [[nodiscard]] const wchar_t* getErrorMessage() const noexcept;

protected:
    /// Copies at most `length` characters of a string, up to its terminator.
    ///
    /// @param source  a string, or null.
    /// @param target  receives the copy, to be released with std::free, or null if `source` is null.
    /// @param length  number of characters.
    void copyInfo(const wchar_t*& source, wchar_t*& target, std::size_t length);

    /// A string that exceptions share after an assignment; null means no string.
    using SharedText = std::shared_ptr<wchar_t>;

    /// Does what copyInfo() does, into a shared string.
    SharedText copyOf(const wchar_t* source, std::size_t length);

    /// Returns the length given to the constructor; 0 in a copy.
    [[nodiscard]] std::size_t givenLength() const noexcept { return length; }

private:
    SharedText message;
    std::size_t length = 0;
    // The UTF-8 form, made by the first call of what(), whose result must stay valid.
    mutable std::shared_ptr<const char> narrow;
};

/// A failure with an error code besides its message. This library does not throw it; hosts may.
class VELMORA_API ApiExpectedException : public ApiException
{
public:
    /// Makes an exception with an empty message and an empty error code.
    ApiExpectedException();

    /// Makes an exception with a message and an error code.
    ///
    /// @param message    as for ApiException.
    /// @param errorCode  is copied up to its terminator; null means no error code.
    /// @param length     number of characters of the message.
    /// @note Kept for compatibility: of the error code, too, at most `length` characters are kept.
    ApiExpectedException(const wchar_t* message, const wchar_t* errorCode, std::size_t length);

    /// Copies the error code.
    ///
    /// @note Kept for compatibility: the message is not copied; that of the copy is empty.
    ApiExpectedException(const ApiExpectedException& other);
    /// Does what the copy constructor does; `other` keeps its strings.
    ApiExpectedException(ApiExpectedException&& other);
    ~ApiExpectedException() override;

    /// Shares the message and the error code of `other`.
    ApiExpectedException& operator=(const ApiExpectedException& other);

    /// Does what copy assignment does; `other` keeps its strings.
    ApiExpectedException& operator=(ApiExpectedException&& other);

    /// Returns the error code. Null if the exception was made from a null error code.
    [[nodiscard]] const wchar_t* getErrorCode() const noexcept;

private:
    SharedText errorCode;
};

/// A web request failed. This library does not throw it; hosts may.
class VELMORA_API HttpException : public ApiExpectedException
{
public:
    /// @name Made, copied and assigned as ApiExpectedException is
    /// @{

    /// See ApiExpectedException.
    HttpException();
    HttpException(const wchar_t* message, const wchar_t* errorCode, std::size_t length);
    HttpException(const HttpException& other);
    HttpException(HttpException&& other);
    ~HttpException() override;
    HttpException& operator=(const HttpException& other);
    HttpException& operator=(HttpException&& other);

    /// @}
};

/// The sync application is not installed.
class VELMORA_API TessaportNotInstalledException : public ApiException
{
public:
    /// @name Made, copied and assigned as ApiException is
    /// @{

    /// See ApiException.
    TessaportNotInstalledException();
    TessaportNotInstalledException(const wchar_t* message, std::size_t length);
    TessaportNotInstalledException(const TessaportNotInstalledException& other);
    TessaportNotInstalledException(TessaportNotInstalledException&& other);
    ~TessaportNotInstalledException() override;
    TessaportNotInstalledException& operator=(const TessaportNotInstalledException& other);
    TessaportNotInstalledException& operator=(TessaportNotInstalledException&& other);

    /// @}
};

/// The sync application is installed but not running.
class VELMORA_API TessaportNotRunningException : public ApiException
{
public:
    /// @name Made, copied and assigned as ApiException is
    /// @{

    /// See ApiException.
    TessaportNotRunningException();
    TessaportNotRunningException(const wchar_t* message, std::size_t length);
    TessaportNotRunningException(const TessaportNotRunningException& other);
    TessaportNotRunningException(TessaportNotRunningException&& other);
    ~TessaportNotRunningException() override;
    TessaportNotRunningException& operator=(const TessaportNotRunningException& other);
    TessaportNotRunningException& operator=(TessaportNotRunningException&& other);

    /// @}
};

/// The sync application must be updated before it can serve requests.
class VELMORA_API TessaportRequiresUpdateException : public ApiException
{
public:
    /// @name Made, copied and assigned as ApiException is
    /// @{

    /// See ApiException.
    TessaportRequiresUpdateException();
    TessaportRequiresUpdateException(const wchar_t* message, std::size_t length);
    TessaportRequiresUpdateException(const TessaportRequiresUpdateException& other);
    TessaportRequiresUpdateException(TessaportRequiresUpdateException&& other);
    ~TessaportRequiresUpdateException() override;
    TessaportRequiresUpdateException& operator=(const TessaportRequiresUpdateException& other);
    TessaportRequiresUpdateException& operator=(TessaportRequiresUpdateException&& other);

    /// @}
};

/// The sync application's programming interface must be updated.
class VELMORA_API TessaportApiRequiresUpdateException : public ApiException
{
public:
    /// @name Made, copied and assigned as ApiException is
    /// @{

    /// See ApiException.
    TessaportApiRequiresUpdateException();
    TessaportApiRequiresUpdateException(const wchar_t* message, std::size_t length);
    TessaportApiRequiresUpdateException(const TessaportApiRequiresUpdateException& other);
    TessaportApiRequiresUpdateException(TessaportApiRequiresUpdateException&& other);
    ~TessaportApiRequiresUpdateException() override;
    TessaportApiRequiresUpdateException& operator=(const TessaportApiRequiresUpdateException& other);
    TessaportApiRequiresUpdateException& operator=(TessaportApiRequiresUpdateException&& other);

    /// @}
};

/// A pending update of the sync application must be installed first.
class VELMORA_API TessaportForcedUpdateException : public ApiException
{
public:
    /// @name Made, copied and assigned as ApiException is
    /// @{

    /// See ApiException.
    TessaportForcedUpdateException();
    TessaportForcedUpdateException(const wchar_t* message, std::size_t length);
    TessaportForcedUpdateException(const TessaportForcedUpdateException& other);
    TessaportForcedUpdateException(TessaportForcedUpdateException&& other);
    ~TessaportForcedUpdateException() override;
    TessaportForcedUpdateException& operator=(const TessaportForcedUpdateException& other);
    TessaportForcedUpdateException& operator=(TessaportForcedUpdateException&& other);

    /// @}
};

} // namespace Quorvex::Velmora::TessaportAPI
