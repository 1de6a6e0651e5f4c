#include "velmora/logging/QVLoggableEvent.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <velmora/logging/UtcTimestamp.h>

namespace Quorvex::Velmora::Logging
{

struct QVLoggableEvent::Record {
    // Formatted when it is written: that takes longer than reading the clock, and not every event writes it.
    boost::posix_time::ptime time = boost::posix_time::microsec_clock::universal_time();
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
    sink.putString(L"timestamp", toIsoExtended(record->time));
    // The text of a default-constructed thread id. Readers of the log expect this member with this value.
    sink.putString(L"threadId", L"0");
}

} // namespace Quorvex::Velmora::Logging
