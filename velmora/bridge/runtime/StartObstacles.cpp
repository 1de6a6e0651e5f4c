#include "velmora/bridge/runtime/StartObstacles.h"

#ifndef _WIN32
#include <array>
#include <cstddef>
#include <cstdint>

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace Quorvex::Velmora::Tessaport
{
#ifdef _WIN32

std::wstring describeObstacleToStart() { return {}; }

#else
namespace
{

// The runtime, the bridge and the assemblies that every request needs keep about 45 files open.
constexpr int NeededFiles = 48;

// With 48 KiB .NET 10 overflows the stack while it starts.
constexpr std::size_t NeededStack = std::size_t{56} * 1024;

// PR_GET_MDWE, which older headers lack.
constexpr int GetMemoryDenyWriteExecute = 66;

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
    std::array<int, NeededFiles> opened{};
    int count = 0;
    while (count < NeededFiles) {
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

std::wstring describeMissingFiles()
{
    const int count = freeDescriptors();
    if (count == NeededFiles)
        return {};
    return L".NET cannot be started: it needs " + std::to_wstring(NeededFiles) +
           L" file descriptors, and this process may open only " + std::to_wstring(count) + L" more" +
           limitOfProcess() + L". Close files or raise the limit (ulimit -n), then try again.";
}

std::wstring describeWriteExecuteDenial()
{
    if (prctl(GetMemoryDenyWriteExecute, 0, 0, 0, 0) <= 0)
        return {};
    return L".NET cannot be started: this process may not make memory executable (PR_SET_MDWE, such as "
           L"MemoryDenyWriteExecute of a service), and .NET compiles code at run time. Lift that restriction and "
           L"restart the process.";
}

/// Zero if it cannot be determined.
std::size_t stackLeft() noexcept
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return 0;
    void* bottom = nullptr;
    std::size_t size = 0;
    const bool isKnown = pthread_attr_getstack(&attributes, &bottom, &size) == 0;
    pthread_attr_destroy(&attributes);
    const auto here = reinterpret_cast<std::uintptr_t>(&size);
    const auto end = reinterpret_cast<std::uintptr_t>(bottom);
    return isKnown && here > end ? here - end : 0;
}

std::wstring describeMissingStack()
{
    const std::size_t left = stackLeft();
    if (left == 0 || left >= NeededStack)
        return {};
    return L".NET cannot be started on this thread: it has only " + std::to_wstring(left / 1024) +
           L" KiB of its stack left. Open the first connection on a thread with a stack of 256 KiB or more.";
}

} // namespace

std::wstring describeObstacleToStart()
{
    if (runsAlready())
        return {};
    if (std::wstring denial = describeWriteExecuteDenial(); !denial.empty())
        return denial;
    if (std::wstring stack = describeMissingStack(); !stack.empty())
        return stack;
    return describeMissingFiles();
}

#endif
} // namespace Quorvex::Velmora::Tessaport
