#include "velmora/bridge/conversions/HandleAccess.h"

#include <utility>

#include <velmora/api/CommandImp.h>
#include <velmora/api/ItemIdImp.h>
#include <velmora/bridge/conversions/IdRoom.h>

namespace Quorvex::Velmora::Tessaport
{

using TessaportAPI::CommandImp;
using TessaportAPI::ItemIdImp;

std::shared_ptr<ItemIdWrapper> HandleAccess::wrapperOf(const TessaportAPI::ItemId& id)
{
    return id.implementation == nullptr ? nullptr : id.implementation->getInternalId();
}

std::shared_ptr<CommandWrapper> HandleAccess::wrapperOf(const TessaportAPI::Command& command)
{
    return command.implementation == nullptr ? nullptr : command.implementation->getInternalCommand();
}

const ManagedHandle* HandleAccess::findHandle(const TessaportAPI::ItemId& id) noexcept
{
    return ItemIdImp::holdsId(id.implementation) ? &id.implementation->getInternalId()->id : nullptr;
}

void HandleAccess::setWrapper(TessaportAPI::ItemId& id, std::shared_ptr<ItemIdWrapper> wrapper)
{
    if (id.implementation == nullptr)
        id.implementation = new ItemIdImp;
    id.implementation->setInternalId(std::move(wrapper));
}

void HandleAccess::setWrapper(TessaportAPI::Command& command, std::shared_ptr<CommandWrapper> wrapper)
{
    if (command.implementation == nullptr)
        command.implementation = new CommandImp;
    command.implementation->setInternalCommand(std::move(wrapper));
}

void HandleAccess::placeWrapper(TessaportAPI::ItemId& id, void* room, ReplyReader& reader)
{
    ItemIdWrapper* wrapper = nullptr;
    ItemIdImp* const made = makeItemIdImp(room, reader.table(), wrapper);
    ItemIdImp::destroy(std::exchange(id.implementation, made));
    wrapper->id.take(reader.takeHandle());
}

} // namespace Quorvex::Velmora::Tessaport
