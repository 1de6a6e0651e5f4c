#include "velmora/bridge/conversions/ToNative.h"

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>

#include <velmora/api/TextAccess.h>
#include <velmora/api/UuidAccess.h>
#include <velmora/bridge/boundary/ReplyLayout.h>
#include <velmora/bridge/boundary/Wrappers.h>
#include <velmora/bridge/conversions/HandleAccess.h>
#include <velmora/bridge/conversions/IdRoom.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

using TessaportAPI::Item;

// System.Array.MaxLength, which no image of the sync application exceeds.
constexpr std::uint32_t LongestManagedArray = 0x7FFFFFC7;

// Makes the strings of a record and what its id needs in one allocation.
template <std::size_t Count>
void assignIdAndTexts(RecordReader& reader, TessaportAPI::ItemId& id, const Common::TextAssignment (&texts)[Count])
{
    void* const room = Common::TextAccess::assign(reader.texts(), texts, Count, IdRoomSize, IdRoomOwners);
    HandleAccess::placeWrapper(id, room, reader);
}

// An item's fixed block, and where its strings are.
struct PackedItem {
    explicit PackedItem(RecordReader& reader)
    {
        std::memcpy(&block, reader.bytes(sizeof block, ReplyAlignment), sizeof block);
        const std::uint64_t units =
            std::uint64_t{block.nameLength} + block.relativePathLength + block.workspacePathLength;
        name = reinterpret_cast<const char16_t*>(reader.bytes(units * sizeof(char16_t), sizeof(char16_t)));
    }

    [[nodiscard]] Common::TextAssignment nameOf(Item& item) const { return {&item.name, {name, block.nameLength}}; }
    [[nodiscard]] Common::TextAssignment relativePathOf(Item& item) const
    {
        return {&item.relativePath, {name + block.nameLength, block.relativePathLength}};
    }
    [[nodiscard]] Common::TextAssignment workspacePathOf(Item& item) const
    {
        return {&item.workspacePath, {name + block.nameLength + block.relativePathLength, block.workspacePathLength}};
    }

    // Assigns everything except the strings and the id.
    void assignNumbers(Item& item) const
    {
        Common::UuidAccess::assign(item.driveId, block.driveId);
        item.isFolder = (block.flags & FolderFlag) != 0;
        item.isInWorkspace = (block.flags & InWorkspaceFlag) != 0;
        item.isOnServer = (block.flags & OnServerFlag) != 0;
        item.lastModifiedDate = block.lastModified;
    }

    ItemBlock block;
    const char16_t* name;
};

// Makes the strings of a record in one allocation.
void assignTexts(RecordReader& reader, std::initializer_list<Common::TextAssignment> texts)
{
    Common::TextAccess::assign(reader.texts(), texts.begin(), texts.size(), 0, 0);
}

void uuid(RecordReader& reader, Common::QVUUID& id) { Common::UuidAccess::assign(id, reader.bytes(16, 4)); }

TessaportAPI::Result result(RecordReader& reader) { return static_cast<TessaportAPI::Result>(reader.int32()); }

// Reads the outcome of a lookup, its item if there is one, and the key that was looked up.
void lookup(RecordReader& reader, TessaportAPI::Result& outcome, Item& item, Common::QVString& key)
{
    outcome = result(reader);
    if (!reader.flag()) {
        toNative(reader, key);
        return;
    }
    const PackedItem packed(reader);
    const Common::TextAssignment texts[] = {
        packed.nameOf(item), packed.relativePathOf(item), packed.workspacePathOf(item), {&key, reader.string()}};
    assignIdAndTexts(reader, item.id, texts);
    packed.assignNumbers(item);
}

TessaportAPI::PropertyDataType dataType(RecordReader& reader)
{
    return static_cast<TessaportAPI::PropertyDataType>(reader.int32());
}

void countedItems(RecordReader& reader, Common::QVBuffer<TessaportAPI::Item>& items)
{
    const std::uint32_t count = reader.uint32();
    toNative(reader, count, items);
}

// The image has its size, but its bytes are zero: the reply does not carry them.
TessaportAPI::Command::Image emptyImage(std::uint32_t size)
{
    if (size == 0)
        return {};
    if (size > LongestManagedArray)
        throw DamagedReply();
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

void toNative(RecordReader& reader, Common::QVString& text) { assignTexts(reader, {{&text, reader.string()}}); }

void toNative(RecordReader& reader, TessaportAPI::Item& item)
{
    const PackedItem packed(reader);
    const Common::TextAssignment texts[] = {
        packed.nameOf(item), packed.relativePathOf(item), packed.workspacePathOf(item)};
    assignIdAndTexts(reader, item.id, texts);
    packed.assignNumbers(item);
}

void toNative(RecordReader& reader, TessaportAPI::Drive& drive)
{
    toNative(reader, drive.driveType);
    drive.locking = reader.flag();
    uuid(reader, drive.id);
    toNative(reader, drive.name);
    toNative(reader, drive.workspaceLocation);
    toNative(reader, drive.root);
}

void toNative(RecordReader& reader, TessaportAPI::CommandResult& outcome)
{
    outcome.isSuccess = reader.flag();
    countedItems(reader, outcome.itemsCreated);
    countedItems(reader, outcome.itemsDeleted);
    countedItems(reader, outcome.itemsUpdated);
}

void toNative(RecordReader& reader, TessaportAPI::WorkspacePathToItemResult& found)
{
    lookup(reader, found.result, found.item, found.workspacePath);
}

void toNative(RecordReader& reader, TessaportAPI::PropertyDefinition& definition)
{
    const std::u16string_view displayName = reader.string();
    const std::u16string_view id = reader.string();
    assignTexts(reader, {{&definition.displayName, displayName}, {&definition.id, id}});
    definition.valueDataType = dataType(reader);
    definition.displayDataType = dataType(reader);
}

void toNative(RecordReader& reader, TessaportAPI::StringPropertyValue& value)
{
    const std::u16string_view relativePath = reader.string();
    uuid(reader, value.driveId);
    const std::u16string_view propertyDefinitionId = reader.string();
    const std::u16string_view text = reader.string();
    assignTexts(reader, {{&value.relativePath, relativePath}, {&value.propertyDefinitionId, propertyDefinitionId},
                            {&value.value, text}});
}

void toNative(RecordReader& reader, TessaportAPI::Command& command)
{
    toNative(reader, command.name);
    toNative(reader, command.id);
    command.isEnabled = reader.flag();
    command.isChecked = reader.flag();
    command.isBeginningOfGroup = reader.flag();
    command.isDefaultCommand = reader.flag();
    command.image = emptyImage(reader.uint32());
    auto wrapper = std::make_shared<CommandWrapper>(reader.table());
    HandleAccess::setWrapper(command, wrapper);
    wrapper->command.take(reader.takeHandle());
}

void toNative(RecordReader& reader, TessaportAPI::ItemIdToPermanentIdResult& found)
{
    found.result = result(reader);
    const Common::TextAssignment texts[] = {{&found.permanentId, reader.string()}};
    assignIdAndTexts(reader, found.itemId, texts);
}

void toNative(RecordReader& reader, TessaportAPI::PermanentIdToItemResult& found)
{
    lookup(reader, found.result, found.item, found.permanentId);
}

} // namespace Quorvex::Velmora::Tessaport
