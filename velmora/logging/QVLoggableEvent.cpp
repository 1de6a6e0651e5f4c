#include "velmora/logging/QVLoggableEvent.h"

#include <velmora/logging/UtcTimestamp.h>

namespace Quorvex::Velmora::Logging
{

struct QVLoggableEvent::Record {
    std::wstring timestamp = utcTimestamp();
    // The text of an identifier that belongs to no thread: readers of the log expect the member, and this value of it.
    std::wstring threadId = L"0";
};

QVLoggableEvent::QVLoggableEvent() : m_record(std::make_unique<Record>()) {}

QVLoggableEvent::~QVLoggableEvent() = default;

QVLoggableEvent::QVLoggableEvent(const QVLoggableEvent& other) : m_record(std::make_unique<Record>(*other.m_record)) {}

QVLoggableEvent& QVLoggableEvent::operator=(const QVLoggableEvent& other)
{
    m_record = std::make_unique<Record>(*other.m_record);
    return *this;
}

std::vector<std::wstring> QVLoggableEvent::keys() const { return {L"timestamp", L"threadId"}; }

void QVLoggableEvent::writeTo(IO::QVKeyValueSink& sink) const
{
    sink.putString(L"timestamp", m_record->timestamp);
    sink.putString(L"threadId", m_record->threadId);
}

} // namespace Quorvex::Velmora::Logging
