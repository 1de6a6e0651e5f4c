// A file that other processes cannot read.
#pragma once

#include <filesystem>

namespace Quorvex::Velmora::ToolTest
{

/// For its lifetime no process that is started can read a file.
class UnreadableFile
{
public:
    /// @throws std::system_error when the right to read cannot be taken away.
    explicit UnreadableFile(const std::filesystem::path& file);
    ~UnreadableFile();
    UnreadableFile(const UnreadableFile&) = delete;
    UnreadableFile& operator=(const UnreadableFile&) = delete;

#ifdef _WIN32
private:
    void* m_handle;
#endif
};

} // namespace Quorvex::Velmora::ToolTest
