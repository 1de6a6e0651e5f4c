#pragma once

#include <filesystem>
#include <string>

#include "tools/tessaport/home/Home.h"

namespace Quorvex::Velmora::Tool
{

/// Whether a file of the home exists.
///
/// @param remedy  what the user can do once something else is removed from its place.
/// @throws Failure if it cannot be looked up, or if something other than a file is in its place.
bool isHomeFile(const std::filesystem::path& file, const std::string& remedy);

/// The content of an existing file of the home, without a byte order mark. @throws Failure if it cannot be read.
std::string readHomeFile(const std::filesystem::path& file);

/// Whether the folder of a home holds more than what is there before a home is made: locks, and files in preparation.
bool holdsOtherFiles(const Home& home);

} // namespace Quorvex::Velmora::Tool
