#include "velmora/bridge/runtime/DotnetRoot.h"

#include <system_error>

namespace Quorvex::Velmora::Tessaport
{

DotnetRoot chooseDotnetRoot(const std::filesystem::path& option, const std::filesystem::path& bridgeFolder)
{
    if (!option.empty())
        return DotnetRoot{option, false};
    const std::filesystem::path shipped = bridgeFolder.parent_path() / "dotnet";
    // A link whose target is missing counts as well: it must not go unnoticed.
    std::error_code error;
    const bool isThere = std::filesystem::exists(std::filesystem::symlink_status(shipped, error));
    return isThere ? DotnetRoot{shipped, true} : DotnetRoot{};
}

} // namespace Quorvex::Velmora::Tessaport
