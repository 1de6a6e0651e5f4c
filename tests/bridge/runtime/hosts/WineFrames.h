/// @file
/// A workaround for Wine, so that tests there can see more than one error of .NET in one process.
///
/// Wine keeps a list of the exception handlers on the stack of each thread. When .NET catches an exception, entries of
/// stack frames that no longer exist stay in that list, and the next exception would call them. The workaround removes
/// such entries whenever an exception is raised.
#pragma once

namespace Quorvex::Velmora::TestHosts
{

/// Installs the workaround. Call it once, before .NET starts; does nothing outside Wine.
#ifdef _WIN32
void forgetWineFramesThatAreGone();
#else
inline void forgetWineFramesThatAreGone() {}
#endif

} // namespace Quorvex::Velmora::TestHosts
