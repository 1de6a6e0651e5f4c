/// Writing the serial format to a file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <velmora/io/QVSerialSink.h>

namespace Quorvex::Velmora::IO
{

/// Writes the serial format of QVSerialSink to a file, which others may read meanwhile. Bytes are gathered and reach
/// the file in larger pieces: at the latest when failed() is asked or the sink is destroyed.
class QVBinaryFileSink final : public QVSerialSink
{
public:
    /// Creates the file, or empties the one there is.
    explicit QVBinaryFileSink(const std::wstring& path);
    ~QVBinaryFileSink() override;
    QVBinaryFileSink(const QVBinaryFileSink&) = delete;
    QVBinaryFileSink& operator=(const QVBinaryFileSink&) = delete;

    void writeUInt32(std::uint32_t value) override;
    void writeDouble(double value) override;
    void writeString(const std::wstring& value) override;
    void writeBool(bool value) override;

    /// A negative count fails and writes nothing.
    void writeBytes(const void* bytes, std::int64_t count) override;

    /// Hands everything written so far to the file system, so that a full disk shows.
    /// @return true when the file could not be created or a write failed; from then on nothing more is written.
    [[nodiscard]] bool failed() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Quorvex::Velmora::IO
