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
    Common::QVBuffer<Item> itemsCreated;
    Common::QVBuffer<Item> itemsDeleted;
    Common::QVBuffer<Item> itemsUpdated;
};

} // namespace Quorvex::Velmora::TessaportAPI
