#include "tools/tessaport/items/Details.h"

#include "tools/tessaport/items/PendingItems.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{

using TessaportAPI::Item;

Details::Details(Context& context, const std::vector<Item>& items)
    : texts(context, items, {"Size", "SyncState", "SyncError", "ConflictOf"})
{
}

std::string Details::size(const Item& item) const
{
    const std::string size = texts.of(item, "Size");
    return size.empty() ? "-" : size;
}

std::string Details::state(const Item& item) const
{
    const std::string word = stateWord(item);
    return word.empty() ? "-" : textOfState(word);
}

void Details::addTo(Json& json, const Item& item) const
{
    const auto size = toNumber(texts.of(item, "Size"));
    const std::string word = stateWord(item);
    json["size"] = size ? Json(*size) : Json();
    json["state"] = word.empty() ? Json() : Json(word);
}

std::string Details::stateWord(const Item& item) const
{
    PendingItem pending;
    pending.state = texts.of(item, "SyncState");
    pending.error = texts.of(item, "SyncError");
    pending.conflictOf = texts.of(item, "ConflictOf");
    const bool isInSync = pending.state.empty() || pending.state == "in-sync";
    return isInSync && pending.error.empty() && pending.conflictOf.empty() ? pending.state : pending.kind().word;
}

} // namespace Quorvex::Velmora::Tool
