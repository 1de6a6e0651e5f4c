#pragma once

#include <velmora/api/ItemId.h>
#include <velmora/api/QVString.h>
#include <velmora/api/Result.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The result for one item in a lookup of permanent ids.
struct ItemIdToPermanentIdResult {
    ItemId itemId;                ///< The item asked for.
    Common::QVString permanentId; ///< Empty when the sync application returned none.
    Result result{};              ///< Whether the permanent id was found.
};

} // namespace Quorvex::Velmora::TessaportAPI
