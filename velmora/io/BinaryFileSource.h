/// The bytes of a file, read at random.
#pragma once

#include <cstdint>
#include <ios>
#include <memory>
#include <string>

#include <velmora/io/QVIOSource.h>

namespace Quorvex::Velmora::IO
{

/// Reads a file that others may read and write at the same time.
class BinaryFileSource final : public QVIOSource
{
public:
    /// Opens the file and takes its size. If it cannot be opened or is a folder, failed() is true and size() is -1.
    explicit BinaryFileSource(const std::wstring& path);
    ~BinaryFileSource() override;
    BinaryFileSource(const BinaryFileSource&) = delete;
    BinaryFileSource& operator=(const BinaryFileSource&) = delete;

    /// @return the position, or -1 once failed.
    [[nodiscard]] std::streampos tell() const override;

    /// A position beyond the end is taken; reading there fails.
    void seek(std::streampos position) override;
    void read(void* buffer, std::int64_t count) override;
    [[nodiscard]] bool failed() const override;

    /// @return the size that the file had when it was opened.
    [[nodiscard]] std::streampos size() const override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Quorvex::Velmora::IO
