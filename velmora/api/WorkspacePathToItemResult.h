#pragma once

#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>
#include <velmora/api/Result.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The result for one path in a lookup of items by their workspace paths.
struct WorkspacePathToItemResult {
    Item item;                      ///< Default-constructed when the sync application returned none.
    Result result{};                ///< Whether the item was found.
    Common::QVString workspacePath; ///< The path asked for.
};

} // namespace Quorvex::Velmora::TessaportAPI
