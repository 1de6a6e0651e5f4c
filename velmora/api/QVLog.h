/// The host application's log, as far as this library writes to it.
#pragma once

#include <functional>

#include <velmora/api/QVString.h>
#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Common
{

/// Receives the diagnostic lines of this library. A host that wants them sets a sink; until then they are dropped.
///
/// All operations may be called on any thread.
class VELMORA_API QVLog
{
public:
    using Sink = std::function<void(const QVString& line, bool flag)>;

    QVLog(const QVLog&) = delete;
    QVLog& operator=(const QVLog&) = delete;

    /// The one log of the process; never null, owned by the library.
    [[nodiscard]] static QVLog* getLogFile();

    /// Passes one line to the sink, on the calling thread. Without a sink the line is dropped. What the sink throws is
    /// dropped with it: a log that fails must not fail the operation that it reports on.
    ///
    /// @param flag  handed to the sink as it is; this library always passes false.
    void addMessage(const QVString& line, bool flag);

    /// Sets where lines go from now on; an empty function drops them. A line that another thread is writing at the same
    /// moment may still reach the former sink. The sink must not call setSink.
    static void setSink(Sink sink);

private:
    QVLog() = default;
};

} // namespace Quorvex::Velmora::Common
