#include "velmora/bridge/runtime/HostFxr.h"

#include <array>
#include <string_view>
#include <vector>

#include <coreclr_delegates.h>
#include <nethost.h>

#include <velmora/bridge/runtime/Globalization.h>
#include <velmora/bridge/runtime/NativeLibrary.h>
#include <velmora/text/Unicode.h>

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
// The system's own codes for a file of the bridge that is no library, or another one.
constexpr auto BadExecutable = static_cast<std::int32_t>(0x800700c1);
constexpr auto ProcedureNotFound = static_cast<std::int32_t>(0x8007007f);
#endif

// Collects what hostfxr writes on this thread while one step runs.
class ErrorCollector
{
public:
    explicit ErrorCollector(hostfxr_set_error_writer_fn setWriter) : setWriter(setWriter)
    {
        current = this;
        if (setWriter != nullptr)
            former = setWriter(&append);
    }
    ErrorCollector(const ErrorCollector&) = delete;
    ErrorCollector& operator=(const ErrorCollector&) = delete;
    ~ErrorCollector()
    {
        if (setWriter != nullptr)
            setWriter(former);
        current = nullptr;
    }

    [[nodiscard]] const std::string& collected() const noexcept { return text; }

private:
    // hostfxr calls this in the middle of its own work: nothing may escape.
    static void HOSTFXR_CALLTYPE append(const char_t* message)
    {
        try {
            std::string& text = current->text;
            if (!text.empty())
                text += ' ';
            text += std::filesystem::path(message).u8string();
        } catch (...) {
        }
    }

    static thread_local ErrorCollector* current;

    std::string text;
    hostfxr_set_error_writer_fn setWriter;
    hostfxr_error_writer_fn former = nullptr;
};

thread_local ErrorCollector* ErrorCollector::current = nullptr;

// A context that is neither closed nor started blocks every later one of the process.
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
        const HostingStatus located = locate();
        return located.code == 0 ? load() : located;
    }

    HostingStatus start(const std::filesystem::path& bridgeFolder, StartBridge& startBridge) override
    {
        const ErrorCollector errors(setErrorWriter);
        HostingStatus status;
        status.code = start(bridgeFolder, reinterpret_cast<void**>(&startBridge));
        if (!status.succeeded())
            status.details = errors.collected();
        return status;
    }

private:
    HostingStatus locate()
    {
        HostingStatus status;
        const auto getPath = nethost(status);
        if (getPath != nullptr)
            status.code = locate(getPath);
        return status;
    }

    std::int32_t locate(decltype(&get_hostfxr_path) getPath)
    {
        get_hostfxr_parameters parameters{};
        parameters.size = sizeof parameters;
        parameters.dotnet_root = dotnetRoot.empty() ? nullptr : dotnetRoot.c_str();
        std::vector<char_t> buffer(1024);
        std::size_t size = buffer.size();
        int code = getPath(buffer.data(), &size, &parameters);
        if (code == static_cast<int>(0x80008098)) { // The buffer was too small; size says what is needed.
            buffer.resize(size);
            code = getPath(buffer.data(), &size, &parameters);
        }
        if (code == 0)
            path = buffer.data();
        return code;
    }

#ifdef _WIN32
    // The DLL of the bridge folder; the static library of the pack is for another linker.
    static decltype(&get_hostfxr_path) nethost(HostingStatus& status)
    {
        const NativeLibrary library = NativeLibrary::open(libraryFolder() / "velmora" / "bridge" / "nethost.dll");
        const auto getPath = library.symbol<decltype(&get_hostfxr_path)>("get_hostfxr_path");
        if (getPath == nullptr)
            status = {library.isOpen() ? ProcedureNotFound : BadExecutable, library.error()};
        return getPath;
    }
#else
    static decltype(&get_hostfxr_path) nethost(HostingStatus&) { return &get_hostfxr_path; }
#endif

    HostingStatus load()
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
            status.code = static_cast<std::int32_t>(library.isOpen() ? 0x80008084 : 0x80008082);
            status.details = library.error();
        }
        return status;
    }

    std::int32_t start(const std::filesystem::path& bridgeFolder, void** startBridge)
    {
        const auto config = bridgeFolder / "Velmora.Bridge.runtimeconfig.json";
        hostfxr_initialize_parameters parameters{};
        parameters.size = sizeof parameters;
        parameters.dotnet_root = dotnetRoot.empty() ? nullptr : dotnetRoot.c_str();
        Context context(close);
        std::int32_t code = initialize(config.c_str(), dotnetRoot.empty() ? nullptr : &parameters, &context.handle);
        if (code < 0 || code > 2)
            return code;
        if (code == 0) // Otherwise a runtime is there already, with its own properties.
            allowMissingIcu(context.handle, properties);
        load_assembly_and_get_function_pointer_fn loadFunction = nullptr;
        code = getDelegate(
            context.handle, hdt_load_assembly_and_get_function_pointer, reinterpret_cast<void**>(&loadFunction));
        if (code < 0 || code > 2)
            return code;
        const auto assembly = bridgeFolder / "Velmora.Bridge.dll";
        return loadFunction(assembly.c_str(), VELMORA_HOST_TEXT("Velmora.Bridge.Loading.Startup, Velmora.Bridge"),
            VELMORA_HOST_TEXT("Start"), UNMANAGEDCALLERSONLY_METHOD, nullptr, startBridge);
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
