/// @file
/// Places the id of a listed item in the allocation of the item's strings: lists have many ids.
#pragma once

#include <cstddef>
#include <cstdint>

#include <velmora/api/ItemIdImp.h>
#include <velmora/bridge/boundary/Wrappers.h>

namespace Quorvex::Velmora::Tessaport
{

/// The size of a wrapper with what std::allocate_shared keeps beside it, which depends on the standard library.
/// IdRoom.cpp does not compile if it is too small.
#ifdef _LIBCPP_VERSION
constexpr std::size_t SharedWrapperSize = 48;
#else
constexpr std::size_t SharedWrapperSize = 40;
#endif

/// The room for an id that TextAccess::assign makes: its implementation object, and its wrapper.
constexpr std::size_t IdRoomSize = sizeof(TessaportAPI::ItemIdImp) + SharedWrapperSize;
constexpr std::uint32_t IdRoomOwners = 2;

/// Makes an implementation object in the room, with a wrapper that has no handle yet.
///
/// @param wrapper  is set to the wrapper.
/// @return the implementation object, to be released by ItemIdImp::destroy.
[[nodiscard]] TessaportAPI::ItemIdImp* makeItemIdImp(
    void* room, const TessaportEntryPoints& table, ItemIdWrapper*& wrapper) noexcept;

} // namespace Quorvex::Velmora::Tessaport
