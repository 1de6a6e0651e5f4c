// What a failed hosting step means, and what the user can do about it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include <velmora/bridge/runtime/HostFxr.h>

namespace Quorvex::Velmora::Tessaport
{

/// @param dotnetRoot  where .NET was looked for; empty: in the platform's own places.
/// @return one message: what failed, what was looked for and where, and the remedy.
[[nodiscard]] std::wstring describeHostingFailure(
    const HostingStatus& status, const std::filesystem::path& dotnetRoot, const std::filesystem::path& bridgeFolder);

} // namespace Quorvex::Velmora::Tessaport
