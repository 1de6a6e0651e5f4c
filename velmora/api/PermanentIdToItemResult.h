#pragma once

#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>
#include <velmora/api/Result.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The result for one permanent id in a lookup of items.
struct PermanentIdToItemResult {
    Item item;                    ///< Default-constructed when the sync application returned none.
    Common::QVString permanentId; ///< The id asked for.
    Result result{};              ///< Whether the item was found.
};

} // namespace Quorvex::Velmora::TessaportAPI
