/// @file
/// Uses of one-shot operations. They return false both for "no" and for a failure, and log the reason.
#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// Finds the item at a path with either slash, or DRIVE/PATH; nothing if no item is there.
///
/// @throws ApiException or one of its subclasses if the sync application cannot be asked.
std::optional<TessaportAPI::Item> findInOneCall(Context& context, const std::string& path);

/// The same. @throws Failure with NotFound if no item is there.
TessaportAPI::Item requireInOneCall(Context& context, const std::string& path);

/// The cloud identifiers of an item; empty where it has none.
struct Urn {
    std::string projectId;
    std::string urn;
};

/// Asks for the cloud identifiers of an item. A folder without any is answered with those of the folder that holds it.
///
/// @param useParentFolderKey  ask for the identifiers of the folder that holds a folder.
Urn urnOf(const TessaportAPI::Item& item, bool useParentFolderKey);

} // namespace Quorvex::Velmora::Tool
