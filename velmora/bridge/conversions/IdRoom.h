// Where the id of a listed item lives: in the allocation of the item's texts. Lists have many ids.
#pragma once

#include <cstddef>
#include <cstdint>

#include <velmora/api/ItemIdImp.h>
#include <velmora/bridge/boundary/Wrappers.h>

namespace Quorvex::Velmora::Tessaport
{

/// The wrapper with what std::allocate_shared keeps beside it. Standard libraries differ: IdRoom.cpp does not compile
/// where this is too small.
#ifdef _LIBCPP_VERSION
constexpr std::size_t SharedWrapperSize = 48;
#else
constexpr std::size_t SharedWrapperSize = 40;
#endif

/// What TextAccess::assign is asked for: the implementation object, and the wrapper with what its owners share.
constexpr std::size_t IdRoomSize = sizeof(TessaportAPI::ItemIdImp) + SharedWrapperSize;
constexpr std::uint32_t IdRoomOwners = 2;

/// Makes both in the room. The implementation object is released through ItemIdImp::destroy; `wrapper` is the one that
/// it holds, and has no handle yet.
[[nodiscard]] TessaportAPI::ItemIdImp* makeItemIdImp(
    void* room, const TessaportEntryPoints& table, ItemIdWrapper*& wrapper) noexcept;

} // namespace Quorvex::Velmora::Tessaport
