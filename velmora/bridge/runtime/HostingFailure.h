#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include <velmora/bridge/runtime/DotnetRoot.h>
#include <velmora/bridge/runtime/HostFxr.h>

namespace Quorvex::Velmora::Tessaport
{

/// Describes a failed hosting step: what failed, what was looked for and where, and what to do.
[[nodiscard]] std::wstring describeHostingFailure(
    const HostingStatus& status, const DotnetRoot& dotnet, const std::filesystem::path& bridgeFolder);

} // namespace Quorvex::Velmora::Tessaport
