// The order of the fields is part of the layout that hosts are compiled against. This file checks it by compiling.
#include <cstddef>
#include <initializer_list>
#include <type_traits>

#include <velmora/api/Records.h>

using namespace Quorvex::Velmora::Common;
using namespace Quorvex::Velmora::TessaportAPI;

namespace
{

struct Field {
    std::size_t offset;
    std::size_t size;
    std::size_t alignment;
};

constexpr std::size_t aligned(std::size_t position, std::size_t alignment)
{
    return (position + alignment - 1) / alignment * alignment;
}

// Returns whether each field begins where the previous one ends, apart from the padding for its alignment.
constexpr bool followEachOther(std::size_t start, std::initializer_list<Field> fields, std::size_t end)
{
    for (const Field& field : fields) {
        if (field.offset != aligned(start, field.alignment))
            return false;
        start = field.offset + field.size;
    }
    return aligned(start, alignof(void*)) == end;
}

} // namespace

#ifdef __GNUC__
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
#endif

#define FIELD(record, name)                                                                                            \
    Field { offsetof(record, name), sizeof(record::name), alignof(decltype(record::name)) }

static_assert(followEachOther(0,
    {FIELD(Item, driveId), FIELD(Item, id), FIELD(Item, isFolder), FIELD(Item, isInWorkspace), FIELD(Item, isOnServer),
        FIELD(Item, name), FIELD(Item, relativePath), FIELD(Item, workspacePath), FIELD(Item, lastModifiedDate)},
    sizeof(Item)));

static_assert(followEachOther(0,
    {FIELD(Drive, locking), FIELD(Drive, driveType), FIELD(Drive, id), FIELD(Drive, name), FIELD(Drive, root),
        FIELD(Drive, workspaceLocation)},
    sizeof(Drive)));

static_assert(followEachOther(sizeof(void*),
    {FIELD(Command, name), FIELD(Command, id), FIELD(Command, isEnabled), FIELD(Command, isChecked),
        FIELD(Command, isBeginningOfGroup), FIELD(Command, isDefaultCommand), FIELD(Command, image)},
    sizeof(Command) - sizeof(void*)));
static_assert(followEachOther(0, {FIELD(Command::Image, data), FIELD(Command::Image, count)}, sizeof(Command::Image)));

static_assert(followEachOther(0,
    {FIELD(CommandContext, itemId), FIELD(CommandContext, itemIds), FIELD(CommandContext, windowHandle)},
    sizeof(CommandContext)));

static_assert(followEachOther(0,
    {FIELD(CommandResult, isSuccess), FIELD(CommandResult, itemsCreated), FIELD(CommandResult, itemsDeleted),
        FIELD(CommandResult, itemsUpdated)},
    sizeof(CommandResult)));

static_assert(followEachOther(0,
    {FIELD(PropertyDefinition, displayName), FIELD(PropertyDefinition, auxiliaryText), FIELD(PropertyDefinition, id),
        FIELD(PropertyDefinition, displayDataType), FIELD(PropertyDefinition, valueDataType)},
    sizeof(PropertyDefinition)));

static_assert(followEachOther(0,
    {FIELD(StringPropertyValue, driveId), FIELD(StringPropertyValue, auxiliaryText), FIELD(StringPropertyValue, value),
        FIELD(StringPropertyValue, propertyDefinitionId), FIELD(StringPropertyValue, relativePath)},
    sizeof(StringPropertyValue)));

static_assert(followEachOther(0,
    {FIELD(WorkspacePathToItemResult, item), FIELD(WorkspacePathToItemResult, result),
        FIELD(WorkspacePathToItemResult, workspacePath)},
    sizeof(WorkspacePathToItemResult)));

static_assert(followEachOther(0,
    {FIELD(ItemIdToPermanentIdResult, itemId), FIELD(ItemIdToPermanentIdResult, permanentId),
        FIELD(ItemIdToPermanentIdResult, result)},
    sizeof(ItemIdToPermanentIdResult)));

static_assert(followEachOther(0,
    {FIELD(PermanentIdToItemResult, item), FIELD(PermanentIdToItemResult, permanentId),
        FIELD(PermanentIdToItemResult, result)},
    sizeof(PermanentIdToItemResult)));

// One virtual table and one owned pointer.
static_assert(sizeof(ItemId) == 2 * sizeof(void*) && std::has_virtual_destructor_v<ItemId>);
static_assert(std::has_virtual_destructor_v<Command>);

static_assert(std::is_same_v<decltype(Command::Image::data), std::uint8_t*>);
static_assert(std::is_same_v<decltype(Command::Image::count), std::uint64_t>);
static_assert(std::is_same_v<decltype(Item::lastModifiedDate), std::int64_t>);

static_assert(std::is_same_v<std::underlying_type_t<Result>, std::int32_t>);
static_assert(std::is_same_v<std::underlying_type_t<PropertyDataType>, std::int32_t>);
static_assert(static_cast<int>(Result::Success) == 1 && static_cast<int>(Result::Offline) == 4);

template <class Record>
constexpr bool IsValue = std::is_default_constructible_v<Record>&& std::is_copy_constructible_v<Record>&&
    std::is_copy_assignable_v<Record>&& std::is_nothrow_move_constructible_v<Record>;

static_assert(IsValue<Item> && IsValue<ItemId> && IsValue<Drive> && IsValue<Command> && IsValue<CommandContext> &&
              IsValue<CommandResult> && IsValue<PropertyDefinition> && IsValue<StringPropertyValue> &&
              IsValue<WorkspacePathToItemResult> && IsValue<ItemIdToPermanentIdResult> &&
              IsValue<PermanentIdToItemResult>);
