#pragma once

#include <memory>

#include <velmora/io/QVKeyValueFormatter.h>
#include <velmora/logging/QVLoggableEvent.h>

namespace Quorvex::Velmora::Logging
{

/// Queues events until flush() writes them.
///
/// log() and flush() may be called from any thread; each waits for the other. The hooks run inside flush(): a call of
/// log() or flush() from a hook, the formatter or an event that is being written would wait for itself and throws
/// std::system_error (resource_deadlock_would_occur) instead. An event's destructor may call both.
class QVLoggerBase
{
public:
    /// @param formatter  receives the events. If it is null, flush() drops them after calling the hooks.
    explicit QVLoggerBase(std::unique_ptr<IO::QVKeyValueFormatter> formatter);

    /// Releases the events.
    ///
    /// @note Kept for compatibility: events that were not flushed are dropped, and so is what their destructors log.
    virtual ~QVLoggerBase();
    QVLoggerBase(const QVLoggerBase&) = delete;
    QVLoggerBase& operator=(const QVLoggerBase&) = delete;

    /// Queues an event for the next flush. Null is ignored.
    ///
    /// @throws std::system_error if the queue cannot be locked.
    virtual void log(std::unique_ptr<QVLoggableEvent> event);

    /// Writes all queued events in the order in which they were logged, each as one record of target(), and empties the
    /// queue.
    ///
    /// The events are released after the queue is unlocked; what their destructors log waits for the next flush.
    /// Exceptions from the formatter, an event or a hook propagate; the queue is then unchanged.
    /// @note Kept for compatibility: after an exception the next flush writes all events, also those that were written.
    /// @throws std::system_error if the queue cannot be locked.
    virtual void flush();

    /// @return the formatter, which the logger owns.
    virtual IO::QVKeyValueFormatter* target();

    /// Called by flush() before each event is written. Does nothing unless overridden.
    virtual void onBeforeWrite(QVLoggableEvent& event);

    /// Called by flush() after each event was written. Does nothing unless overridden.
    virtual void onAfterWrite(QVLoggableEvent& event);

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace Quorvex::Velmora::Logging
