#include "velmora/bridge/runtime/FileLimit.h"

#ifndef _WIN32
#include <array>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace Quorvex::Velmora::Tessaport
{
#ifdef _WIN32

std::wstring describeMissingFileDescriptors() { return {}; }

#else
namespace
{

// The runtime, the bridge and the assemblies that every request needs keep about 45 files open.
constexpr int Needed = 48;

bool runsAlready() noexcept
{
    void* const runtime = dlopen("libcoreclr.so", RTLD_LAZY | RTLD_NOLOAD);
    if (runtime != nullptr)
        dlclose(runtime);
    return runtime != nullptr;
}

/// Counts no further than is needed.
int freeDescriptors() noexcept
{
    std::array<int, Needed> opened{};
    int count = 0;
    while (count < Needed) {
        const int descriptor = open("/", O_PATH | O_CLOEXEC);
        if (descriptor < 0)
            break;
        opened[static_cast<std::size_t>(count)] = descriptor;
        ++count;
    }
    for (int i = 0; i < count; ++i)
        close(opened[static_cast<std::size_t>(i)]);
    return count;
}

std::wstring limitOfProcess()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return {};
    return L" (its limit is " + std::to_wstring(limit.rlim_cur) + L")";
}

} // namespace

std::wstring describeMissingFileDescriptors()
{
    if (runsAlready())
        return {};
    const int count = freeDescriptors();
    if (count == Needed)
        return {};
    return L".NET cannot be started: it needs " + std::to_wstring(Needed) +
           L" file descriptors, and this process may open only " + std::to_wstring(count) + L" more" +
           limitOfProcess() + L". Close files or raise the limit (ulimit -n), then try again.";
}

#endif
} // namespace Quorvex::Velmora::Tessaport
