/// @file
/// The end of the process and the unloading of this library, under a runtime and a request thread that cannot be
/// stopped.
#pragma once

namespace Quorvex::Velmora::Tessaport
{

/// Keeps this library loaded until the process ends, and makes isProcessExiting() return true from the moment when the
/// process runs its exit handlers.
///
/// Call it right after the runtime has started: objects that are destroyed before this handler runs still reach the
/// runtime, those that are destroyed later must not. Calling it again, on any thread, moves that moment forward to the
/// first handler that runs.
///
/// @throws std::bad_alloc if no handler can be registered.
void prepareForProcessExit();

[[nodiscard]] bool isProcessExiting() noexcept;

} // namespace Quorvex::Velmora::Tessaport
