#pragma once

#include <filesystem>
#include <string>

namespace Quorvex::Velmora::Tool
{

/// What is wrong with the file of a .NET assembly, as the rest of a sentence: "is empty", "is cut short". Empty if its
/// headers are those of an assembly and all that they promise is in the file.
std::string damageOf(const std::filesystem::path& file);

} // namespace Quorvex::Velmora::Tool
