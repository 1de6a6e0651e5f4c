/// @file
/// Native values in the form in which they cross the C boundary.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <velmora/api/Command.h>
#include <velmora/api/Item.h>
#include <velmora/api/ItemId.h>
#include <velmora/api/QVBuffer.h>
#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>
#include <velmora/bridge/boundary/TessaportEntryPoints.h>

namespace Quorvex::Velmora::Tessaport
{

/// The handle of the managed object that the id or command came from; 0 if that was null.
///
/// @throws std::invalid_argument if it did not come from this library.
[[nodiscard]] VelmoraHandle toManaged(const TessaportAPI::ItemId& id);
[[nodiscard]] VelmoraHandle toManaged(const TessaportAPI::Command& command);

[[nodiscard]] std::vector<VelmoraHandle> toManaged(const Common::QVBuffer<TessaportAPI::ItemId>& ids);
/// The handles of the items' ids.
[[nodiscard]] std::vector<VelmoraHandle> toManaged(const Common::QVBuffer<TessaportAPI::Item>& items);

/// The identifier's 16 bytes in the order of its text form, valid as long as `id`.
///
/// @throws std::invalid_argument if it was made from text that is not an identifier.
[[nodiscard]] const std::uint8_t* toManaged(const Common::QVUUID& id);

/// A path in which every "/" is a "\\", as the sync application expects it.
[[nodiscard]] std::u16string toManagedPath(const Common::QVString& path);

/// Replaces every "/" by a "\\".
void useBackSlashes(char16_t* begin, char16_t* end) noexcept;

} // namespace Quorvex::Velmora::Tessaport
