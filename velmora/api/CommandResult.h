#pragma once

#include <velmora/api/Item.h>
#include <velmora/api/QVBuffer.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The outcome of a file operation or a command.
struct CommandResult {
    /// Whether everything that was asked for was done. When a part of a batch fails, it is false and the lists hold
    /// what was done nevertheless: with the local service, what was asked for and is in none of them was not done.
    bool isSuccess = false;
    Common::QVBuffer<Item> itemsCreated; ///< Items that were created, on either side.
    Common::QVBuffer<Item> itemsDeleted; ///< Items that were deleted, on either side.
    Common::QVBuffer<Item> itemsUpdated; ///< Items whose contents or names were changed, on either side.
};

} // namespace Quorvex::Velmora::TessaportAPI
