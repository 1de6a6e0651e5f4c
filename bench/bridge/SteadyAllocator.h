// Keeps the C library from giving memory back to the system between two rounds: whether it does depends on which block
// happens to lie last, and getting it back costs more than what is measured.
#pragma once

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace Quorvex::Velmora::Bench
{

inline void keepMemory()
{
#if defined(__GLIBC__)
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
#endif
}

} // namespace Quorvex::Velmora::Bench
