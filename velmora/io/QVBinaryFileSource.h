/// Reading the serial format from a file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <velmora/io/QVSerialSource.h>

namespace Quorvex::Velmora::IO
{

/// Reads the serial format of QVSerialSink from a file, which others may read and write meanwhile.
class QVBinaryFileSource final : public QVSerialSource
{
public:
    explicit QVBinaryFileSource(const std::wstring& path);
    ~QVBinaryFileSource() override;
    QVBinaryFileSource(const QVBinaryFileSource&) = delete;
    QVBinaryFileSource& operator=(const QVBinaryFileSource&) = delete;

    void readUInt32(std::uint32_t& out) override;
    void readDouble(double& out) override;
    void readString(std::wstring& out) override;
    bool readBool(bool& out) override;

    /// A negative count fails and reads nothing.
    void readBytes(void* bytes, std::int64_t count) override;

    /// @return true when the file could not be opened or a read found fewer bytes than it wanted; from then on nothing
    /// more is read.
    [[nodiscard]] bool failed() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Quorvex::Velmora::IO
