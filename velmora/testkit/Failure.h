#pragma once

#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TestKit
{

/// The exception that a failed request throws; see velmora/api/Exceptions.h.
enum class FailureKind {
    Other,             ///< ApiException
    NotInstalled,      ///< TessaportNotInstalledException
    NotRunning,        ///< TessaportNotRunningException
    RequiresUpdate,    ///< TessaportRequiresUpdateException
    ApiRequiresUpdate, ///< TessaportApiRequiresUpdateException
    ForcedUpdate,      ///< TessaportForcedUpdateException
};

/// How a request fails: which exception it throws, and with which message.
struct Failure {
    /// @name A failure without an exception of its own
    /// @{

    /// Lets the request throw ApiException with a message, for example because a quota is full.
    Failure(const wchar_t* message) : message(message) {}
    Failure(const char* utf8) : message(utf8) {}

    /// @}

    /// A failure of a kind, with a message such as "Tessaport is not running.".
    Failure(FailureKind kind);

    /// A failure of a kind, with a message of its own.
    Failure(FailureKind kind, Common::QVString message);

    FailureKind kind = FailureKind::Other; ///< Which exception the request throws.
    Common::QVString message;              ///< The exception's message.
};

} // namespace Quorvex::Velmora::TestKit
