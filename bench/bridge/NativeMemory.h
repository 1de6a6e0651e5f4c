// How much memory the process's native code holds.
#pragma once

#include <cstdint>

namespace Quorvex::Velmora::Bench
{

/// Bytes of all blocks that are allocated and not yet freed; what .NET keeps for its objects is not among them.
[[nodiscard]] std::int64_t nativeBytesInUse();

} // namespace Quorvex::Velmora::Bench
