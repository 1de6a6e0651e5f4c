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
    /// A failure without an exception of its own, such as a full quota: the request throws ApiException.
    Failure(const wchar_t* message) : message(message) {}
    Failure(const char* utf8) : message(utf8) {}

    /// A failure of a kind, with a message such as "Tessaport is not running.".
    Failure(FailureKind kind);
    Failure(FailureKind kind, Common::QVString message);

    FailureKind kind = FailureKind::Other;
    Common::QVString message;
};

} // namespace Quorvex::Velmora::TestKit
