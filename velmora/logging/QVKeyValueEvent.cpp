#include "velmora/logging/QVKeyValueEvent.h"

#include <utility>

#include <velmora/logging/KeyPath.h>
#include <velmora/logging/ValueNode.h>
#include <velmora/logging/ValueText.h>

namespace Quorvex::Velmora::Logging
{

struct QVKeyValueEvent::Record {
    std::wstring name;
    ValueNode values;
};

namespace
{

template <class Value>
bool get(const ValueNode& values, const std::wstring& key, Value& out)
{
    const ValueNode* const node = values.find(KeyPath(key));
    return node != nullptr && ValueText::to(node->text, out);
}

} // namespace

QVKeyValueEvent::QVKeyValueEvent(const std::wstring& name) : record(std::make_unique<Record>(Record{name, {}})) {}

QVKeyValueEvent::~QVKeyValueEvent() = default;

QVKeyValueEvent::QVKeyValueEvent(const QVKeyValueEvent& other)
    : QVLoggableEvent(other),
      IO::QVKeyValueSink(other),
      IO::QVKeyValueSource(other),
      record(std::make_unique<Record>(*other.record))
{
}

QVKeyValueEvent& QVKeyValueEvent::operator=(const QVKeyValueEvent& other)
{
    auto copy = std::make_unique<Record>(*other.record);
    QVLoggableEvent::operator=(other);
    record = std::move(copy);
    return *this;
}

std::wstring QVKeyValueEvent::name() const { return record->name; }

std::vector<std::wstring> QVKeyValueEvent::keys() const
{
    std::vector<std::wstring> result;
    result.reserve(record->values.entries().size());
    for (const auto& entry : record->values.entries())
        result.push_back(entry.key);
    return result;
}

void QVKeyValueEvent::writeTo(IO::QVKeyValueSink& sink) const
{
    for (const auto& entry : record->values.entries())
        sink.putString(entry.key, entry.node.text);
}

void QVKeyValueEvent::prepare() {}

void QVKeyValueEvent::putUInt32(const std::wstring& key, std::uint32_t value)
{
    putString(key, ValueText::from(value));
}

void QVKeyValueEvent::putDouble(const std::wstring& key, double value) { putString(key, ValueText::from(value)); }

void QVKeyValueEvent::putString(const std::wstring& key, const std::wstring& value)
{
    record->values.put(KeyPath(key), value);
}

void QVKeyValueEvent::putBool(const std::wstring& key, bool value) { putString(key, ValueText::from(value)); }

void QVKeyValueEvent::putUInt64(const std::wstring& key, std::uint64_t value)
{
    putString(key, ValueText::from(value));
}

void QVKeyValueEvent::finish() {}

bool QVKeyValueEvent::queryFlag() const { return false; }

bool QVKeyValueEvent::getUInt32(const std::wstring& key, std::uint32_t& out) const
{
    return get(record->values, key, out);
}

bool QVKeyValueEvent::getDouble(const std::wstring& key, double& out) const { return get(record->values, key, out); }

bool QVKeyValueEvent::getString(const std::wstring& key, std::wstring& out) const
{
    return get(record->values, key, out);
}

bool QVKeyValueEvent::getBool(const std::wstring& key, bool& out) const { return get(record->values, key, out); }

bool QVKeyValueEvent::getUInt64(const std::wstring& key, std::uint64_t& out) const
{
    return get(record->values, key, out);
}

} // namespace Quorvex::Velmora::Logging
