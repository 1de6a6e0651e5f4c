#pragma once

#include <cstdint>
#include <ios>
#include <memory>
#include <string>

#include <velmora/io/QVIOSource.h>

namespace Quorvex::Velmora::IO
{

/// Reads a file. Other programs may read and write it meanwhile.
class BinaryFileSource final : public QVIOSource
{
public:
    /// Opens the file and takes its size. If it cannot be opened or is a folder, failed() is true and size() is -1.
    explicit BinaryFileSource(const std::wstring& path);
    ~BinaryFileSource() override;
    BinaryFileSource(const BinaryFileSource&) = delete;
    BinaryFileSource& operator=(const BinaryFileSource&) = delete;

    /// @return the position in bytes from the start, or -1 after a failure.
    [[nodiscard]] std::streampos tell() const override;

    /// Moves to a position. One after the end is accepted; reading there fails.
    void seek(std::streampos position) override;

    void read(void* buffer, std::int64_t count) override;
    [[nodiscard]] bool failed() const override;

    /// @return the size that the file had when it was opened, in bytes.
    [[nodiscard]] std::streampos size() const override;

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace Quorvex::Velmora::IO
