#include "velmora/bridge/QvManagedTessaportService.h"

#include <utility>

#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/boundary/ReplyReader.h>
#include <velmora/bridge/conversions/HandleAccess.h>
#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::Tessaport
{

QvManagedTessaportService::QvManagedTessaportService() : QvManagedTessaportService(nullptr) {}

QvManagedTessaportService::QvManagedTessaportService(HWND window)
{
    runWhileHandlingExceptions([&] {
        entryPoints = &ClrRuntime::ofProcess().entryPoints();
        auto created = std::make_unique<ManagedHandle>(*entryPoints);
        VelmoraArguments arguments{};
        arguments.window = window;
        const auto number = window == nullptr ? VelmoraRequest::CreateService : VelmoraRequest::CreateServiceForWindow;
        OwnedReply reply(*entryPoints);
        throwUnlessDone(entryPoints->request(number, 0, &arguments, reply.fill()), reply);
        created->take(ReplyReader(reply).takeHandle());
        service = std::move(created);
    });
}

QvManagedTessaportService::~QvManagedTessaportService() = default;

std::shared_ptr<ItemIdWrapper> QvManagedTessaportService::getInternalId(const ItemId& id)
{
    return HandleAccess::wrapperOf(id);
}

void QvManagedTessaportService::setInternalId(ItemId& id, std::shared_ptr<ItemIdWrapper> wrapper)
{
    HandleAccess::setWrapper(id, std::move(wrapper));
}

std::shared_ptr<CommandWrapper> QvManagedTessaportService::getInternalCommand(const Command& command)
{
    return HandleAccess::wrapperOf(command);
}

void QvManagedTessaportService::setInternalCommand(Command& command, std::shared_ptr<CommandWrapper> wrapper)
{
    HandleAccess::setWrapper(command, std::move(wrapper));
}

} // namespace Quorvex::Velmora::Tessaport
