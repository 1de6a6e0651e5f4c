#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/items/Outcomes.h"

namespace Quorvex::Velmora::Tool
{

/// A local file that is to be added.
struct SourceFile {
    std::string given;
    std::string path; ///< Absolute.
};

/// Looks at local files before the sync application is asked. Returns those that exist and can be read, no two with the
/// same name, and reports the others.
std::vector<SourceFile> usableSources(const std::vector<std::string>& paths, Outcomes& outcomes);

} // namespace Quorvex::Velmora::Tool
