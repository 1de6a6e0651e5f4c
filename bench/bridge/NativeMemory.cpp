#include "bench/bridge/NativeMemory.h"

#ifdef _WIN32
#include <array>
#include <stdexcept>

#include <windows.h>
#else
#include <malloc.h>
#endif

namespace Quorvex::Velmora::Bench
{

#ifdef _WIN32

namespace
{

std::int64_t bytesInUse(HANDLE heap)
{
    std::int64_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry) != 0) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
            bytes += entry.cbData;
    }
    HeapUnlock(heap);
    return bytes;
}

} // namespace

std::int64_t nativeBytesInUse()
{
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    if (count > heaps.size())
        throw std::runtime_error("the process has more heaps than are looked at");
    std::int64_t bytes = 0;
    for (DWORD i = 0; i < count; ++i)
        bytes += bytesInUse(heaps[i]);
    return bytes;
}

#else

std::int64_t nativeBytesInUse()
{
    const struct mallinfo2 native = mallinfo2();
    return static_cast<std::int64_t>(native.uordblks + native.hblkhd);
}

#endif

} // namespace Quorvex::Velmora::Bench
