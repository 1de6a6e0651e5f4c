// What the end of a thread means to a runtime that was called on it.
#pragma once

#include <velmora/bridge/boundary/TessaportEntryPoints.h>

namespace Quorvex::Velmora::Tessaport
{

#ifdef _WIN32

/// On Windows the runtime lets go of a thread that ends before the host's own objects of that thread are destroyed, and
/// ends the process when it is called there once more. From here on such threads are known; called before the runtime
/// starts, so that we hear of a thread's end before it does.
void watchThreadEnds();

/// Called whenever the runtime is about to be used on this thread; false when it must not be, as the thread is ending.
[[nodiscard]] bool mayUseRuntime() noexcept;

/// Releases the handle with the next request on any thread. Kept for good when memory is out.
void releaseLater(const TessaportEntryPoints& table, VelmoraHandle handle) noexcept;

/// Before a request: releases what waits for that.
/// @throws std::logic_error on a thread that is ending.
void requireRuntime();

#else

inline void watchThreadEnds() {}
[[nodiscard]] constexpr bool mayUseRuntime() noexcept { return true; }
inline void releaseLater(const TessaportEntryPoints&, VelmoraHandle) noexcept {}
inline void requireRuntime() {}

#endif

} // namespace Quorvex::Velmora::Tessaport
