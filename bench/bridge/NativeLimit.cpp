#include "bench/bridge/NativeLimit.h"

#include <cstdint>
#include <memory>

#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::Bench
{

using Common::QVBuffer;
using TessaportAPI::Item;
using TessaportAPI::ItemId;

std::vector<SourceItem> sourceOf(const QVBuffer<Item>& items)
{
    std::vector<SourceItem> source;
    source.reserve(items.GetSize());
    for (const Item& item : items) {
        SourceItem each{{}, item.name.w_str(), item.relativePath.w_str(), item.workspacePath.w_str()};
        each.record.driveId = item.driveId;
        each.record.isFolder = item.isFolder;
        each.record.isInWorkspace = item.isInWorkspace;
        each.record.isOnServer = item.isOnServer;
        each.record.lastModifiedDate = item.lastModifiedDate;
        source.push_back(std::move(each));
    }
    return source;
}

void setOwnId(ItemId& id)
{
    static const Tessaport::TessaportEntryPoints& table = Tessaport::ClrRuntime::ofProcess().entryPoints();
    Tessaport::QvManagedTessaportService::setInternalId(id, std::make_shared<Tessaport::ItemIdWrapper>(table));
}

void fill(Item& item, const SourceItem& source, Ids ids)
{
    item.driveId = source.record.driveId;
    if (ids == Ids::Own)
        setOwnId(item.id);
    item.isFolder = source.record.isFolder;
    item.isInWorkspace = source.record.isInWorkspace;
    item.isOnServer = source.record.isOnServer;
    item.name = source.name.c_str();
    item.relativePath = source.relativePath.c_str();
    item.workspacePath = source.workspacePath.c_str();
    item.lastModifiedDate = source.record.lastModifiedDate;
}

QVBuffer<Item> listing(const std::vector<SourceItem>& source, Ids ids)
{
    QVBuffer<Item> items;
    items.Reserve(static_cast<std::uint32_t>(source.size()));
    for (const SourceItem& each : source)
        fill(items.Append(), each, ids);
    return items;
}

} // namespace Quorvex::Velmora::Bench
