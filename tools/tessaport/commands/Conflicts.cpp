#include <algorithm>
#include <memory>
#include <optional>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Conflict.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/output/Time.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct KeepOptions {
    std::string path;
    std::string copy;
    bool keepThis = false;
    bool keepOther = false;
    bool keepBoth = false;
};

/// One way to settle a conflict.
struct Settlement {
    const char* command; ///< Of the sync application, for the copy.
    const char* outcome;
};

Json toJson(const Version& version)
{
    Json json = Tool::toJson(version.item);
    json["path"] = localText(version.item);
    json["size"] = version.size ? Json(*version.size) : Json();
    json["from"] = version.from.empty() ? Json() : Json(version.from);
    return json;
}

std::string describe(const Version& version)
{
    std::string text = version.size ? counted(static_cast<std::size_t>(*version.size), "byte") : "size unknown";
    text += ", " + modifiedText(version.item);
    return version.from.empty() ? text : text + (version.from == "here" ? ", from here" : ", from the server");
}

void show(Outcomes& outcomes, const Conflict& conflict)
{
    if (outcomes.isJson())
        return outcomes.add({{"path", localText(conflict.ours.item)}, {"this", toJson(conflict.ours)},
            {"other", toJson(conflict.other)}});
    outcomes.line(localText(conflict.ours.item));
    outcomes.line("  this   " + describe(conflict.ours));
    outcomes.line("  other  " + describe(conflict.other) + ": " + toUtf8(conflict.other.item.name));
}

ExitCode showConflicts(Context& context, const std::vector<std::string>& paths)
{
    Outcomes outcomes(context);
    std::size_t count = 0;
    for (const Item& item :
        itemsOrDrives(context, paths, [&outcomes](const Lookup& missing) { outcomes.notFound(missing); })) {
        if (const auto drive = refusalOf(context, item.driveId); drive && drive->isOffline) {
            outcomes.failed(localText(item), drive->reason);
            continue;
        }
        for (const Conflict& conflict : conflictsIn(context, item)) {
            show(outcomes, conflict);
            ++count;
        }
    }
    if (!outcomes.isJson())
        outcomes.line("Total: " + counted(count, "conflict"));
    return outcomes.finish();
}

Settlement settlementOf(const KeepOptions& options)
{
    if (int{options.keepThis} + int{options.keepOther} + int{options.keepBoth} != 1)
        throw Failure(ExitCode::Usage, "say which version to keep: --this, --other or --both");
    if (options.keepThis)
        return {"discard-this-version", "kept this version"};
    if (options.keepOther)
        return {"use-this-version", "kept the other version"};
    return {"keep-both-versions", "kept both versions"};
}

std::string namesOf(const std::vector<Item>& items)
{
    std::string names;
    for (const Item& item : items)
        names += (names.empty() ? "'" : ", '") + toUtf8(item.name) + '\'';
    return names;
}

/// The other version of an item that is meant.
Item copyOf(Context& context, const Item& item, const KeepOptions& options)
{
    const Siblings siblings(context, item);
    std::vector<Item> copies = siblings.copies();
    if (copies.empty() && siblings.isCopy())
        throw Failure(ExitCode::Failure, "'" + options.path + "' is the other version of '" + siblings.original() +
                                             "'; name that file, and --other to keep this version");
    if (copies.empty())
        throw Failure(ExitCode::NotFound,
            "there is no conflict about '" + options.path + "'; 'tessaport conflicts' lists those there are");
    if (!options.copy.empty()) {
        const Item named = findItem(context, options.copy);
        const auto found =
            std::find_if(copies.begin(), copies.end(), [&named](const Item& copy) { return isSame(copy, named); });
        if (found == copies.end())
            throw Failure(ExitCode::NotFound,
                "'" + options.copy + "' is no other version of '" + options.path + "'; those are: " + namesOf(copies));
        return *found;
    }
    if (copies.size() > 1)
        throw Failure(ExitCode::Failure, "there are " + counted(copies.size(), "other version") + " of '" +
                                             options.path + "'; choose one with --copy: " + namesOf(copies));
    return copies.front();
}

std::optional<Command> commandFor(Context& context, const CommandContext& items, const std::string& id)
{
    for (const Command& command : context.connection().getCommands(items)) {
        if (toUtf8(command.id) == id)
            return command;
    }
    return std::nullopt;
}

ExitCode keep(Context& context, const KeepOptions& options)
{
    const Settlement settlement = settlementOf(options);
    const Item item = findItem(context, options.path);
    const Item copy = copyOf(context, item, options);
    CommandContext items;
    items.itemId = copy.id;
    const auto command = commandFor(context, items, settlement.command);
    if (!command)
        throw Failure(ExitCode::Failure, "the sync application does not settle conflicts");
    Outcomes outcomes(context);
    if (context.connection().executeCommand(*command, items).isSuccess)
        outcomes.done(localText(item), settlement.outcome, "", {{"of", localText(copy)}});
    else
        outcomes.failed(
            localText(item), "the conflict is not settled: " +
                                 Reasons(context, {copy}).whyNotDone(copy, "the sync application gives no reason"));
    return outcomes.finish();
}

void addKeepCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<KeepOptions>(line, "keep", "Settle a conflict",
        "tessaport conflicts keep --this PATH     the version that has the name\n"
        "tessaport conflicts keep --other PATH    the copy, which takes the place of the other\n"
        "tessaport conflicts keep --both PATH     both, as two ordinary files",
        keep);
    command.addPath(options.path, "The file, by the name that one version kept").required();
    command.addFlag("--this", options.keepThis, "Keep the version that has the name, and delete the copy");
    command.addFlag("--other", options.keepOther, "Put the copy in the place of the version that has the name");
    command.addFlag("--both", options.keepBoth, "Keep both, and list the conflict no longer");
    command.addOption("--copy", options.copy, "The copy that is meant, if there are several").valueName("FILE");
}

} // namespace

void addConflictCommands(const CommandLine& line)
{
    const auto paths = std::make_shared<std::vector<std::string>>();
    const CommandSyntax group =
        addGroup(line, "conflicts", "Show the files of which both versions were kept, or settle one",
            "tessaport conflicts\n"
            "tessaport conflicts PATH                  in one folder or drive\n"
            "tessaport conflicts keep --other PATH     settle one",
            [paths](Context& context) { return showConflicts(context, *paths); });
    group.addPaths(*paths, "Files or folders in a workspace, or DRIVE/PATH; without PATH all drives");
    addKeepCommand(line.inside(group));
}

} // namespace Quorvex::Velmora::Tool
