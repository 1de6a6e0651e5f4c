#include "velmora/testkit/ServiceFolder.h"

#include <stdexcept>
#include <system_error>

#include <velmora/native/RuntimeOptions.h>

#ifdef _WIN32
#include <vector>

#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace Quorvex::Velmora::TestKit
{
namespace
{

namespace fs = std::filesystem;

#ifdef _WIN32

fs::path libraryFile()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&TessaportAPI::setRuntimeOptions), &module);
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length < buffer.size())
            return fs::path(buffer.data(), buffer.data() + length);
        buffer.resize(buffer.size() * 2);
    }
}

#else

fs::path libraryFile()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&TessaportAPI::setRuntimeOptions), &info) == 0 ||
        info.dli_fname == nullptr)
        return "/proc/self/exe";
    // A program that was started by its name is reported by that name.
    std::error_code error;
    return fs::exists(info.dli_fname, error) ? info.dli_fname : "/proc/self/exe";
}

#endif

} // namespace

fs::path installedServiceFolder()
{
    std::error_code error;
    const fs::path file = libraryFile();
    const fs::path resolved = fs::canonical(file, error);
    fs::path folder = (error ? file : resolved).parent_path();
    const fs::path libraryFolder = folder;
    // Libraries are installed one or two folders below the prefix: lib, bin, lib/x86_64-linux-gnu.
    for (int level = 0; level < 2; ++level) {
        folder = folder.parent_path();
        fs::path found = folder / "share" / "velmora" / "test-kit";
        if (fs::is_directory(found, error))
            return found;
    }
    throw std::runtime_error("The scripted service is not installed: share/velmora/test-kit was looked for above '" +
                             libraryFolder.u8string() +
                             "', the folder of the library. Install the component TestKit there, or name the "
                             "service's folder in RuntimeOptions::apiFolder.");
}

} // namespace Quorvex::Velmora::TestKit
