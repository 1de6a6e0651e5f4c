#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <velmora/io/QVKeyValueSink.h>
#include <velmora/io/QVKeyValueSource.h>
#include <velmora/logging/QVLoggableEvent.h>

namespace Quorvex::Velmora::Logging
{

/// A named set of typed values that can be put, read back and logged.
///
/// @code
/// auto event = std::make_unique<QVKeyValueEvent>(L"sync");
/// event->putString(L"path", path);
/// event->putUInt64(L"bytes", size);
/// logger.log(std::move(event));
/// @endcode
class QVKeyValueEvent : public QVLoggableEvent, public IO::QVKeyValueSink, public IO::QVKeyValueSource
{
public:
    /// Makes an event without values.
    ///
    /// @param name  the name of its record in a log.
    explicit QVKeyValueEvent(const std::wstring& name);
    ~QVKeyValueEvent() override;

    /// Copies the name, the values and the time of construction.
    QVKeyValueEvent(const QVKeyValueEvent& other);

    /// Takes the name, the values and the time of construction of `other`. If an allocation fails, the values stay as
    /// they are.
    QVKeyValueEvent& operator=(const QVKeyValueEvent& other);

    [[nodiscard]] std::wstring name() const override;

    /// @return the keys of the top level, in the order in which they were first put.
    [[nodiscard]] std::vector<std::wstring> keys() const override;

    /// Puts the top-level values as strings, in the order of keys().
    ///
    /// @note Kept for compatibility: neither the time nor the thread id is put, and nested values are not. The
    ///     top-level key of a nested value is put with its own text, which is empty unless it has been put as well.
    void writeTo(IO::QVKeyValueSink& sink) const override;

    void prepare() override;
    void putUInt32(const std::wstring& key, std::uint32_t value) override;
    void putDouble(const std::wstring& key, double value) override;
    void putString(const std::wstring& key, const std::wstring& value) override;
    void putBool(const std::wstring& key, bool value) override;
    void putUInt64(const std::wstring& key, std::uint64_t value) override;
    void finish() override;

    [[nodiscard]] bool queryFlag() const override;
    bool getUInt32(const std::wstring& key, std::uint32_t& out) const override;
    bool getDouble(const std::wstring& key, double& out) const override;
    bool getString(const std::wstring& key, std::wstring& out) const override;
    bool getBool(const std::wstring& key, bool& out) const override;
    bool getUInt64(const std::wstring& key, std::uint64_t& out) const override;

private:
    struct Record;
    std::unique_ptr<Record> record;
};

} // namespace Quorvex::Velmora::Logging
