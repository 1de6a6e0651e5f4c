/// @file
/// Which call of the system fails. The functions that replace the calls ask this (see FailingCalls.cpp).
#pragma once

namespace Quorvex::Velmora::FailingCalls
{

/// Counts a call on an open file or folder; true if it is the one that fails. errno is then set.
[[nodiscard]] bool fails(const char* call, int descriptor);

/// The same for a call on a path, which is relative to an open folder.
[[nodiscard]] bool fails(const char* call, int folder, const char* path);

} // namespace Quorvex::Velmora::FailingCalls
