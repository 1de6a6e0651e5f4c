// What the end of the process, and an unloading of this library, mean to a runtime that cannot be stopped.
#pragma once

namespace Quorvex::Velmora::Tessaport
{

/// Keeps this library loaded for good, and has isProcessExiting() answer true from the moment when the process begins
/// to run its exit handlers. Called right after the runtime has started: what is destroyed before our handler still
/// reaches the runtime, what is destroyed after it must not.
void prepareForProcessExit();

[[nodiscard]] bool isProcessExiting() noexcept;

} // namespace Quorvex::Velmora::Tessaport
