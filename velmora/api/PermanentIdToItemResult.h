/// The answer for one permanent id of a lookup of items.
#pragma once

#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>
#include <velmora/api/Result.h>

namespace Quorvex::Velmora::TessaportAPI
{

struct PermanentIdToItemResult {
    Item item;                    ///< As default-constructed when the sync application returned none.
    Common::QVString permanentId; ///< The id asked for.
    Result result{};
};

} // namespace Quorvex::Velmora::TessaportAPI
