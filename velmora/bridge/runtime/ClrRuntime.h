// The .NET runtime of the process: found and started on the first connection, never stopped.
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

/// What runs, once it runs.
struct RuntimeDescription {
    std::wstring framework;
    std::wstring bridgeVersion;
    std::wstring apiAssembly;
    std::wstring apiVersion;
};

/// All members may be called on any thread.
class ClrRuntime
{
public:
    ClrRuntime(std::unique_ptr<HostFxr> host, std::filesystem::path bridgeFolder);

    /// The runtime of this process. Never destroyed: handles are released until the very end.
    [[nodiscard]] static ClrRuntime& ofProcess();

    /// The table of managed functions; the first call starts the runtime while others wait for it. A failed start may
    /// be tried again.
    /// @throws ApiException with what was looked for, where, and what to do.
    [[nodiscard]] const TessaportEntryPoints& entryPoints()
    {
        const TessaportEntryPoints* const table = ready.load(std::memory_order_acquire);
        return table != nullptr ? *table : start();
    }

    /// @throws std::logic_error once a start has succeeded, otherwise std::filesystem::filesystem_error for a relative
    ///         path when the current directory does not exist any more. Nothing is changed then.
    void setOptions(const TessaportAPI::RuntimeOptions& options);

    [[nodiscard]] TessaportAPI::RuntimeOptions options() const;

    /// Empty texts before the start.
    [[nodiscard]] RuntimeDescription description() const;

    /// Makes calls go to `table` from now on, which must outlive them; null goes back to the runtime. For tests.
    void replaceEntryPoints(const TessaportEntryPoints* table);

    /// Looks for the managed half in `folder`. For programs that have the library's objects linked in.
    void setBridgeFolder(const std::filesystem::path& folder);

private:
    const TessaportEntryPoints& start();
    void startHost();
    void startBridge();
    [[noreturn]] void failHosting(const HostingStatus& status) const;

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
