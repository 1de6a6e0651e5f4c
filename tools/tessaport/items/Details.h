#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/output/JsonFwd.h"

namespace Quorvex::Velmora::Tool
{

/// What long listings show of items besides their fields.
class Details
{
public:
    /// @param isLong  whether the listing shows them; nothing is asked otherwise.
    template <class Items>
    Details(Context& context, const Items& items, bool isLong)
        : Details(context,
              isLong ? std::vector<TessaportAPI::Item>(items.begin(), items.end()) : std::vector<TessaportAPI::Item>{})
    {
    }

    /// In bytes; "-" for folders, and if the sync application does not say.
    [[nodiscard]] std::string size(const TessaportAPI::Item& item) const;

    /// For people, "in sync" or what is pending.
    [[nodiscard]] std::string state(const TessaportAPI::Item& item) const;

    /// Adds `size` and `state` to the fields of an item; null if the sync application does not say.
    void addTo(Json& json, const TessaportAPI::Item& item) const;

private:
    Details(Context& context, const std::vector<TessaportAPI::Item>& items);

    [[nodiscard]] std::string stateWord(const TessaportAPI::Item& item) const;

    PropertyTexts texts;
};

} // namespace Quorvex::Velmora::Tool
