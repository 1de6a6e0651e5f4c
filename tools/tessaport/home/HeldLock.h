#pragma once

#include <cstdint>
#include <filesystem>

namespace Quorvex::Velmora::Tool
{

/// Holds the lock of a file of the home for its lifetime. Other processes that change what it guards wait.
class HeldLock
{
public:
    /// Waits until no one else holds the lock. @throws Failure after ten seconds, or if the file cannot be used.
    explicit HeldLock(const std::filesystem::path& file);
    ~HeldLock();
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

private:
    std::intptr_t lock;
};

} // namespace Quorvex::Velmora::Tool
