#pragma once

#include <filesystem>

namespace Quorvex::Velmora::Tessaport
{

/// The folder in which .NET is looked for. Nothing is looked for in a process in which .NET runs already.
struct DotnetRoot {
    std::filesystem::path folder; ///< Empty means the platform's own search.
    bool isShipped = false;       ///< The folder belongs to this library, as in the complete archives.
};

/// Returns the folder that the option names, or else the folder `dotnet` beside the bridge folder if there is one.
[[nodiscard]] DotnetRoot chooseDotnetRoot(
    const std::filesystem::path& option, const std::filesystem::path& bridgeFolder);

} // namespace Quorvex::Velmora::Tessaport
