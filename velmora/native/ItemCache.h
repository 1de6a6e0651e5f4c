// Looking into the item cache. Internal.
#pragma once

#include <string>

#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The key under which a local path is looked for: canonical, with back-slashes.
/// @throws std::filesystem::filesystem_error when the current directory is gone.
[[nodiscard]] std::wstring cacheKey(const Common::QVString& path);

/// The cached item with exactly that key, or null.
[[nodiscard]] const Item* findCachedItem(const std::wstring& key);

} // namespace Quorvex::Velmora::TessaportAPI
