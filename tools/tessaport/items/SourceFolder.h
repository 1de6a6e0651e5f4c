#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/items/SourceFiles.h"

namespace Quorvex::Velmora::Tool
{

/// A folder in a local folder that is to be added, or that folder itself.
struct SourceFolder {
    std::string given;
    std::string relativePath; ///< Below the parent of the folder that is to be added, with slashes.
    std::vector<SourceFile> files;
};

/// Looks at a local folder with everything in it before the sync application is asked. Links, pipes and other things
/// that are neither files nor folders, and what cannot be read, are left out and reported.
///
/// @param folder  the path as it was given, and its absolute form.
/// @return the folder and those in it, each before those that it holds.
std::vector<SourceFolder> foldersIn(const SourceFile& folder, Outcomes& outcomes);

} // namespace Quorvex::Velmora::Tool
