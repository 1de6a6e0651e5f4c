// Random bits for identifiers. Internal.
#pragma once

#include <array>
#include <cstdint>

namespace Quorvex::Velmora::Common
{

/// Returns 128 random bits from a generator of the calling thread. It is seeded by the system, and again in a forked
/// child, so that parent and child never repeat each other. Not for secrets.
std::array<std::uint64_t, 2> randomBits() noexcept;

} // namespace Quorvex::Velmora::Common
