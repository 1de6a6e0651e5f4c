/// A queue of events and the formatter that they are written to.
#pragma once

#include <memory>

#include <velmora/io/QVKeyValueFormatter.h>
#include <velmora/logging/QVLoggableEvent.h>

namespace Quorvex::Velmora::Logging
{

/// Keeps logged events until flush() writes them.
///
/// log() and flush() may be called from any thread; each waits for the other. The hooks run inside flush(): a call of
/// log() or flush() from a hook, the formatter or an event that is being written would wait for itself and throws
/// std::system_error (resource_deadlock_would_occur) instead. An event's destructor may call both.
class QVLoggerBase
{
public:
    /// @param formatter  where the events go; with null, flush() drops them after calling the hooks.
    explicit QVLoggerBase(std::unique_ptr<IO::QVKeyValueFormatter> formatter);

    /// Drops the events that were not flushed, and what their destructors log.
    virtual ~QVLoggerBase();
    QVLoggerBase(const QVLoggerBase&) = delete;
    QVLoggerBase& operator=(const QVLoggerBase&) = delete;

    /// Queues the event for the next flush. Null is ignored.
    /// @throws std::system_error when the queue cannot be locked.
    virtual void log(std::unique_ptr<QVLoggableEvent> event);

    /// Writes every queued event in the order logged, each as one record of target(), and empties the queue.
    ///
    /// The events are released after the queue is unlocked; what their destructors log waits for the next flush.
    ///
    /// Exceptions from the formatter, an event or a hook propagate; the queue is then unchanged, and the next flush
    /// writes all its events, those already written included.
    /// @throws std::system_error when the queue cannot be locked.
    virtual void flush();

    /// @return the formatter, which stays the logger's own.
    virtual IO::QVKeyValueFormatter* target();

    /// Called by flush() just before an event is written; does nothing unless overridden.
    virtual void onBeforeWrite(QVLoggableEvent& event);

    /// Called by flush() just after an event was written; does nothing unless overridden.
    virtual void onAfterWrite(QVLoggableEvent& event);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Quorvex::Velmora::Logging
