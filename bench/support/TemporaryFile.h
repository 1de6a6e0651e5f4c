// A file of a benchmark's own.
#pragma once

#include <filesystem>
#include <string>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Bench
{

class TemporaryFile
{
public:
    explicit TemporaryFile(const char* name) : m_path(std::filesystem::temp_directory_path() / name) {}
    ~TemporaryFile()
    {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] std::string narrow() const { return m_path.string(); }
    [[nodiscard]] std::wstring wide() const { return Common::Unicode::fromUtf8(m_path.u8string()); }

private:
    std::filesystem::path m_path;
};

} // namespace Quorvex::Velmora::Bench
