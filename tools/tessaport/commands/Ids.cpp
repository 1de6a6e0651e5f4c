#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

ExitCode showIds(Context& context, const std::vector<std::string>& paths)
{
    const std::vector<Lookup> lookups = findItems(context, paths);
    QVBuffer<ItemId> ids;
    for (const Lookup& lookup : lookups) {
        if (lookup.item)
            ids.Append(lookup.item->id);
    }
    const auto results = context.connection().getPermanentIds(ids);
    Outcomes outcomes(context);
    Table table;
    std::uint32_t next = 0;
    for (const Lookup& lookup : lookups) {
        if (!lookup.item || next >= results.GetSize()) {
            outcomes.notFound(lookup);
            continue;
        }
        const ItemIdToPermanentIdResult& result = *results[next++];
        if (result.result != Result::Success)
            outcomes.failed(lookup.given, whyNot(result.result), codeFor(result.result));
        else if (outcomes.isJson())
            outcomes.add({{"path", lookup.given}, {"permanentId", toUtf8(result.permanentId)}});
        else
            table.row({toUtf8(result.permanentId), lookup.given});
    }
    table.print(context.output);
    return outcomes.finish();
}

ExitCode resolveIds(Context& context, const std::vector<std::string>& ids)
{
    QVBuffer<QVString> permanentIds;
    for (const std::string& id : ids)
        permanentIds.Append(toQVString(id));
    const auto results = context.connection().getItemsByPermanentIds(permanentIds);
    Outcomes outcomes(context);
    for (std::uint32_t i = 0; i < results.GetSize() && i < ids.size(); ++i) {
        const PermanentIdToItemResult& result = *results[i];
        if (result.result != Result::Success) {
            outcomes.failed(ids[i], whyNot(result.result), codeFor(result.result), "permanentId");
        } else if (outcomes.isJson()) {
            Json json{{"permanentId", ids[i]}};
            json.update(toJson(result.item));
            outcomes.add(json);
        } else {
            outcomes.line(localText(result.item));
        }
    }
    return outcomes.finish();
}

} // namespace

void addIdCommands(const CommandLine& line)
{
    auto [idCommand, paths] = addCommand<std::vector<std::string>>(line, "id",
        "Show the permanent ids of items, which survive renames and moves", "tessaport id PATH PATH", showIds);
    idCommand.addPaths(paths).required();

    auto [resolveCommand, ids] =
        addCommand<std::vector<std::string>>(line, "resolve", "Show where the items of permanent ids are",
            "tessaport resolve tp.5b1f7f0e6c0e4a539a390f6a3c1d2b01.0123456789abcdef0123456789abcdef", resolveIds);
    resolveCommand.addOption("id", ids, "Permanent ids").valueName("ID").required();
}

} // namespace Quorvex::Velmora::Tool
