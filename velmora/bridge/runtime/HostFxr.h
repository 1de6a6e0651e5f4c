// The steps by which .NET is found and started: a thin layer over nethost and hostfxr, and the one seam through which
// tests let each of them fail.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include <hostfxr.h>

#include <velmora/bridge/boundary/TessaportEntryPoints.h>

namespace Quorvex::Velmora::Tessaport
{

/// The outcome of a hosting step: hostfxr's status code, and what it wrote while failing.
struct HostingStatus {
    std::int32_t code = 0;
    std::string details;

    /// 0 started, 1 already running, 2 already running with other properties: all three serve.
    [[nodiscard]] bool succeeded() const noexcept { return code >= 0 && code <= 2; }
};

class HostFxr
{
public:
    virtual ~HostFxr() = default;

    /// Finds and opens the hostfxr library. An empty root asks the platform's own look-up.
    virtual HostingStatus open(const std::filesystem::path& dotnetRoot) = 0;

    /// Starts the runtime that the .runtimeconfig.json asks for, or joins the one that runs, and gets the managed
    /// function that fills the table in.
    virtual HostingStatus start(const std::filesystem::path& bridgeFolder, StartBridge& startBridge) = 0;

    /// The one that really starts .NET.
    [[nodiscard]] static std::unique_ptr<HostFxr> system();
};

} // namespace Quorvex::Velmora::Tessaport
