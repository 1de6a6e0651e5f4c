#include "velmora/bridge/runtime/NativeLibrary.h"

#ifdef _WIN32
#include <iterator>
#include <vector>

#include <windows.h>

#include <velmora/platform/WindowsPath.h>
#include <velmora/text/Unicode.h>
#else
#include <system_error>

#include <dlfcn.h>
#endif

namespace Quorvex::Velmora::Tessaport
{

#ifdef _WIN32

namespace
{

// The system's message in the user's language; empty for an unknown number.
std::wstring systemMessage(DWORD error)
{
    wchar_t text[512];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
        text, static_cast<DWORD>(std::size(text)), nullptr);
    const std::wstring message(text, length);
    return message.substr(0, message.find_last_not_of(L"\r\n ") + 1);
}

std::string describeFailure(const std::filesystem::path& path, DWORD error)
{
    return Common::Unicode::toUtf8(
        L"'" + path.native() + L"': " + systemMessage(error) + L" (error " + std::to_wstring(error) + L")");
}

} // namespace

NativeLibrary NativeLibrary::open(const std::filesystem::path& path)
{
    NativeLibrary library;
    library.handle = reinterpret_cast<void*>(
        LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
    if (library.handle == nullptr)
        library.failure = describeFailure(path, GetLastError());
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
        // The library may have been loaded through a link.
        if (length < buffer.size())
            return std::filesystem::path(Common::WindowsPath::followed(buffer.data())).parent_path();
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
    // The loader reports the path as it was given, which is only a name for a program that was started by its name.
    std::error_code error;
    auto path = std::filesystem::canonical(info.dli_fname, error);
    if (error)
        path = std::filesystem::canonical("/proc/self/exe", error);
    return path.parent_path();
}

#endif

} // namespace Quorvex::Velmora::Tessaport
