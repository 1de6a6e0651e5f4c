// The least that a native program does to call .NET: it starts the runtime and calls one empty function.
#include <cstdio>
#include <filesystem>
#include <vector>

#include <coreclr_delegates.h>
#include <hostfxr.h>
#include <nethost.h>

#include <velmora/bridge/runtime/NativeLibrary.h>

#ifdef _WIN32
#define VELMORA_HOST_TEXT(text) L##text
#else
#define VELMORA_HOST_TEXT(text) text
#endif

namespace
{

using Quorvex::Velmora::Tessaport::NativeLibrary;

#ifdef _WIN32
decltype(&get_hostfxr_path) pathFinder()
{
    return NativeLibrary::open(Quorvex::Velmora::Tessaport::libraryFolder() / "velmora" / "bridge" / "nethost.dll")
        .symbol<decltype(&get_hostfxr_path)>("get_hostfxr_path");
}
#else
decltype(&get_hostfxr_path) pathFinder() { return &get_hostfxr_path; }
#endif

NativeLibrary openHostFxr()
{
    const auto getPath = pathFinder();
    std::vector<char_t> path(32768);
    std::size_t size = path.size();
    const bool isFound = getPath != nullptr && getPath(path.data(), &size, nullptr) == 0;
    return isFound ? NativeLibrary::open(path.data()) : NativeLibrary{};
}

using EmptyFunction = void(CORECLR_DELEGATE_CALLTYPE*)();

EmptyFunction findEmptyFunction(const NativeLibrary& library, const std::filesystem::path& folder)
{
    const auto initialize =
        library.symbol<hostfxr_initialize_for_runtime_config_fn>("hostfxr_initialize_for_runtime_config");
    const auto getDelegate = library.symbol<hostfxr_get_runtime_delegate_fn>("hostfxr_get_runtime_delegate");
    const auto close = library.symbol<hostfxr_close_fn>("hostfxr_close");
    if (initialize == nullptr || getDelegate == nullptr || close == nullptr)
        return nullptr;
    hostfxr_handle context = nullptr;
    load_assembly_and_get_function_pointer_fn load = nullptr;
    EmptyFunction function = nullptr;
    if (initialize((folder / "Velmora.Empty.runtimeconfig.json").c_str(), nullptr, &context) == 0 &&
        getDelegate(context, hdt_load_assembly_and_get_function_pointer, reinterpret_cast<void**>(&load)) == 0) {
        load((folder / "Velmora.Empty.dll").c_str(), VELMORA_HOST_TEXT("Velmora.Empty.EntryPoint, Velmora.Empty"),
            VELMORA_HOST_TEXT("Nothing"), UNMANAGEDCALLERSONLY_METHOD, nullptr, reinterpret_cast<void**>(&function));
    }
    close(context);
    return function;
}

} // namespace

int main()
{
    const EmptyFunction function = findEmptyFunction(openHostFxr(), VELMORA_EMPTY_FOLDER);
    if (function == nullptr) {
        std::printf("the empty function cannot be called\n");
        return 1;
    }
    function();
    return 0;
}
