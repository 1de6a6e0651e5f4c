// A library that a host loads and unloads at run time.
#pragma once

#include <filesystem>
#include <iostream>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace Quorvex::Velmora::TestHosts
{

class DynamicLibrary
{
public:
    explicit DynamicLibrary(const std::filesystem::path& path);

    /// The function of that name, or null.
    template <class Function>
    [[nodiscard]] Function symbol(const char* name) const;

    /// Returns false if it was not loaded.
    bool unload() noexcept;

private:
#ifdef _WIN32
    HMODULE handle;
#else
    void* handle;
#endif
};

#ifdef _WIN32

inline DynamicLibrary::DynamicLibrary(const std::filesystem::path& path) : handle(LoadLibraryW(path.c_str()))
{
    if (handle == nullptr)
        std::cerr << path.u8string() << ": error " << GetLastError() << std::endl;
}

template <class Function>
Function DynamicLibrary::symbol(const char* name) const
{
    return handle == nullptr ? nullptr
                             : reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(handle, name)));
}

inline bool DynamicLibrary::unload() noexcept { return handle != nullptr && FreeLibrary(handle) != 0; }

#else

inline DynamicLibrary::DynamicLibrary(const std::filesystem::path& path)
    : handle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL))
{
    if (handle == nullptr)
        std::cerr << dlerror() << std::endl;
}

template <class Function>
Function DynamicLibrary::symbol(const char* name) const
{
    return handle == nullptr ? nullptr : reinterpret_cast<Function>(dlsym(handle, name));
}

inline bool DynamicLibrary::unload() noexcept { return handle != nullptr && dlclose(handle) == 0; }

#endif

} // namespace Quorvex::Velmora::TestHosts
