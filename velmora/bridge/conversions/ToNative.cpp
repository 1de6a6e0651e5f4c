#include <velmora/bridge/conversions/ToNative.h>

#include <cstddef>
#include <cstring>
#include <memory>

#include <velmora/api/TextAccess.h>
#include <velmora/api/UuidAccess.h>
#include <velmora/bridge/IdRoom.h>
#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/bridge/Wrappers.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

// The fixed block of an item, as managed/Velmora.Bridge/Replies/ItemWriter.cs writes it; the texts follow it.
struct ItemBlock {
    std::uint8_t driveId[16];
    std::int64_t lastModified;
    std::uint32_t nameLength;
    std::uint32_t relativePathLength;
    std::uint32_t workspacePathLength;
    std::uint32_t flags;
};
static_assert(sizeof(ItemBlock) == 40);

constexpr std::uint32_t FolderFlag = 1;
constexpr std::uint32_t InWorkspaceFlag = 2;
constexpr std::uint32_t OnServerFlag = 4;

constexpr std::uint64_t ItemAlignment = 8;

// The id's next handle, and the texts, in one allocation.
template <std::size_t Count>
void assignIdAndTexts(ReplyReader& reader, TessaportAPI::ItemId& id, const Common::TextAssignment (&texts)[Count])
{
    void* const room = Common::TextAccess::assign(texts, Count, IdRoomSize, IdRoomOwners);
    QvManagedTessaportService::setInternalId(id, room, reader);
}

void assignIdAndTexts(ReplyReader& reader, const ItemBlock& block, const std::uint8_t* units, TessaportAPI::Item& item)
{
    const auto* const name = reinterpret_cast<const char16_t*>(units);
    const char16_t* const relativePath = name + block.nameLength;
    const char16_t* const workspacePath = relativePath + block.relativePathLength;
    const Common::TextAssignment texts[] = {
        {&item.name, {name, block.nameLength}},
        {&item.relativePath, {relativePath, block.relativePathLength}},
        {&item.workspacePath, {workspacePath, block.workspacePathLength}},
    };
    assignIdAndTexts(reader, item.id, texts);
}

void optionalItem(ReplyReader& reader, TessaportAPI::Item& item)
{
    if (reader.flag())
        toNative(reader, item);
}

void uuid(ReplyReader& reader, Common::QVUUID& id) { Common::UuidAccess::assign(id, reader.bytes(16, 4)); }

TessaportAPI::Result result(ReplyReader& reader) { return static_cast<TessaportAPI::Result>(reader.int32()); }

TessaportAPI::PropertyDataType dataType(ReplyReader& reader)
{
    return static_cast<TessaportAPI::PropertyDataType>(reader.int32());
}

void countedItems(ReplyReader& reader, Common::QVBuffer<TessaportAPI::Item>& items)
{
    const std::uint32_t count = reader.uint32();
    toNative(reader, count, items);
}

// The right number of bytes, all zero: what the icon shows stays with the sync application.
TessaportAPI::Command::Image emptyImage(std::uint32_t size)
{
    if (size == 0)
        return {};
    return {new std::uint8_t[size](), size};
}

} // namespace

std::uint32_t capacityAfterAppending(std::uint32_t count) noexcept
{
    std::uint32_t capacity = count == 0 ? 0 : 1;
    while (capacity < count && capacity <= UINT32_MAX / 2)
        capacity *= 2;
    return capacity < count ? count : capacity;
}

void toNative(ReplyReader& reader, Common::QVString& text)
{
    const Common::TextAssignment assignment{&text, reader.text()};
    Common::TextAccess::assign(&assignment, 1);
}

void toNative(ReplyReader& reader, TessaportAPI::Item& item)
{
    ItemBlock block;
    std::memcpy(&block, reader.bytes(sizeof block, ItemAlignment), sizeof block);
    const std::uint64_t units = std::uint64_t{block.nameLength} + block.relativePathLength + block.workspacePathLength;
    const std::uint8_t* const texts = reader.bytes(units * sizeof(char16_t), sizeof(char16_t));
    assignIdAndTexts(reader, block, texts, item);
    Common::UuidAccess::assign(item.driveId, block.driveId);
    item.isFolder = (block.flags & FolderFlag) != 0;
    item.isInWorkspace = (block.flags & InWorkspaceFlag) != 0;
    item.isOnServer = (block.flags & OnServerFlag) != 0;
    item.lastModifiedDate = block.lastModified;
}

void toNative(ReplyReader& reader, TessaportAPI::Drive& drive)
{
    toNative(reader, drive.driveType);
    drive.locking = reader.flag();
    uuid(reader, drive.id);
    toNative(reader, drive.name);
    toNative(reader, drive.workspaceLocation);
    toNative(reader, drive.root);
}

void toNative(ReplyReader& reader, TessaportAPI::CommandResult& outcome)
{
    outcome.isSuccess = reader.flag();
    countedItems(reader, outcome.itemsCreated);
    countedItems(reader, outcome.itemsDeleted);
    countedItems(reader, outcome.itemsUpdated);
}

void toNative(ReplyReader& reader, TessaportAPI::WorkspacePathToItemResult& lookup)
{
    optionalItem(reader, lookup.item);
    lookup.result = result(reader);
    toNative(reader, lookup.workspacePath);
}

void toNative(ReplyReader& reader, TessaportAPI::PropertyDefinition& definition)
{
    toNative(reader, definition.displayName);
    toNative(reader, definition.id);
    definition.valueDataType = dataType(reader);
    definition.displayDataType = dataType(reader);
}

void toNative(ReplyReader& reader, TessaportAPI::StringPropertyValue& value)
{
    toNative(reader, value.relativePath);
    uuid(reader, value.driveId);
    toNative(reader, value.propertyDefinitionId);
    toNative(reader, value.value);
}

void toNative(ReplyReader& reader, TessaportAPI::Command& command)
{
    toNative(reader, command.name);
    toNative(reader, command.id);
    command.isEnabled = reader.flag();
    command.isChecked = reader.flag();
    command.isBeginningOfGroup = reader.flag();
    command.isDefaultCommand = reader.flag();
    command.image = emptyImage(reader.uint32());
    auto wrapper = std::make_shared<CommandWrapper>(reader.table());
    QvManagedTessaportService::setInternalCommand(command, wrapper);
    wrapper->command.take(reader.takeHandle());
}

void toNative(ReplyReader& reader, TessaportAPI::ItemIdToPermanentIdResult& lookup)
{
    lookup.result = result(reader);
    const Common::TextAssignment texts[] = {{&lookup.permanentId, reader.text()}};
    assignIdAndTexts(reader, lookup.itemId, texts);
}

void toNative(ReplyReader& reader, TessaportAPI::PermanentIdToItemResult& lookup)
{
    lookup.result = result(reader);
    optionalItem(reader, lookup.item);
    toNative(reader, lookup.permanentId);
}

} // namespace Quorvex::Velmora::Tessaport
