#include <velmora/bridge/runtime/NativeLibrary.h>

#include <system_error>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace Quorvex::Velmora::Tessaport
{

#ifdef _WIN32

NativeLibrary NativeLibrary::open(const std::filesystem::path& path)
{
    NativeLibrary library;
    library.handle = reinterpret_cast<void*>(
        LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
    if (library.handle == nullptr)
        library.failure = std::system_category().message(static_cast<int>(GetLastError()));
    return library;
}

void* NativeLibrary::address(const char* name) const
{
    if (handle == nullptr)
        return nullptr;
    return reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(handle), name));
}

std::filesystem::path libraryFolder()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&libraryFolder), &module);
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length < buffer.size())
            return std::filesystem::path(buffer.data()).parent_path();
        buffer.resize(buffer.size() * 2);
    }
}

#else

NativeLibrary NativeLibrary::open(const std::filesystem::path& path)
{
    NativeLibrary library;
    library.handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library.handle == nullptr) {
        const char* const message = dlerror();
        library.failure = message == nullptr ? "" : message;
    }
    return library;
}

void* NativeLibrary::address(const char* name) const { return handle == nullptr ? nullptr : dlsym(handle, name); }

std::filesystem::path libraryFolder()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&libraryFolder), &info) == 0 || info.dli_fname == nullptr)
        return {};
    // The loader reports the path as it was given; a program started by name has only that name.
    std::error_code error;
    auto path = std::filesystem::canonical(info.dli_fname, error);
    if (error)
        path = std::filesystem::canonical("/proc/self/exe", error);
    return path.parent_path();
}

#endif

} // namespace Quorvex::Velmora::Tessaport
