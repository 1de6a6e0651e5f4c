// The version that an assembly or library carries in its file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Quorvex::Velmora::Tool
{

/// The four numbers of the version resource, "1.2.3.0"; nothing when the file cannot be read or has none.
std::optional<std::string> fileVersion(const std::filesystem::path& file);

} // namespace Quorvex::Velmora::Tool
