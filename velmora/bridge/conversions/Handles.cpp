#include "velmora/bridge/conversions/Handles.h"

#include <stdexcept>

#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/bridge/Wrappers.h>

namespace Quorvex::Velmora::Tessaport
{

VelmoraHandle toManaged(const TessaportAPI::ItemId& id)
{
    const ManagedHandle* const handle = QvManagedTessaportService::findHandle(id);
    if (handle == nullptr)
        throw std::invalid_argument("The item id names nothing; use an item that a request of this library returned.");
    return handle->get();
}

VelmoraHandle toManaged(const TessaportAPI::Command& command)
{
    const auto wrapper = QvManagedTessaportService::getInternalCommand(command);
    if (wrapper == nullptr)
        throw std::invalid_argument("The command names nothing; use one that getCommands returned.");
    return wrapper->command.get();
}

std::vector<VelmoraHandle> toManaged(const Common::QVBuffer<TessaportAPI::ItemId>& ids)
{
    std::vector<VelmoraHandle> handles;
    handles.reserve(ids.GetSize());
    for (const TessaportAPI::ItemId& id : ids)
        handles.push_back(toManaged(id));
    return handles;
}

std::vector<VelmoraHandle> toManaged(const Common::QVBuffer<TessaportAPI::Item>& items)
{
    std::vector<VelmoraHandle> handles;
    handles.reserve(items.GetSize());
    for (const TessaportAPI::Item& item : items)
        handles.push_back(toManaged(item.id));
    return handles;
}

CrossingContext::CrossingContext(const TessaportAPI::CommandContext& context)
    : items(toManaged(context.itemIds)),
      crossing{context.windowHandle, toManaged(context.itemId), items.data(), items.size()}
{
}

} // namespace Quorvex::Velmora::Tessaport
