#include <map>
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

struct PropertyOptions {
    std::vector<std::string> paths;
    std::vector<std::string> ids;
    std::string definitionsOf;
};

ExitCode showDefinitions(Context& context, const std::string& driveName)
{
    const Drive drive = findDrive(context, driveName);
    const auto definitions = context.connection().getPropertyDefinitions(drive.id);
    if (context.options.json) {
        JsonList list(context.output);
        for (const PropertyDefinition& definition : definitions)
            list.add({{"id", utf8(definition.id)}, {"displayName", utf8(definition.displayName)},
                {"displayDataType", static_cast<int>(definition.displayDataType)},
                {"valueDataType", static_cast<int>(definition.valueDataType)}});
        list.close();
        return ExitCode::Ok;
    }
    Table table({"ID", "NAME", "SHOWN AS", "TYPE"});
    for (const PropertyDefinition& definition : definitions)
        table.row({utf8(definition.id), utf8(definition.displayName),
            std::to_string(static_cast<int>(definition.displayDataType)),
            std::to_string(static_cast<int>(definition.valueDataType))});
    table.print(context.output);
    return ExitCode::Ok;
}

struct Value {
    std::string id;
    std::string displayName;
    std::string text;
};

/// The values of the items of one drive, by relative path.
using Values = std::map<std::string, std::vector<Value>>;

std::map<std::string, std::string> displayNames(Context& context, const QVUUID& drive)
{
    std::map<std::string, std::string> names;
    for (const PropertyDefinition& definition : context.connection().getPropertyDefinitions(drive))
        names[utf8(definition.id)] = utf8(definition.displayName);
    return names;
}

Values valuesOnDrive(Context& context, const std::vector<Item>& items, const std::vector<std::string>& wantedIds)
{
    const auto names = displayNames(context, items.front().driveId);
    QVBuffer<ItemId> itemIds;
    for (const Item& item : items)
        itemIds.Append(item.id);
    QVBuffer<QVString> definitionIds;
    for (const auto& [id, name] : names) {
        if (wantedIds.empty())
            definitionIds.Append(libraryText(id));
    }
    for (const std::string& id : wantedIds)
        definitionIds.Append(libraryText(id));
    Values values;
    for (const StringPropertyValue& value : context.connection().getStringPropertyValues(itemIds, definitionIds)) {
        const std::string id = utf8(value.propertyDefinitionId);
        const auto name = names.find(id);
        values[utf8(value.relativePath)].push_back({id, name == names.end() ? id : name->second, utf8(value.value)});
    }
    return values;
}

std::map<std::string, Values> valuesByDrive(
    Context& context, const std::vector<Lookup>& lookups, const std::vector<std::string>& wantedIds)
{
    std::map<std::string, std::vector<Item>> itemsByDrive;
    for (const Lookup& lookup : lookups)
        itemsByDrive[utf8(lookup.item->driveId)].push_back(*lookup.item);
    std::map<std::string, Values> byDrive;
    for (const auto& [drive, items] : itemsByDrive)
        byDrive[drive] = valuesOnDrive(context, items, wantedIds);
    return byDrive;
}

void printAsJson(Output& output, const std::vector<Lookup>& lookups, std::map<std::string, Values>& values)
{
    JsonList list(output);
    for (const Lookup& lookup : lookups) {
        for (const Value& value : values[utf8(lookup.item->driveId)][utf8(lookup.item->relativePath)])
            list.add(
                {{"path", lookup.given}, {"id", value.id}, {"displayName", value.displayName}, {"value", value.text}});
    }
    list.close();
}

void printAsText(Output& output, const std::vector<Lookup>& lookups, std::map<std::string, Values>& values)
{
    for (const Lookup& lookup : lookups) {
        if (lookups.size() > 1)
            output.line(output.coloured(Colour::Heading, printable(lookup.given)));
        Table table;
        for (const Value& value : values[utf8(lookup.item->driveId)][utf8(lookup.item->relativePath)])
            table.row({value.id, value.text});
        table.print(output);
    }
}

ExitCode showProperties(Context& context, const PropertyOptions& options)
{
    if (!options.definitionsOf.empty())
        return showDefinitions(context, options.definitionsOf);
    if (options.paths.empty())
        throw Failure(ExitCode::Usage, "name items, or a drive with --definitions");
    ExitCode worst = ExitCode::Ok;
    const std::vector<Lookup> lookups = findItemsOrReport(context, options.paths, worst);
    auto values = valuesByDrive(context, lookups, options.ids);
    if (context.options.json)
        printAsJson(context.output, lookups, values);
    else
        printAsText(context.output, lookups, values);
    return worst;
}

} // namespace

void addPropertyCommand(const CommandLine& line)
{
    const auto options = std::make_shared<PropertyOptions>();
    CLI::App& command = addCommand(line, "props", "Show the properties of items",
        "tessaport props PATH\n"
        "tessaport props --id Size --id Modified PATH PATH\n"
        "tessaport props --definitions 'Harbour Project'    what there is on a drive",
        [options](Context& context) { return showProperties(context, *options); });
    CLI::Option* const paths =
        command.add_option("path", options->paths, "Files or folders in a workspace")->type_name("PATH");
    command.add_option("--id", options->ids, "Show this property only; can be given several times")
        ->type_name("ID")
        ->allow_extra_args(false);
    command.add_option("--definitions", options->definitionsOf, "Show the properties that a drive defines")
        ->type_name("DRIVE")
        ->excludes(paths);
}

} // namespace Quorvex::Velmora::Tool
