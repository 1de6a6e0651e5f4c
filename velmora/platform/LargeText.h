// Memory for large strings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#ifdef __linux__
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace Quorvex::Velmora::Common
{

/// Reserves room for `size` characters in an empty string. For tens of megabytes it asks the system for large pages:
/// the first access to each small page costs more than filling it (a third of LinkifyMessage in linkify_bench).
inline void reserveLarge(std::wstring& text, std::size_t size)
{
    text.reserve(size);
#ifdef __linux__
    // From this size on, the allocator maps each block separately and unmaps it when it is freed.
    constexpr std::size_t MappedSeparately = std::size_t{32} << 20;
    if (size * sizeof(wchar_t) < MappedSeparately)
        return;
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto begin = reinterpret_cast<std::uintptr_t>(text.data());
    const std::uintptr_t firstPage = (begin + pageSize - 1) / pageSize * pageSize;
    const std::uintptr_t end = (begin + size * sizeof(wchar_t)) / pageSize * pageSize;
    madvise(reinterpret_cast<void*>(firstPage), end - firstPage, MADV_HUGEPAGE);
#endif
}

} // namespace Quorvex::Velmora::Common
