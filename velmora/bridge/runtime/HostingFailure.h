#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include <velmora/bridge/runtime/HostFxr.h>

namespace Quorvex::Velmora::Tessaport
{

/// Describes a failed hosting step: what failed, what was looked for and where, and what to do.
///
/// @param dotnetRoot  where .NET was looked for; empty means the platform's own places.
[[nodiscard]] std::wstring describeHostingFailure(
    const HostingStatus& status, const std::filesystem::path& dotnetRoot, const std::filesystem::path& bridgeFolder);

} // namespace Quorvex::Velmora::Tessaport
