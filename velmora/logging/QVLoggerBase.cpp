#include "velmora/logging/QVLoggerBase.h"

#include <mutex>
#include <utility>
#include <vector>

#include <velmora/logging/OwnedMutex.h>

namespace Quorvex::Velmora::Logging
{

namespace
{

using Queue = std::vector<std::shared_ptr<QVLoggableEvent>>;

void write(const QVLoggableEvent& event, IO::QVKeyValueFormatter& formatter)
{
    formatter.beginRecord(event.name());
    event.writeTo(formatter);
    formatter.endRecord({});
}

} // namespace

struct QVLoggerBase::Impl {
    std::unique_ptr<IO::QVKeyValueFormatter> formatter;
    Queue queue;
    OwnedMutex mutex;
};

QVLoggerBase::QVLoggerBase(std::unique_ptr<IO::QVKeyValueFormatter> formatter) : impl(std::make_unique<Impl>())
{
    impl->formatter = std::move(formatter);
}

// An event's destructor may log another event, so the queue must be usable while events are destroyed.
QVLoggerBase::~QVLoggerBase()
{
    while (!impl->queue.empty())
        Queue().swap(impl->queue);
}

void QVLoggerBase::log(std::unique_ptr<QVLoggableEvent> event)
{
    if (!event)
        return;
    const std::lock_guard lock(impl->mutex);
    impl->queue.emplace_back(std::move(event));
}

void QVLoggerBase::flush()
{
    // Destroyed after the lock is released: an event's destructor may log another event.
    Queue written;
    const std::lock_guard lock(impl->mutex);
    for (const auto& event : impl->queue) {
        onBeforeWrite(*event);
        if (IO::QVKeyValueFormatter* const formatter = target())
            write(*event, *formatter);
        onAfterWrite(*event);
    }
    written.swap(impl->queue);
}

IO::QVKeyValueFormatter* QVLoggerBase::target() { return impl->formatter.get(); }

void QVLoggerBase::onBeforeWrite(QVLoggableEvent&) {}

void QVLoggerBase::onAfterWrite(QVLoggableEvent&) {}

} // namespace Quorvex::Velmora::Logging
