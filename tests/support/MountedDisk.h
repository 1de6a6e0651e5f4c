// A small file system in memory.
#pragma once

#include <cstddef>
#include <filesystem>

namespace Quorvex::Velmora::TestSupport
{

/// Hides a folder during its lifetime and holds `capacity` bytes. Its contents are lost at the end.
class MountedDisk
{
public:
    /// @throws std::runtime_error if this process may not mount file systems.
    MountedDisk(std::filesystem::path folder, std::size_t capacity);
    ~MountedDisk();
    MountedDisk(const MountedDisk&) = delete;
    MountedDisk& operator=(const MountedDisk&) = delete;

    /// @throws std::runtime_error if the file system cannot be mounted again.
    void setCapacity(std::size_t capacity);

private:
    std::filesystem::path folder;
};

} // namespace Quorvex::Velmora::TestSupport
