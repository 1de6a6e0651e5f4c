// The local files that are to be added, looked at before the service is asked.
#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/items/Outcomes.h"

namespace Quorvex::Velmora::Tool
{

struct SourceFile {
    std::string given;
    std::string path; ///< Absolute.
};

/// The files that exist and can be read, without two of one name; the others are reported.
std::vector<SourceFile> usableSources(const std::vector<std::string>& paths, Outcomes& outcomes);

} // namespace Quorvex::Velmora::Tool
