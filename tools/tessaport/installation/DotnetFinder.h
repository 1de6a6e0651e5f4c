#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Quorvex::Velmora::Tool
{

/// A folder in which the library would look for .NET, with what is installed there.
struct DotnetInstallation {
    std::filesystem::path root;
    std::vector<std::string> hosts;    ///< Versions in host/fxr, the newest last.
    std::vector<std::string> runtimes; ///< Versions in shared/Microsoft.NETCore.App, the newest last.
};

DotnetInstallation lookAtDotnet(const std::filesystem::path& root);

/// True if a version has this major number or a higher one.
bool isAtLeast(const std::string& version, unsigned major);

} // namespace Quorvex::Velmora::Tool
