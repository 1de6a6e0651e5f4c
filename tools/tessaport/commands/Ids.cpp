#include <memory>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

ExitCode showIds(Context& context, const std::vector<std::string>& paths)
{
    ExitCode worst = ExitCode::Ok;
    const std::vector<Lookup> lookups = findItemsOrReport(context, paths, worst);
    QVBuffer<ItemId> ids;
    for (const Lookup& lookup : lookups)
        ids.Append(lookup.item->id);
    const auto results = context.connection().getPermanentIds(ids);
    Table table;
    const auto list = context.options.json ? std::make_unique<JsonList>(context.output) : nullptr;
    for (std::uint32_t i = 0; i < results.GetSize() && i < lookups.size(); ++i) {
        const ItemIdToPermanentIdResult& result = *results[i];
        if (result.result != Result::Success) {
            context.output.message("'" + lookups[i].given + "': " + whyNot(result.result));
            combine(worst, codeFor(result.result));
        } else if (list != nullptr) {
            list->add({{"path", lookups[i].given}, {"permanentId", utf8(result.permanentId)}});
        } else {
            table.row({utf8(result.permanentId), lookups[i].given});
        }
    }
    if (list != nullptr)
        list->close();
    table.print(context.output);
    return worst;
}

ExitCode resolveIds(Context& context, const std::vector<std::string>& ids)
{
    QVBuffer<QVString> permanentIds;
    for (const std::string& id : ids)
        permanentIds.Append(libraryText(id));
    const auto results = context.connection().getItemsByPermanentIds(permanentIds);
    ExitCode worst = ExitCode::Ok;
    const auto list = context.options.json ? std::make_unique<JsonList>(context.output) : nullptr;
    for (std::uint32_t i = 0; i < results.GetSize() && i < ids.size(); ++i) {
        const PermanentIdToItemResult& result = *results[i];
        if (result.result != Result::Success) {
            context.output.message("'" + ids[i] + "': " + whyNot(result.result));
            combine(worst, codeFor(result.result));
        } else if (list != nullptr) {
            Json json{{"permanentId", ids[i]}};
            json.update(toJson(result.item));
            list->add(json);
        } else {
            context.output.line(printable(localPath(result.item)));
        }
    }
    if (list != nullptr)
        list->close();
    return worst;
}

} // namespace

void addIdCommands(const CommandLine& line)
{
    const auto paths = std::make_shared<std::vector<std::string>>();
    addCommand(line, "id", "Show the permanent ids of items, which survive renames and moves", "tessaport id PATH PATH",
        [paths](Context& context) { return showIds(context, *paths); })
        .add_option("path", *paths, "Files or folders in a workspace")
        ->type_name("PATH")
        ->required();

    const auto ids = std::make_shared<std::vector<std::string>>();
    addCommand(line, "resolve", "Show where the items of permanent ids are",
        "tessaport resolve tp.5b1f7f0e6c0e4a539a390f6a3c1d2b01.0123456789abcdef0123456789abcdef",
        [ids](Context& context) { return resolveIds(context, *ids); })
        .add_option("id", *ids, "Permanent ids")
        ->type_name("ID")
        ->required();
}

} // namespace Quorvex::Velmora::Tool
