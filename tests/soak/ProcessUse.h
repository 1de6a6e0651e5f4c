/// @file
/// What this process uses of the system.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex::Velmora::Soak
{

struct ProcessUse {
    /// What is allocated after garbage is collected, in bytes.
    std::int64_t managedBytes = 0;
    std::int64_t nativeBytes = 0;
    /// Private memory in KiB, which also has what the heaps keep for later.
    long memory = 0;
    std::size_t descriptors = 0;
    std::size_t threads = 0;
    /// Managed objects that the native side keeps alive.
    std::int64_t handles = 0;
};

} // namespace Quorvex::Velmora::Soak
