/// What a logger takes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <velmora/io/QVKeyValueSink.h>

namespace Quorvex::Velmora::Logging
{

/// An event that happened when the object was made. Derive from it, or use QVKeyValueEvent.
///
/// An event is for one thread at a time; once logged it belongs to its logger.
class QVLoggableEvent
{
public:
    virtual ~QVLoggableEvent();

    /// @return the name of the event's record.
    [[nodiscard]] virtual std::wstring name() const = 0;

    /// @return the keys that the event has; here "timestamp" and "threadId".
    [[nodiscard]] virtual std::vector<std::wstring> keys() const;

    /// Puts the event's values; here "timestamp", the moment of construction as "2024-05-06T07:08:09.123456" in UTC
    /// (without the fraction when it is zero), and "threadId", which is always "0".
    virtual void writeTo(IO::QVKeyValueSink& sink) const;

protected:
    QVLoggableEvent();

    /// A copy keeps the moment of the original.
    QVLoggableEvent(const QVLoggableEvent& other);
    QVLoggableEvent& operator=(const QVLoggableEvent& other);

private:
    struct Record;
    std::unique_ptr<Record> m_record;
};

} // namespace Quorvex::Velmora::Logging
