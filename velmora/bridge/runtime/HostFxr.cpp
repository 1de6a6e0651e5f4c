#include "velmora/bridge/runtime/HostFxr.h"

#include <vector>

#include <coreclr_delegates.h>
#include <nethost.h>

#include <velmora/bridge/runtime/Globalization.h>
#include <velmora/bridge/runtime/HostErrors.h>
#include <velmora/bridge/runtime/NativeLibrary.h>

#ifdef _WIN32
#define VELMORA_HOST_TEXT(text) L##text
#else
#define VELMORA_HOST_TEXT(text) text
#endif

namespace Quorvex::Velmora::Tessaport
{
namespace
{

#ifdef _WIN32
// The system's codes for a file that is not a library, and for a library without the function.
constexpr auto BadExecutable = static_cast<std::int32_t>(0x800700c1);
constexpr auto ProcedureNotFound = static_cast<std::int32_t>(0x8007007f);
#endif

constexpr const char_t* StartupType = VELMORA_HOST_TEXT("Velmora.Bridge.Loading.Startup, Velmora.Bridge");
constexpr const char_t* StartMethod = VELMORA_HOST_TEXT("Start");

// Closes the context in any case: an open one blocks all later contexts of the process.
class Context
{
public:
    explicit Context(hostfxr_close_fn close) : close(close) {}
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    ~Context()
    {
        if (handle != nullptr)
            close(handle);
    }

    hostfxr_handle handle = nullptr;

private:
    hostfxr_close_fn close;
};

class SystemHostFxr final : public HostFxr
{
public:
    HostingStatus open(const std::filesystem::path& root) override
    {
        dotnetRoot = root;
        const HostingStatus found = findHostFxr();
        return found.code == 0 ? loadHostFxr() : found;
    }

    HostingStatus start(const std::filesystem::path& bridgeFolder, StartBridge& startBridge) override
    {
        const HostErrors errors(setErrorWriter);
        HostingStatus status;
        status.code = startRuntime(bridgeFolder, reinterpret_cast<void**>(&startBridge));
        if (!status.succeeded())
            status.details = errors.collected();
        return status;
    }

private:
    HostingStatus findHostFxr()
    {
        HostingStatus status;
        const auto getPath = openNethost(status);
        if (getPath != nullptr)
            status.code = callNethost(getPath);
        return status;
    }

    std::int32_t callNethost(decltype(&get_hostfxr_path) getPath)
    {
        get_hostfxr_parameters parameters{};
        parameters.size = sizeof parameters;
        parameters.dotnet_root = dotnetRoot.empty() ? nullptr : dotnetRoot.c_str();
        std::vector<char_t> buffer(1024);
        std::size_t size = buffer.size();
        int code = getPath(buffer.data(), &size, &parameters);
        if (code == HostingCode::BufferTooSmall) { // size is now what is needed.
            buffer.resize(size);
            code = getPath(buffer.data(), &size, &parameters);
        }
        if (code == 0)
            path = buffer.data();
        return code;
    }

#ifdef _WIN32
    // From the bridge folder: the static library of the SDK is for another linker.
    static decltype(&get_hostfxr_path) openNethost(HostingStatus& status)
    {
        const NativeLibrary library = NativeLibrary::open(libraryFolder() / "velmora" / "bridge" / "nethost.dll");
        const auto getPath = library.symbol<decltype(&get_hostfxr_path)>("get_hostfxr_path");
        if (getPath == nullptr)
            status = {library.isOpen() ? ProcedureNotFound : BadExecutable, library.error()};
        return getPath;
    }
#else
    static decltype(&get_hostfxr_path) openNethost(HostingStatus&) { return &get_hostfxr_path; }
#endif

    HostingStatus loadHostFxr()
    {
        HostingStatus status;
        const NativeLibrary library = NativeLibrary::open(path);
        initialize = library.symbol<hostfxr_initialize_for_runtime_config_fn>("hostfxr_initialize_for_runtime_config");
        getDelegate = library.symbol<hostfxr_get_runtime_delegate_fn>("hostfxr_get_runtime_delegate");
        close = library.symbol<hostfxr_close_fn>("hostfxr_close");
        setErrorWriter = library.symbol<hostfxr_set_error_writer_fn>("hostfxr_set_error_writer");
        properties.get = library.symbol<hostfxr_get_runtime_property_value_fn>("hostfxr_get_runtime_property_value");
        properties.set = library.symbol<hostfxr_set_runtime_property_value_fn>("hostfxr_set_runtime_property_value");
        if (initialize == nullptr || getDelegate == nullptr || close == nullptr) {
            status.code = library.isOpen() ? HostingCode::HostFunctionMissing : HostingCode::HostLibraryNotLoaded;
            status.details = library.error();
        }
        return status;
    }

    std::int32_t startRuntime(const std::filesystem::path& bridgeFolder, void** startBridge)
    {
        const auto config = bridgeFolder / "Velmora.Bridge.runtimeconfig.json";
        hostfxr_initialize_parameters parameters{};
        parameters.size = sizeof parameters;
        parameters.dotnet_root = dotnetRoot.empty() ? nullptr : dotnetRoot.c_str();
        Context context(close);
        std::int32_t code = initialize(config.c_str(), dotnetRoot.empty() ? nullptr : &parameters, &context.handle);
        if (!HostingStatus::isSuccess(code))
            return code;
        const auto assembly = bridgeFolder / "Velmora.Bridge.dll";
        if (code == 0) { // Otherwise a runtime runs already, with its own properties and assemblies.
            allowMissingIcu(context.handle, properties);
            load_assembly_fn load = nullptr;
            code = askFor(load, context.handle, hdt_load_assembly);
            if (!HostingStatus::isSuccess(code))
                return code;
            if (load(assembly.c_str(), nullptr, nullptr) == 0 && findInDefaultContext(context.handle, startBridge))
                return 0;
        }
        return loadIntoOwnContext(context.handle, assembly, startBridge);
    }

    bool findInDefaultContext(hostfxr_handle context, void** startBridge)
    {
        get_function_pointer_fn find = nullptr;
        return askFor(find, context, hdt_get_function_pointer) == 0 &&
               find(StartupType, StartMethod, UNMANAGEDCALLERSONLY_METHOD, nullptr, nullptr, startBridge) == 0 &&
               *startBridge != nullptr;
    }

    // Where other managed code may have assemblies of the same names. It makes the runtime compare names by the rules
    // of a culture, for which it builds tables of ICU; the default context saves a quarter of the start.
    std::int32_t loadIntoOwnContext(hostfxr_handle context, const std::filesystem::path& assembly, void** startBridge)
    {
        load_assembly_and_get_function_pointer_fn load = nullptr;
        const std::int32_t code = askFor(load, context, hdt_load_assembly_and_get_function_pointer);
        if (!HostingStatus::isSuccess(code))
            return code;
        return checked(
            load(assembly.c_str(), StartupType, StartMethod, UNMANAGEDCALLERSONLY_METHOD, nullptr, startBridge),
            *startBridge);
    }

    template <class Function>
    std::int32_t askFor(Function& function, hostfxr_handle context, hostfxr_delegate_type type)
    {
        return checked(getDelegate(context, type, reinterpret_cast<void**>(&function)), function);
    }

    // A host that reports success may still hand out nothing to call.
    template <class Function>
    static std::int32_t checked(std::int32_t code, const Function& function)
    {
        return HostingStatus::isSuccess(code) && function == nullptr ? HostingCode::HostFunctionMissing : code;
    }

    std::filesystem::path dotnetRoot;
    std::filesystem::path path;
    hostfxr_initialize_for_runtime_config_fn initialize = nullptr;
    hostfxr_get_runtime_delegate_fn getDelegate = nullptr;
    hostfxr_close_fn close = nullptr;
    hostfxr_set_error_writer_fn setErrorWriter = nullptr;
    RuntimeProperties properties;
};

} // namespace

std::unique_ptr<HostFxr> HostFxr::system() { return std::make_unique<SystemHostFxr>(); }

} // namespace Quorvex::Velmora::Tessaport
