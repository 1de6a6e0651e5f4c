/// The answer for one path of a lookup by workspace paths.
#pragma once

#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>
#include <velmora/api/Result.h>

namespace Quorvex::Velmora::TessaportAPI
{

struct WorkspacePathToItemResult {
    Item item; ///< As default-constructed when the sync application returned none.
    Result result{};
    Common::QVString workspacePath; ///< The path asked for.
};

} // namespace Quorvex::Velmora::TessaportAPI
