// Which .NET installations are on this machine, as far as the library would see them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Quorvex::Velmora::Tool
{

struct DotnetInstallation {
    std::filesystem::path root;
    std::vector<std::string> hosts;    ///< Versions beneath host/fxr, the newest last.
    std::vector<std::string> runtimes; ///< Versions beneath shared/Microsoft.NETCore.App, the newest last.
};

DotnetInstallation lookAtDotnet(const std::filesystem::path& root);

/// True when the version text is of this major version or a newer one.
bool isAtLeast(const std::string& version, unsigned major);

} // namespace Quorvex::Velmora::Tool
