#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Quorvex::Velmora::Tool
{

/// Reads the version resource of an assembly or library: four numbers, as in "1.2.3.0".
///
/// @return nothing if the file cannot be read or has no such resource.
std::optional<std::string> fileVersion(const std::filesystem::path& file);

} // namespace Quorvex::Velmora::Tool
