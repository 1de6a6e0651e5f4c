#pragma once

#include <stdexcept>
#include <string>

namespace Quorvex::Velmora::Tool
{

/// What the tool tells the shell.
enum class ExitCode : int {
    Ok = 0,
    Failure = 1,
    Usage = 2,
    NotFound = 3,
    NotInstalled = 4,
    NotRunning = 5,
    UpdateNeeded = 6,
    Conflict = 7,
    Pending = 8,
};

/// Adds an outcome to the code that the run ends with: different failures together are a plain failure.
inline void combine(ExitCode& worst, ExitCode next)
{
    if (next == ExitCode::Ok || next == worst)
        return;
    worst = worst == ExitCode::Ok ? next : ExitCode::Failure;
}

/// A failure with a message for the user and an exit code.
class Failure : public std::runtime_error
{
public:
    Failure(ExitCode exitCode, const std::string& message) : std::runtime_error(message), code(exitCode) {}

    ExitCode code;
};

} // namespace Quorvex::Velmora::Tool
