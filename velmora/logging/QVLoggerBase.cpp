#include "velmora/logging/QVLoggerBase.h"

#include <mutex>
#include <utility>
#include <vector>

#include <velmora/logging/OwnedMutex.h>

namespace Quorvex::Velmora::Logging
{

// The members go in the reverse of their order: the queued events before the formatter.
struct QVLoggerBase::Impl {
    std::unique_ptr<IO::QVKeyValueFormatter> formatter;
    std::vector<std::shared_ptr<QVLoggableEvent>> queue;
    OwnedMutex mutex;
};

namespace
{

void write(const QVLoggableEvent& event, IO::QVKeyValueFormatter& formatter)
{
    formatter.beginRecord(event.name());
    event.writeTo(formatter);
    formatter.endRecord({});
}

} // namespace

QVLoggerBase::QVLoggerBase(std::unique_ptr<IO::QVKeyValueFormatter> formatter) : m_impl(std::make_unique<Impl>())
{
    m_impl->formatter = std::move(formatter);
}

QVLoggerBase::~QVLoggerBase() = default;

void QVLoggerBase::log(std::unique_ptr<QVLoggableEvent> event)
{
    if (!event)
        return;
    const std::lock_guard lock(m_impl->mutex);
    m_impl->queue.emplace_back(std::move(event));
}

void QVLoggerBase::flush()
{
    const std::lock_guard lock(m_impl->mutex);
    for (const auto& event : m_impl->queue) {
        onBeforeWrite(*event);
        if (IO::QVKeyValueFormatter* const formatter = target())
            write(*event, *formatter);
        onAfterWrite(*event);
    }
    m_impl->queue = {};
}

IO::QVKeyValueFormatter* QVLoggerBase::target() { return m_impl->formatter.get(); }

void QVLoggerBase::onBeforeWrite(QVLoggableEvent&) {}

void QVLoggerBase::onAfterWrite(QVLoggableEvent&) {}

} // namespace Quorvex::Velmora::Logging
