// Read access to the item cache. Internal.
#pragma once

#include <string>

#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Returns the key under which the item at a local path is looked up: the canonical path with back-slashes.
///
/// @throws std::filesystem::filesystem_error when the current directory does not exist any more.
[[nodiscard]] std::wstring cacheKey(const Common::QVString& path);

/// Returns the cached item with exactly this key, or null.
[[nodiscard]] const Item* findCachedItem(const std::wstring& key);

} // namespace Quorvex::Velmora::TessaportAPI
