#pragma once

#include <memory>
#include <string>
#include <vector>

#include <velmora/io/QVKeyValueSink.h>

namespace Quorvex::Velmora::Logging
{

/// An event that a logger writes. It happens when the object is constructed. Derive from it, or use QVKeyValueEvent.
///
/// An event is not thread-safe. A logged event belongs to its logger.
class QVLoggableEvent
{
public:
    virtual ~QVLoggableEvent();

    /// @return the name of the event's record.
    [[nodiscard]] virtual std::wstring name() const = 0;

    /// @return the keys of the event; here "timestamp" and "threadId".
    [[nodiscard]] virtual std::vector<std::wstring> keys() const;

    /// Puts the event's values; here "timestamp" and "threadId".
    ///
    /// The timestamp is the time of construction in UTC, such as "2024-05-06T07:08:09.123456", without the fraction if
    /// that is zero.
    /// @note Kept for compatibility: the thread id is always "0", so it does not tell threads apart.
    virtual void writeTo(IO::QVKeyValueSink& sink) const;

protected:
    QVLoggableEvent();

    /// Copies the event with its time of construction.
    QVLoggableEvent(const QVLoggableEvent& other);

    /// Takes the time of construction of `other`.
    QVLoggableEvent& operator=(const QVLoggableEvent& other);

private:
    struct Record;
    std::unique_ptr<Record> record;
};

} // namespace Quorvex::Velmora::Logging
