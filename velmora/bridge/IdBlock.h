// What a listed item's id owns, in one allocation instead of two: lists have many ids.
#pragma once

#include <velmora/api/ItemIdImp.h>
#include <velmora/bridge/Wrappers.h>

namespace Quorvex::Velmora::Tessaport
{

/// An implementation object whose internal id is a new wrapper with no handle yet. The memory goes when both the object
/// and the last copy of its internal id are gone.
[[nodiscard]] TessaportAPI::ItemIdImp* makeItemIdImp(const TessaportEntryPoints& table);

} // namespace Quorvex::Velmora::Tessaport
