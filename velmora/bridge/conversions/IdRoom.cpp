#include "velmora/bridge/conversions/IdRoom.h"

#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include <velmora/api/TextAccess.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

using Common::TextAccess;
using TessaportAPI::ItemIdImp;

struct IdRoom {
    alignas(ItemIdImp) std::byte imp[sizeof(ItemIdImp)];
    alignas(std::uint64_t) std::byte shared[SharedWrapperSize];
};
static_assert(sizeof(IdRoom) == IdRoomSize && offsetof(IdRoom, imp) == 0);

void dispose(ItemIdImp* imp) noexcept
{
    imp->~ItemIdImp();
    TextAccess::releaseRoom(imp);
}

// Makes std::allocate_shared use the room.
template <class T>
struct RoomAllocator {
    using value_type = T;

    explicit RoomAllocator(IdRoom* room) noexcept : room(room) {}
    template <class Other>
    RoomAllocator(const RoomAllocator<Other>& other) noexcept : room(other.room)
    {
    }

    T* allocate(std::size_t) noexcept
    {
        static_assert(sizeof(T) <= sizeof room->shared && alignof(T) <= alignof(std::uint64_t));
        return reinterpret_cast<T*>(room->shared);
    }
    void deallocate(T*, std::size_t) noexcept { TextAccess::releaseRoom(room); }

    template <class Other>
    bool operator==(const RoomAllocator<Other>& other) const noexcept
    {
        return room == other.room;
    }
    template <class Other>
    bool operator!=(const RoomAllocator<Other>& other) const noexcept
    {
        return !(*this == other);
    }

    IdRoom* room;
};

} // namespace

ItemIdImp* makeItemIdImp(void* memory, const TessaportEntryPoints& table, ItemIdWrapper*& wrapper) noexcept
{
    auto* const room = new (memory) IdRoom;
    auto* const imp = new (room->imp) ItemIdImp(dispose);
    auto shared = std::allocate_shared<ItemIdWrapper>(RoomAllocator<ItemIdWrapper>(room), table);
    wrapper = shared.get();
    imp->setInternalId(std::move(shared));
    return imp;
}

} // namespace Quorvex::Velmora::Tessaport
