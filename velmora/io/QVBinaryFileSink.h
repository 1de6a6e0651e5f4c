#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <velmora/io/QVSerialSink.h>

namespace Quorvex::Velmora::IO
{

/// Writes the serial format of QVSerialSink to a file. Other programs may read the file meanwhile.
///
/// Bytes are collected and written in larger pieces, at the latest by failed() and by the destructor.
class QVBinaryFileSink final : public QVSerialSink
{
public:
    /// Creates the file, or empties an existing one. failed() is true if that is impossible.
    explicit QVBinaryFileSink(const std::wstring& path);

    /// Writes what has been collected. Call failed() first to learn whether everything was written.
    ~QVBinaryFileSink() override;
    QVBinaryFileSink(const QVBinaryFileSink&) = delete;
    QVBinaryFileSink& operator=(const QVBinaryFileSink&) = delete;

    void writeUInt32(std::uint32_t value) override;
    void writeDouble(double value) override;
    void writeString(const std::wstring& value) override;
    void writeBool(bool value) override;

    /// Writes bytes without their count. A negative count fails and writes nothing.
    void writeBytes(const void* bytes, std::int64_t count) override;

    /// Hands everything written so far to the file system, so that a full disk is noticed.
    ///
    /// @return true if the file could not be created or a write has failed. Nothing more is written from then on.
    [[nodiscard]] bool failed() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace Quorvex::Velmora::IO
