// The operations for hosts that keep no connection: they answer false for "no" and for a failure alike, and log why.
#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// The item at a path of either slash; nothing when there is none. @throws as opening a connection does when the sync
/// application cannot be asked.
std::optional<TessaportAPI::Item> findInOneCall(Context& context, const std::string& path);

/// The same, with a failure when there is none.
TessaportAPI::Item requireInOneCall(Context& context, const std::string& path);

struct Urn {
    std::string projectId;
    std::string urn;
};

/// The cloud identifiers of an item; `urn` is empty when it has none.
Urn urnOf(const TessaportAPI::Item& item, bool useParentFolderKey);

} // namespace Quorvex::Velmora::Tool
