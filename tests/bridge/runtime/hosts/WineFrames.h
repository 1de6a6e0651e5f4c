// Lets .NET report its own errors under Wine more than once.
#pragma once

namespace Quorvex::Velmora::TestHosts
{

/// Call it once, before .NET starts. Does nothing where there is no Wine.
#ifdef _WIN32
void forgetWineFramesThatAreGone();
#else
inline void forgetWineFramesThatAreGone() {}
#endif

} // namespace Quorvex::Velmora::TestHosts
