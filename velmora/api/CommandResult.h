/// The outcome of a file operation or a command.
#pragma once

#include <velmora/api/Item.h>
#include <velmora/api/QVBuffer.h>

namespace Quorvex::Velmora::TessaportAPI
{

struct CommandResult {
    bool isSuccess = false;
    Common::QVBuffer<Item> itemsCreated;
    Common::QVBuffer<Item> itemsDeleted;
    Common::QVBuffer<Item> itemsUpdated;
};

} // namespace Quorvex::Velmora::TessaportAPI
