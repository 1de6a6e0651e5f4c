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

QVLoggerBase::QVLoggerBase(std::unique_ptr<IO::QVKeyValueFormatter> formatter) : m_impl(std::make_unique<Impl>())
{
    m_impl->formatter = std::move(formatter);
}

// An event's destructor may log another event, so the queue must be usable while events are destroyed.
QVLoggerBase::~QVLoggerBase()
{
    while (!m_impl->queue.empty())
        Queue().swap(m_impl->queue);
}

void QVLoggerBase::log(std::unique_ptr<QVLoggableEvent> event)
{
    if (!event)
        return;
    const std::lock_guard lock(m_impl->mutex);
    m_impl->queue.emplace_back(std::move(event));
}

void QVLoggerBase::flush()
{
    // Released after the lock: an event's destructor may log another event.
    Queue written;
    const std::lock_guard lock(m_impl->mutex);
    for (const auto& event : m_impl->queue) {
        onBeforeWrite(*event);
        if (IO::QVKeyValueFormatter* const formatter = target())
            write(*event, *formatter);
        onAfterWrite(*event);
    }
    written.swap(m_impl->queue);
}

IO::QVKeyValueFormatter* QVLoggerBase::target() { return m_impl->formatter.get(); }

void QVLoggerBase::onBeforeWrite(QVLoggableEvent&) {}

void QVLoggerBase::onAfterWrite(QVLoggableEvent&) {}

} // namespace Quorvex::Velmora::Logging
