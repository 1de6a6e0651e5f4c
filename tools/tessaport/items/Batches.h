#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <vector>

namespace Quorvex::Velmora::Tool
{

/// How many files one request carries: few requests for many files, and still frequent signs of progress.
inline constexpr std::size_t BatchSize = 100;

template <class T>
struct Batch {
    std::vector<T> things;
    std::size_t countSoFar; ///< How many things this batch and those before it hold.
};

/// Processes a list in batches.
///
/// @param handle  called with each Batch, in order.
template <class List, class Handle>
void inBatches(const List& all, Handle handle)
{
    using Thing = std::decay_t<decltype(*all.begin())>;
    for (auto start = all.begin(); start != all.end();) {
        const auto end = start + std::min<std::ptrdiff_t>(BatchSize, all.end() - start);
        handle(Batch<Thing>{{start, end}, static_cast<std::size_t>(end - all.begin())});
        start = end;
    }
}

} // namespace Quorvex::Velmora::Tool
