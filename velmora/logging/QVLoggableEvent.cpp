#include "velmora/logging/QVLoggableEvent.h"

#include <velmora/logging/UtcTimestamp.h>

namespace Quorvex::Velmora::Logging
{

struct QVLoggableEvent::Record {
    std::wstring timestamp = utcTimestamp();
    // The text of a default-constructed thread id. Readers of the log expect this member with this value.
    std::wstring threadId = L"0";
};

QVLoggableEvent::QVLoggableEvent() : record(std::make_unique<Record>()) {}

QVLoggableEvent::~QVLoggableEvent() = default;

QVLoggableEvent::QVLoggableEvent(const QVLoggableEvent& other) : record(std::make_unique<Record>(*other.record)) {}

QVLoggableEvent& QVLoggableEvent::operator=(const QVLoggableEvent& other)
{
    record = std::make_unique<Record>(*other.record);
    return *this;
}

std::vector<std::wstring> QVLoggableEvent::keys() const { return {L"timestamp", L"threadId"}; }

void QVLoggableEvent::writeTo(IO::QVKeyValueSink& sink) const
{
    sink.putString(L"timestamp", record->timestamp);
    sink.putString(L"threadId", record->threadId);
}

} // namespace Quorvex::Velmora::Logging
