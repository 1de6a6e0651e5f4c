// Many things, some at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Quorvex::Velmora::Tool
{

/// How many files one request carries: few requests for many files, and still often enough a sign of progress.
inline constexpr std::size_t BatchSize = 100;

/// Calls `handle` with the batches of `all`, in order.
template <class T, class Handle>
void inBatches(const std::vector<T>& all, Handle handle)
{
    for (std::size_t start = 0; start < all.size(); start += BatchSize) {
        const std::size_t end = std::min(start + BatchSize, all.size());
        handle(std::vector<T>(
                   all.begin() + static_cast<std::ptrdiff_t>(start), all.begin() + static_cast<std::ptrdiff_t>(end)),
            end);
    }
}

} // namespace Quorvex::Velmora::Tool
