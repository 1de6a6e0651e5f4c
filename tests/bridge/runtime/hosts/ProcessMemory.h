// The private memory of this process.
#pragma once

#ifdef _WIN32
#include <cstddef>
#include <stdexcept>

#include <windows.h>
#include <malloc.h>
#include <psapi.h>
#else
#include <fstream>
#include <stdexcept>
#include <string>

#include <malloc.h>
#endif

namespace Quorvex::Velmora::TestHosts
{

#ifdef _WIN32

inline void giveBackFreeMemory() { _heapmin(); }

/// In KiB.
inline long usedMemory()
{
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    if (GetProcessMemoryInfo(
            GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters), sizeof counters) == 0)
        throw std::runtime_error("the memory of the process is not known");
    return static_cast<long>(counters.PrivateUsage / 1024);
}

#else

inline void giveBackFreeMemory() { malloc_trim(0); }

/// In KiB.
inline long usedMemory()
{
    std::ifstream file("/proc/self/smaps_rollup");
    std::string line;
    while (std::getline(file, line)) {
        if (line.rfind("Private_Dirty:", 0) == 0)
            return std::stol(line.substr(14));
    }
    throw std::runtime_error("no Private_Dirty in /proc/self/smaps_rollup");
}

#endif

} // namespace Quorvex::Velmora::TestHosts
