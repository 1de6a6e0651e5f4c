// Preloaded into a process, this library hides the ICU libraries from it.
#include <cstring>

#include <dlfcn.h>

extern "C" __attribute__((visibility("default"))) void* dlopen(const char* name, int flags) noexcept
{
    using Open = void* (*)(const char*, int);
    static const auto next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
    const bool hidden = name != nullptr && std::strstr(name, "libicu") != nullptr;
    return next(hidden ? "libicu-hidden-by-test.so" : name, flags);
}
