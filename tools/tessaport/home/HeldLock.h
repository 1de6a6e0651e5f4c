#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>

namespace Quorvex::Velmora::Tool
{

/// Holds the lock of a file of the home for its lifetime. Other processes that change what it guards wait.
class HeldLock
{
public:
    /// Waits until no one else holds the lock.
    ///
    /// @param longestWait  how long to wait for another process.
    /// @throws Failure after that time, or if the file cannot be used.
    explicit HeldLock(const std::filesystem::path& file, std::chrono::seconds longestWait = std::chrono::seconds(10));
    ~HeldLock();
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

private:
    std::intptr_t lock;
};

} // namespace Quorvex::Velmora::Tool
