#include "tools/tessaport/items/SyncPlan.h"

#include "tools/tessaport/items/PendingItems.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{

std::optional<std::vector<PlannedChange>> planFor(Context& context, const TessaportAPI::Item& item)
{
    const std::string list = PropertyTexts(context, {item}, {"SyncPlan"}).of(item, "SyncPlan");
    if (list.empty())
        return std::nullopt;
    std::vector<PlannedChange> plan;
    for (const Json& element : parseJson(list)) {
        const std::string path = workspacePathIn(item, element.value("path", ""));
        plan.push_back(
            {localText(toQVString(path)), element.value("action", ""), withoutFullStop(element.value("error", ""))});
    }
    return plan;
}

} // namespace Quorvex::Velmora::Tool
