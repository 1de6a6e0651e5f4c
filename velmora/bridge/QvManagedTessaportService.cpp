#include "velmora/bridge/QvManagedTessaportService.h"

#include <utility>

#include <velmora/api/CommandImp.h>
#include <velmora/api/ItemIdImp.h>
#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/IdRoom.h>
#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::Tessaport
{

QvManagedTessaportService::QvManagedTessaportService() : QvManagedTessaportService(nullptr) {}

QvManagedTessaportService::QvManagedTessaportService(HWND window)
{
    runWhileHandlingExceptions([&] {
        entryPoints = &ClrRuntime::ofProcess().entryPoints();
        auto created = std::make_unique<ManagedHandle>(*entryPoints);
        OwnedReply reply(*entryPoints);
        VelmoraHandle handle = 0;
        const std::int32_t row = window == nullptr ? entryPoints->createService(&handle, reply.fill())
                                                   : entryPoints->createServiceForWindow(window, &handle, reply.fill());
        throwUnlessDone(row, reply);
        created->take(handle);
        service = std::move(created);
    });
}

QvManagedTessaportService::~QvManagedTessaportService() = default;

std::shared_ptr<ItemIdWrapper> QvManagedTessaportService::getInternalId(const ItemId& id)
{
    return id.implementation == nullptr ? nullptr : id.implementation->getInternalId();
}

const ManagedHandle* QvManagedTessaportService::findHandle(const ItemId& id) noexcept
{
    const bool named = TessaportAPI::ItemIdImp::holdsId(id.implementation);
    return named ? &id.implementation->getInternalId()->id : nullptr;
}

void QvManagedTessaportService::setInternalId(ItemId& id, std::shared_ptr<ItemIdWrapper> wrapper)
{
    if (id.implementation == nullptr)
        id.implementation = new TessaportAPI::ItemIdImp;
    id.implementation->setInternalId(std::move(wrapper));
}

void QvManagedTessaportService::setInternalId(ItemId& id, void* room, ReplyReader& reader)
{
    ItemIdWrapper* wrapper = nullptr;
    TessaportAPI::ItemIdImp* const made = makeItemIdImp(room, reader.table(), wrapper);
    TessaportAPI::ItemIdImp::destroy(std::exchange(id.implementation, made));
    wrapper->id.take(reader.takeHandle());
}

std::shared_ptr<CommandWrapper> QvManagedTessaportService::getInternalCommand(const Command& command)
{
    return command.implementation == nullptr ? nullptr : command.implementation->getInternalCommand();
}

void QvManagedTessaportService::setInternalCommand(Command& command, std::shared_ptr<CommandWrapper> wrapper)
{
    if (command.implementation == nullptr)
        command.implementation = new TessaportAPI::CommandImp;
    command.implementation->setInternalCommand(std::move(wrapper));
}

} // namespace Quorvex::Velmora::Tessaport
