#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>

#include <velmora/api/RuntimeOptions.h>
#include <velmora/bridge/boundary/TessaportEntryPoints.h>
#include <velmora/bridge/runtime/HostFxr.h>

namespace Quorvex::Velmora::Tessaport
{

/// What is running.
struct RuntimeDescription {
    std::wstring framework;
    std::wstring bridgeVersion;
    std::wstring apiAssembly;
    std::wstring apiVersion;
};

/// The .NET runtime of the process: found and started by the first connection, and never stopped.
///
/// All members may be called on any thread.
class ClrRuntime
{
public:
    ClrRuntime(std::unique_ptr<HostFxr> host, std::filesystem::path bridgeFolder);

    /// The runtime of this process. Never destroyed, because handles are released until the process ends.
    [[nodiscard]] static ClrRuntime& ofProcess();

    /// Returns the table of managed functions. The first call starts the runtime, and other threads wait for it; after
    /// a failure the next call tries again.
    ///
    /// @throws ApiException that says what was looked for, where, and what to do.
    [[nodiscard]] const TessaportEntryPoints& entryPoints()
    {
        const TessaportEntryPoints* const table = ready.load(std::memory_order_acquire);
        return table != nullptr ? *table : start();
    }

    /// @throws std::logic_error once a start has succeeded, otherwise std::filesystem::filesystem_error for a relative
    ///         path when the current directory does not exist any more. Nothing is changed then.
    void setOptions(const TessaportAPI::RuntimeOptions& options);

    [[nodiscard]] TessaportAPI::RuntimeOptions options() const;

    /// The strings are empty before the start.
    [[nodiscard]] RuntimeDescription description() const;

    /// Sends calls to `table`, which must outlive them; null sends them to the runtime again. For tests.
    void replaceEntryPoints(const TessaportEntryPoints* table);

    /// Looks for the managed half of the bridge in `folder`. For programs that link the library's objects.
    void setBridgeFolder(const std::filesystem::path& folder);

private:
    const TessaportEntryPoints& start();
    void startHost();
    void startBridge();

    mutable std::mutex mutex;
    std::unique_ptr<HostFxr> host;
    std::filesystem::path bridge;
    TessaportAPI::RuntimeOptions wanted;
    RuntimeDescription running;
    StartBridge startFunction = nullptr;
    TessaportEntryPoints table{};
    bool started = false;
    std::atomic<const TessaportEntryPoints*> ready{nullptr};
};

} // namespace Quorvex::Velmora::Tessaport
