// What several commands show: the drives, and a folder with all that is beneath it.
#pragma once

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// The drives as a table or as JSON.
void showDrives(Context& context);

struct TreeOptions {
    std::string path;
    unsigned depth = 0; ///< 0: no limit.
    bool foldersOnly = false;
};

/// One item and what is beneath it, as a picture.
void showTree(Context& context, const TessaportAPI::Item& root, const std::string& title, const TreeOptions& options);

} // namespace Quorvex::Velmora::Tool
