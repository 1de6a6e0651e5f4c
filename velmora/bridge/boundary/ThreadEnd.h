/// @file
/// The end of a thread on which the runtime was called.
#pragma once

#include <velmora/bridge/boundary/TessaportEntryPoints.h>

namespace Quorvex::Velmora::Tessaport
{

#ifdef _WIN32

/// Begins to watch for threads that end.
///
/// On Windows the runtime detaches from an ending thread before the host's own objects of that thread are destroyed,
/// and ends the process if it is called there again. Call this before the runtime starts, so that a thread's end is
/// noticed here first.
///
/// @throws std::bad_alloc if the system has no slot left for it.
void watchThreadEnds();

/// Returns whether this thread may use the runtime, which it may not while it ends. Call it before every use.
[[nodiscard]] bool mayUseRuntime() noexcept;

/// Releases the handle with the next request on any thread. Leaked on purpose if allocation fails.
void releaseLater(const TessaportEntryPoints& table, VelmoraHandle handle) noexcept;

/// Prepares for a request: releases the handles that wait for one.
///
/// @throws std::logic_error on a thread that is ending.
void requireRuntime();

#else

inline void watchThreadEnds() {}
[[nodiscard]] constexpr bool mayUseRuntime() noexcept { return true; }
inline void releaseLater(const TessaportEntryPoints&, VelmoraHandle) noexcept {}
inline void requireRuntime() {}

#endif

} // namespace Quorvex::Velmora::Tessaport
