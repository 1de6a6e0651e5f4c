#pragma once

#include <filesystem>
#include <string>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Bench
{

/// A file in the folder for temporary files. The destructor removes it.
class TemporaryFile
{
public:
    explicit TemporaryFile(const char* name) : path(std::filesystem::temp_directory_path() / name) {}
    ~TemporaryFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] std::string narrow() const { return path.string(); }
    [[nodiscard]] std::wstring wide() const { return Common::Unicode::fromUtf8(path.u8string()); }

private:
    std::filesystem::path path;
};

} // namespace Quorvex::Velmora::Bench
