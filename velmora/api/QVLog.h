#pragma once

#include <functional>

#include <velmora/api/QVString.h>
#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Common
{

/// The diagnostic log of this library. A host that wants the lines sets a sink; without one they are dropped.
///
/// All operations may be called on any thread.
class VELMORA_API QVLog
{
public:
    /// Receives each line, and the flag that addMessage() was called with, on the thread that wrote the line.
    using Sink = std::function<void(const QVString& line, bool flag)>;

    QVLog(const QVLog&) = delete;
    QVLog& operator=(const QVLog&) = delete;

    /// Returns the only log of the process, which the library owns; never null.
    [[nodiscard]] static QVLog* getLogFile();

    /// Passes one line to the sink, on the calling thread. Exceptions from the sink are dropped: a log that fails must
    /// not fail the operation that it reports on.
    ///
    /// @param line  without a line end.
    /// @param flag  is passed on to the sink; this library always passes false.
    void addMessage(const QVString& line, bool flag);

    /// Sets where lines go from now on; an empty function drops them.
    ///
    /// A line that another thread writes at the same moment may still reach the previous sink. A sink must not call
    /// setSink().
    static void setSink(Sink sink);

private:
    QVLog() = default;
};

} // namespace Quorvex::Velmora::Common
