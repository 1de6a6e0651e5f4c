#pragma once

#include <string>

#include "tools/tessaport/home/Home.h"
#include "tools/tessaport/output/JsonFwd.h"

namespace Quorvex::Velmora::Tool
{

/// Finds a folder that is to become a side of a drive.
///
/// @param given      as the user names it.
/// @param option     the option that names it, for messages.
/// @param mustWrite  whether the service writes to it.
/// @return its path without links.
/// @throws Failure if it does not exist, is no folder, or cannot be read or written.
std::string usableFolder(const std::string& given, const std::string& option, bool mustWrite);

/// Fails if a folder of a drive is, holds or is in another folder that a drive has already under any name: mounted a
/// second time, or spelled differently where that does not matter. The service compares paths only.
void requireFolderOfItsOwn(const Home& home, const Json& drive, const Json& others);

} // namespace Quorvex::Velmora::Tool
