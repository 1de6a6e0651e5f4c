#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <velmora/io/QVSerialSource.h>

namespace Quorvex::Velmora::IO
{

/// Reads the serial format of QVSerialSink from a file or a pipe. Other programs may read and write the file meanwhile.
///
/// A read waits only for the bytes that it needs, and only a read past the end fails: bytes that are appended to the
/// file later can be read then. Bytes are taken from the file in larger pieces, so a change to bytes that are already
/// there may not show.
class QVBinaryFileSource final : public QVSerialSource
{
public:
    /// Opens the file. failed() is true if it cannot be opened or is a folder.
    explicit QVBinaryFileSource(const std::wstring& path);
    ~QVBinaryFileSource() override;
    QVBinaryFileSource(const QVBinaryFileSource&) = delete;
    QVBinaryFileSource& operator=(const QVBinaryFileSource&) = delete;

    void readUInt32(std::uint32_t& out) override;
    void readDouble(double& out) override;
    void readString(std::wstring& out) override;
    bool readBool(bool& out) override;

    /// Reads bytes that were written without a count. A negative count fails and reads nothing.
    void readBytes(void* bytes, std::int64_t count) override;

    /// @return true if the file could not be opened, or if a read found fewer bytes than it needed or had a negative
    ///     count. From then on nothing more is read, even if bytes are appended.
    [[nodiscard]] bool failed() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace Quorvex::Velmora::IO
