#include <algorithm>
#include <charconv>
#include <map>

#include "tools/tessaport/commandline/Suggestion.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
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
            list.add({{"id", toUtf8(definition.id)}, {"displayName", toUtf8(definition.displayName)},
                {"displayDataType", static_cast<int>(definition.displayDataType)},
                {"valueDataType", static_cast<int>(definition.valueDataType)}});
        list.close();
        return ExitCode::Ok;
    }
    Table table({"ID", "NAME", "SHOWN AS", "TYPE"});
    for (const PropertyDefinition& definition : definitions)
        table.row({toUtf8(definition.id), toUtf8(definition.displayName),
            std::to_string(static_cast<int>(definition.displayDataType)),
            std::to_string(static_cast<int>(definition.valueDataType))});
    table.print(context.output);
    return ExitCode::Ok;
}

struct Value {
    std::string id;
    std::string displayName;
    PropertyDataType type{};
    std::string text;
};

/// The properties that a drive defines, by identifier.
using Definitions = std::map<std::string, PropertyDefinition>;

/// The values of the items of one drive.
struct DriveValues {
    Definitions definitions;
    std::map<std::string, std::vector<Value>> byRelativePath;
};

using ValuesByDrive = std::map<std::string, DriveValues>;

Definitions definitionsOf(Context& context, const QVUUID& drive)
{
    Definitions definitions;
    for (const PropertyDefinition& definition : context.connection().getPropertyDefinitions(drive))
        definitions[toUtf8(definition.id)] = definition;
    return definitions;
}

QVBuffer<QVString> idsToAskFor(const Definitions& definitions, const std::vector<std::string>& wantedIds)
{
    QVBuffer<QVString> ids;
    for (const std::string& id : wantedIds)
        ids.Append(toQVString(id));
    for (const auto& [id, definition] : definitions) {
        if (wantedIds.empty())
            ids.Append(definition.id);
    }
    return ids;
}

Value toValue(const StringPropertyValue& value, const Definitions& definitions)
{
    const std::string id = toUtf8(value.propertyDefinitionId);
    const auto definition = definitions.find(id);
    if (definition == definitions.end())
        return {id, id, {}, toUtf8(value.value)};
    return {id, toUtf8(definition->second.displayName), definition->second.valueDataType, toUtf8(value.value)};
}

DriveValues valuesOnDrive(Context& context, const std::vector<Item>& items, const std::vector<std::string>& wantedIds)
{
    DriveValues values{definitionsOf(context, items.front().driveId), {}};
    QVBuffer<ItemId> itemIds;
    for (const Item& item : items)
        itemIds.Append(item.id);
    const auto propertyIds = idsToAskFor(values.definitions, wantedIds);
    for (const StringPropertyValue& value : context.connection().getStringPropertyValues(itemIds, propertyIds))
        values.byRelativePath[toUtf8(value.relativePath)].push_back(toValue(value, values.definitions));
    return values;
}

ValuesByDrive valuesByDrive(
    Context& context, const std::vector<Lookup>& lookups, const std::vector<std::string>& wantedIds)
{
    std::map<std::string, std::vector<Item>> itemsByDrive;
    for (const Lookup& lookup : lookups) {
        if (lookup.item)
            itemsByDrive[toUtf8(lookup.item->driveId)].push_back(*lookup.item);
    }
    ValuesByDrive byDrive;
    for (const auto& [drive, items] : itemsByDrive)
        byDrive[drive] = valuesOnDrive(context, items, wantedIds);
    return byDrive;
}

bool isKnown(const std::string& id, const ValuesByDrive& values)
{
    for (const auto& [drive, ofDrive] : values) {
        if (ofDrive.definitions.count(id) > 0)
            return true;
        for (const auto& [path, ofItem] : ofDrive.byRelativePath) {
            if (std::any_of(ofItem.begin(), ofItem.end(), [&id](const Value& value) { return value.id == id; }))
                return true;
        }
    }
    return values.empty();
}

void reportUnknownIds(const std::vector<std::string>& wantedIds, const ValuesByDrive& values, Outcomes& outcomes)
{
    std::vector<std::string> defined;
    for (const auto& [drive, ofDrive] : values) {
        for (const auto& [id, definition] : ofDrive.definitions)
            defined.push_back(id);
    }
    for (const std::string& id : wantedIds) {
        if (isKnown(id, values))
            continue;
        const auto meant = closest(id, defined);
        outcomes.failed(id,
            "there is no such property; " + (meant ? "did you mean '" + *meant + "'?"
                                                   : "'tessaport props --definitions DRIVE' lists those there are"),
            ExitCode::NotFound, "property");
    }
}

// The numbers of the types are those of the local sync service. A value that does not read as its type stays a string.
Json typedValue(const Value& value)
{
    constexpr auto wholeNumber = PropertyDataType{2};
    constexpr auto boolean = PropertyDataType{4};
    if (value.type == boolean && (value.text == "True" || value.text == "False"))
        return value.text == "True";
    if (value.type == wholeNumber) {
        std::int64_t number = 0;
        const char* const end = value.text.data() + value.text.size();
        const auto [rest, error] = std::from_chars(value.text.data(), end, number);
        if (error == std::errc() && rest == end)
            return number;
    }
    return value.text;
}

void printAsJson(const Lookup& lookup, const std::vector<Value>& values, Outcomes& outcomes)
{
    for (const Value& value : values)
        outcomes.add({{"path", lookup.given}, {"id", value.id}, {"displayName", value.displayName},
            {"value", typedValue(value)}});
}

void printAsText(Output& output, const Lookup& lookup, const std::vector<Value>& values, bool withHeading)
{
    if (withHeading)
        output.line(std::vector<Span>{{lookup.given, Colour::Heading}});
    Table table;
    for (const Value& value : values)
        table.row({value.id, value.text});
    table.print(output);
}

ExitCode showProperties(Context& context, const PropertyOptions& options)
{
    if (!options.definitionsOf.empty())
        return showDefinitions(context, options.definitionsOf);
    if (options.paths.empty())
        throw Failure(ExitCode::Usage, "PATH is missing; for example: tessaport props PATH");
    const std::vector<Lookup> lookups = findItems(context, options.paths);
    auto values = valuesByDrive(context, lookups, options.ids);
    Outcomes outcomes(context);
    reportUnknownIds(options.ids, values, outcomes);
    for (const Lookup& lookup : lookups) {
        if (!lookup.item) {
            outcomes.notFound(lookup);
            continue;
        }
        const auto& ofItem = values[toUtf8(lookup.item->driveId)].byRelativePath[toUtf8(lookup.item->relativePath)];
        if (outcomes.isJson())
            printAsJson(lookup, ofItem, outcomes);
        else
            printAsText(context.output, lookup, ofItem, lookups.size() > 1);
    }
    return outcomes.finish();
}

} // namespace

void addPropertyCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<PropertyOptions>(line, "props", "Show the properties of items",
        "tessaport props PATH\n"
        "tessaport props --id Size --id Modified PATH PATH\n"
        "tessaport props --definitions 'Harbour Project'    the properties of a drive",
        showProperties);
    const CommandOption paths = command.addPaths(options.paths);
    command.addOption("--id", options.ids, "Show this property only; can be given several times")
        .valueName("PROPERTY")
        .repeated();
    command.addOption("--definitions", options.definitionsOf, "Show the properties that a drive defines")
        .valueName("DRIVE")
        .excludes({paths});
}

} // namespace Quorvex::Velmora::Tool
