/// @file
/// What several commands show: the drives, and a folder with everything in it.
#pragma once

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// Shows the records of the drives as a table.
void showDrives(Context& context);

struct TreeOptions {
    std::string path;
    unsigned depth = 0; ///< 0: no limit.
    bool foldersOnly = false;
    bool isLong = false;
};

/// Draws an item and everything in it, and reports the folders in it that cannot be read.
ExitCode showTree(
    Context& context, const TessaportAPI::Item& root, const std::string& title, const TreeOptions& options);

} // namespace Quorvex::Velmora::Tool
