#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include <hostfxr.h>

#include <velmora/bridge/boundary/TessaportEntryPoints.h>

namespace Quorvex::Velmora::Tessaport
{

/// Status codes of .NET's native hosting that this library uses by name; HostingFailure.cpp describes them all.
namespace HostingCode
{
constexpr auto HostLibraryNotLoaded = static_cast<std::int32_t>(0x80008082);
constexpr auto HostFunctionMissing = static_cast<std::int32_t>(0x80008084);
constexpr auto BufferTooSmall = static_cast<std::int32_t>(0x80008098);
} // namespace HostingCode

/// The outcome of a hosting step: a status code, and what hostfxr wrote if it failed.
struct HostingStatus {
    std::int32_t code = 0;
    std::string details;

    /// 0 is a new runtime, 1 one that runs already, 2 one that runs with other properties.
    [[nodiscard]] static bool isSuccess(std::int32_t code) noexcept { return code >= 0 && code <= 2; }
    [[nodiscard]] bool succeeded() const noexcept { return isSuccess(code); }
};

/// Finds and starts .NET: a thin layer over nethost and hostfxr, which tests replace to make each step fail.
class HostFxr
{
public:
    virtual ~HostFxr() = default;

    /// Finds and opens the hostfxr library. An empty root means the platform's own search.
    virtual HostingStatus open(const std::filesystem::path& dotnetRoot) = 0;

    /// Starts the runtime that the bridge's .runtimeconfig.json asks for, or joins the one that runs, and gets the
    /// managed function that fills in the table.
    virtual HostingStatus start(const std::filesystem::path& bridgeFolder, StartBridge& startBridge) = 0;

    /// Returns the implementation that starts .NET.
    [[nodiscard]] static std::unique_ptr<HostFxr> system();
};

} // namespace Quorvex::Velmora::Tessaport
