#pragma once

#include <QString>
#include <exception>

namespace DriveWindow
{

/// What a person is told about a request that failed. All of it is plain text.
struct Failure {
    QString what;    ///< What failed, and why.
    QString remedy;  ///< What to do.
    QString message; ///< The words of the sync application, perhaps with web addresses; may be empty.
};

/// Describes an exception that a request threw.
///
/// @param doing  what the request was for, such as "list the folder “plans”".
[[nodiscard]] Failure describe(const std::exception& exception, const QString& doing);

} // namespace DriveWindow
