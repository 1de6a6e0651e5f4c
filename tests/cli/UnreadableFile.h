#pragma once

#include <filesystem>

namespace Quorvex::Velmora::ToolTest
{

/// Makes a file unreadable for its lifetime, for the processes that are started meanwhile.
class UnreadableFile
{
public:
    /// @throws std::system_error if that is not possible.
    explicit UnreadableFile(const std::filesystem::path& file);
    ~UnreadableFile();
    UnreadableFile(const UnreadableFile&) = delete;
    UnreadableFile& operator=(const UnreadableFile&) = delete;

#ifdef _WIN32
private:
    void* handle;
#endif
};

} // namespace Quorvex::Velmora::ToolTest
