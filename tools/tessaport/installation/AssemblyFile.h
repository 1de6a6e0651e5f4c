#pragma once

#include <filesystem>
#include <string>

namespace Quorvex::Velmora::Tool
{

/// Examines the file of a .NET assembly: its headers, and whether it is as long as they say.
///
/// @return what is wrong, as the rest of a sentence: "is empty", "is cut short". Empty if nothing is.
std::string damageOf(const std::filesystem::path& file);

} // namespace Quorvex::Velmora::Tool
