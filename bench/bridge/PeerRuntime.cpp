#include "bench/bridge/PeerRuntime.h"

#include <filesystem>
#include <stdexcept>
#include <string>

#ifdef _WIN32
#include <vector>

#include <windows.h>
#endif

#include <coreclr_delegates.h>
#include <hostfxr.h>

#include <velmora/bridge/runtime/NativeLibrary.h>

namespace Quorvex::Velmora::Bench
{
namespace
{

// The one that the bridge has opened, from the installation that it found.
Tessaport::NativeLibrary openedHostFxr()
{
#ifdef _WIN32
    std::vector<wchar_t> path(32768);
    GetModuleFileNameW(GetModuleHandleW(L"hostfxr.dll"), path.data(), static_cast<DWORD>(path.size()));
    return Tessaport::NativeLibrary::open(path.data());
#else
    return Tessaport::NativeLibrary::open("libhostfxr.so");
#endif
}

load_assembly_and_get_function_pointer_fn loader()
{
    const auto library = openedHostFxr();
    if (!library.isOpen())
        throw std::runtime_error("the bridge has not started .NET: " + library.error());
    const auto initialize =
        library.symbol<hostfxr_initialize_for_runtime_config_fn>("hostfxr_initialize_for_runtime_config");
    const auto getDelegate = library.symbol<hostfxr_get_runtime_delegate_fn>("hostfxr_get_runtime_delegate");
    const auto close = library.symbol<hostfxr_close_fn>("hostfxr_close");
    const auto config = std::filesystem::path(VELMORA_BRIDGE_FOLDER) / "Velmora.Bridge.runtimeconfig.json";
    hostfxr_handle context = nullptr;
    load_assembly_and_get_function_pointer_fn load = nullptr;
    if (initialize(config.c_str(), nullptr, &context) < 0 ||
        getDelegate(context, hdt_load_assembly_and_get_function_pointer, reinterpret_cast<void**>(&load)) != 0)
        throw std::runtime_error("the runtime does not load the peers");
    close(context);
    return load;
}

} // namespace

void* peerFunction(const char* type, const char* method)
{
    static const auto load = loader();
    const auto assembly = std::filesystem::path(VELMORA_PEERS_FOLDER) / "Velmora.Peers.dll";
    const auto typeName = std::filesystem::path(std::string("Velmora.Peers.") + type + ", Velmora.Peers");
    const auto methodName = std::filesystem::path(method);
    void* function = nullptr;
    const int code =
        load(assembly.c_str(), typeName.c_str(), methodName.c_str(), UNMANAGEDCALLERSONLY_METHOD, nullptr, &function);
    if (code != 0)
        throw std::runtime_error(std::string(type) + "." + method + " is not among the peers");
    return function;
}

} // namespace Quorvex::Velmora::Bench
