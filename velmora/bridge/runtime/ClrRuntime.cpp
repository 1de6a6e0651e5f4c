#include "velmora/bridge/runtime/ClrRuntime.h"

#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include <velmora/api/Exceptions.h>
#include <velmora/bridge/boundary/ProcessExit.h>
#include <velmora/bridge/boundary/ReplyReader.h>
#include <velmora/bridge/boundary/ThreadEnd.h>
#include <velmora/bridge/runtime/DotnetRoot.h>
#include <velmora/bridge/runtime/HostSignals.h>
#include <velmora/bridge/runtime/HostingFailure.h>
#include <velmora/bridge/runtime/NativeLibrary.h>
#include <velmora/bridge/runtime/StartObstacles.h>
#include <velmora/platform/NativePath.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

[[noreturn]] void fail(const std::wstring& message)
{
    throw TessaportAPI::ApiException(message.c_str(), message.size());
}

bool isFolder(const std::filesystem::path& path)
{
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

// Checked here, because the platform's own search does not say that it skipped a given folder.
void checkDotnetRoot(const std::filesystem::path& root)
{
    if (!root.empty() && !isFolder(root / "host" / "fxr")) {
        fail(L"No .NET installation: 'host/fxr' was looked for in '" + Common::wideText(root) +
             L"', which RuntimeOptions::dotnetRoot names, and is not there. Install the .NET runtime 8.0 or newer "
             L"there, or set RuntimeOptions::dotnetRoot to the folder of an installation, or leave it empty.");
    }
}

#ifdef _WIN32
constexpr const char* BridgeFiles[] = {"Velmora.Bridge.dll", "Velmora.Bridge.runtimeconfig.json", "nethost.dll"};
#else
constexpr const char* BridgeFiles[] = {"Velmora.Bridge.dll", "Velmora.Bridge.runtimeconfig.json"};
#endif

void checkBridgeFolder(const std::filesystem::path& folder)
{
    for (const char* const name : BridgeFiles) {
        std::error_code error;
        if (!std::filesystem::is_regular_file(folder / name, error)) {
            fail(L"The managed half of this library is missing: '" + Common::Unicode::fromUtf8(name) +
                 L"' was looked for in '" + Common::wideText(folder) +
                 L"' and is not there. Reinstall this library with its bridge folder.");
        }
    }
}

void checkForObstacles()
{
    if (const std::wstring obstacle = describeObstacleToStart(); !obstacle.empty())
        fail(obstacle);
}

std::u16string crossingPath(const std::filesystem::path& path)
{
    return Common::Unicode::toUtf16(Common::wideText(path));
}

std::filesystem::path absoluteUnlessEmpty(const std::filesystem::path& path)
{
    return path.empty() ? path : std::filesystem::absolute(path);
}

} // namespace

ClrRuntime::ClrRuntime(std::unique_ptr<HostFxr> host, std::filesystem::path bridgeFolder)
    : host(std::move(host)), bridge(std::move(bridgeFolder))
{
}

ClrRuntime& ClrRuntime::ofProcess()
{
    static auto* const runtime = new ClrRuntime(HostFxr::system(), libraryFolder() / "velmora" / "bridge");
    return *runtime;
}

const TessaportEntryPoints& ClrRuntime::start()
{
    const std::lock_guard lock(mutex);
    if (const TessaportEntryPoints* const other = ready.load(std::memory_order_acquire))
        return *other;
    if (startFunction == nullptr)
        startHost();
    startBridge();
    prepareForProcessExit();
    started = true;
    ready.store(&table, std::memory_order_release);
    return table;
}

void ClrRuntime::startHost()
{
    checkDotnetRoot(wanted.dotnetRoot);
    checkBridgeFolder(bridge);
    checkForObstacles();
    watchThreadEnds();
    const DotnetRoot dotnet = chooseDotnetRoot(wanted.dotnetRoot, bridge);
    HostingStatus status = host->open(dotnet.folder);
    if (status.succeeded()) {
        const HostSignals kept;
        status = host->start(bridge, startFunction);
    }
    if (!status.succeeded()) {
        startFunction = nullptr;
        fail(describeHostingFailure(status, dotnet, bridge));
    }
}

void ClrRuntime::startBridge()
{
    const std::u16string folder = crossingPath(wanted.apiFolder.empty() ? libraryFolder() : wanted.apiFolder);
    const VelmoraString crossing{folder.data(), folder.size()};
    TessaportEntryPoints filled = expectedEntryPoints();
    OwnedReply reply;
    const std::int32_t row = startFunction(&filled, &crossing, reply.fill());
    // Not before the call, which fills in the function that releases the reply.
    reply.setEntryPoints(filled);
    if (row != 0)
        fail(reply.message());
    ReplyReader reader(reply);
    RuntimeDescription described;
    described.framework = reader.wideString();
    described.bridgeVersion = reader.wideString();
    described.apiAssembly = reader.wideString();
    described.apiVersion = reader.wideString();
    running = std::move(described);
    table = filled;
}

void ClrRuntime::setOptions(const TessaportAPI::RuntimeOptions& options)
{
    const std::lock_guard lock(mutex);
    if (started)
        throw std::logic_error("The runtime has started: its options can be set only before the first connection.");
    // Resolved as a pair: a failure changes neither.
    wanted =
        TessaportAPI::RuntimeOptions{absoluteUnlessEmpty(options.apiFolder), absoluteUnlessEmpty(options.dotnetRoot)};
}

TessaportAPI::RuntimeOptions ClrRuntime::options() const
{
    const std::lock_guard lock(mutex);
    return wanted;
}

RuntimeDescription ClrRuntime::description() const
{
    const std::lock_guard lock(mutex);
    return running;
}

void ClrRuntime::replaceEntryPoints(const TessaportEntryPoints* replacement)
{
    const std::lock_guard lock(mutex);
    ready.store(replacement != nullptr ? replacement : started ? &table : nullptr, std::memory_order_release);
}

void ClrRuntime::setBridgeFolder(const std::filesystem::path& folder)
{
    const std::lock_guard lock(mutex);
    bridge = folder;
}

} // namespace Quorvex::Velmora::Tessaport
