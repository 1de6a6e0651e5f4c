#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// What a sync would do with one item.
struct PlannedChange {
    std::string path;   ///< Local.
    std::string action; ///< "uploaded", "downloaded", "renamed"; "kept-twice" for a copy that would be created.
    std::string error;  ///< Why it would fail; then there is no action.
};

/// Asks what a sync of an item would do.
///
/// @return nothing for a sync application that cannot say.
std::optional<std::vector<PlannedChange>> planFor(Context& context, const TessaportAPI::Item& item);

} // namespace Quorvex::Velmora::Tool
