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

struct RunOptions {
    std::string command;
    std::vector<std::string> paths;
    bool dryRun = false;
};

CommandContext contextFor(const std::vector<Lookup>& lookups)
{
    CommandContext context;
    for (const Lookup& lookup : lookups) {
        if (&lookup == &lookups.front())
            context.itemId = lookup.item->id;
        else
            context.itemIds.Append(lookup.item->id);
    }
    return context;
}

Json toJson(const Command& command)
{
    Json json;
    json["id"] = toUtf8(command.id);
    json["name"] = toUtf8(command.name);
    json["isEnabled"] = command.isEnabled;
    json["isChecked"] = command.isChecked;
    json["isBeginningOfGroup"] = command.isBeginningOfGroup;
    json["isDefaultCommand"] = command.isDefaultCommand;
    json["imageBytes"] = command.image.count;
    return json;
}

ExitCode showCommands(Context& context, const std::vector<std::string>& paths)
{
    const std::vector<Lookup> found =
        findItemsOr(context, paths, [](const Lookup& missing) { throw notFound(missing); });
    const auto commands = context.connection().getCommands(contextFor(found));
    if (context.options.json) {
        JsonList list(context.output);
        for (const Command& command : commands)
            list.add(toJson(command));
        list.close();
        return ExitCode::Ok;
    }
    Table table({"ID", "NAME", "STATE"});
    for (const Command& command : commands) {
        std::string state = command.isEnabled ? "enabled" : "disabled";
        state += command.isChecked ? ", checked" : "";
        state += command.isDefaultCommand ? ", default" : "";
        state += command.isBeginningOfGroup ? ", begins a group" : "";
        table.row({toUtf8(command.id), toUtf8(command.name), state});
    }
    table.print(context.output);
    return ExitCode::Ok;
}

const Command& commandNamed(const std::string& name, const QVBuffer<Command>& commands)
{
    std::string known;
    for (const Command& command : commands) {
        if (toUtf8(command.id) == name || asciiLower(toUtf8(command.name)) == asciiLower(name))
            return command;
        known += (known.empty() ? "" : ", ") + toUtf8(command.id);
    }
    throw Failure(ExitCode::NotFound, "there is no command '" + name + "' here; there are: " + known);
}

void reportChanges(const CommandResult& result, Outcomes& outcomes)
{
    for (const Item& item : result.itemsCreated)
        outcomes.done(localText(item), "created");
    for (const Item& item : result.itemsUpdated)
        outcomes.done(localText(item), "updated");
    for (const Item& item : result.itemsDeleted)
        outcomes.done(localText(item), "deleted");
}

ExitCode run(Context& context, const RunOptions& options)
{
    Outcomes outcomes(context);
    const std::vector<Lookup> found =
        findItemsOr(context, options.paths, [&outcomes](const Lookup& missing) { outcomes.notFound(missing); });
    if (found.empty())
        return outcomes.finish();
    const CommandContext commandContext = contextFor(found);
    const auto commands = context.connection().getCommands(commandContext);
    const Command& command = commandNamed(options.command, commands);
    const std::string name = toUtf8(command.name);
    if (!command.isEnabled)
        throw Failure(ExitCode::Failure, "the command '" + name + "' is disabled for these items");
    if (options.dryRun) {
        outcomes.done(name, "would run");
        return outcomes.finish();
    }
    const CommandResult result = context.connection().executeCommand(command, commandContext);
    reportChanges(result, outcomes);
    if (result.isSuccess)
        outcomes.done(name, "done");
    else
        outcomes.failed(name, "the sync application could not do it for all items");
    return outcomes.finish();
}

} // namespace

void addItemCommands(const CommandLine& line)
{
    auto [listCommand, paths] = addCommand<std::vector<std::string>>(line, "commands",
        "Show the commands that the sync application offers for items", "tessaport commands PATH", showCommands);
    listCommand.addPaths(paths).required();

    auto [command, options] = addCommand<RunOptions>(line, "run", "Run a command of the sync application on items",
        "tessaport run lock PATH\n"
        "tessaport run 'Copy link' PATH PATH",
        run);
    command.addOption("command", options.command, "Identifier or name of the command").valueName("ACTION").required();
    command.addPaths(options.paths).required();
    command.addDryRun(options.dryRun);
}

} // namespace Quorvex::Velmora::Tool
