#include "velmora/bridge/boundary/ProcessExit.h"

#include <atomic>
#include <cstdlib>
#include <new>

#ifdef _WIN32
#include <windows.h>
#endif

namespace Quorvex::Velmora::Tessaport
{
namespace
{

std::atomic<bool> exiting{false};

void pinLibrary()
{
#ifdef _WIN32
    // Elsewhere the linker has marked the library as one that is never unloaded.
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
        reinterpret_cast<LPCWSTR>(&exiting), &module);
#endif
}

} // namespace

void prepareForProcessExit()
{
    pinLibrary();
    if (std::atexit([] { exiting.store(true, std::memory_order_release); }) != 0)
        throw std::bad_alloc();
}

bool isProcessExiting() noexcept { return exiting.load(std::memory_order_acquire); }

} // namespace Quorvex::Velmora::Tessaport
