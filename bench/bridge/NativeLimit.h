// The same records built by plain C++, without any .NET: what no bridge can do much better than.
#pragma once

#include <string>
#include <vector>

#include <velmora/api/Records.h>

namespace Quorvex::Velmora::Bench
{

struct SourceItem {
    TessaportAPI::Item record; ///< Everything but the strings and the id.
    std::wstring name;
    std::wstring relativePath;
    std::wstring workspacePath;
};

/// What a native service would hold: plain strings.
[[nodiscard]] std::vector<SourceItem> sourceOf(const Common::QVBuffer<TessaportAPI::Item>& items);

/// Whether the items get ids of their own, as the bridge's do, or empty ones.
enum class Ids { Own, None };

/// Fills a record with deep-copied strings.
void fill(TessaportAPI::Item& item, const SourceItem& source, Ids ids);

/// A listing, reserved for the count.
[[nodiscard]] Common::QVBuffer<TessaportAPI::Item> listing(const std::vector<SourceItem>& source, Ids ids);

/// Gives the id something of its own to share, as a native service would.
void setOwnId(TessaportAPI::ItemId& id);

} // namespace Quorvex::Velmora::Bench
