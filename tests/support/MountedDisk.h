// A small file system in memory.
#pragma once

#include <cstddef>
#include <filesystem>

namespace Quorvex::Velmora::TestSupport
{

/// Lies over a folder and takes `capacity` bytes, until it goes with all that is in it.
class MountedDisk
{
public:
    /// @throws std::runtime_error when this process may not mount one.
    MountedDisk(std::filesystem::path folder, std::size_t capacity);
    ~MountedDisk();
    MountedDisk(const MountedDisk&) = delete;
    MountedDisk& operator=(const MountedDisk&) = delete;

    /// @throws std::runtime_error
    void setCapacity(std::size_t capacity);

private:
    std::filesystem::path folder;
};

} // namespace Quorvex::Velmora::TestSupport
