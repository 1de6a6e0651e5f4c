#include <utility>
#include <vector>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct RemoveOptions : ChangeOptions {
    bool recursive = false;
    bool yes = false;
};

/// Counts what is in a folder, at any depth.
std::size_t countInside(Context& context, const Item& folder)
{
    std::size_t count = 0;
    for (const Item& child : context.connection().getFolderContents(folder))
        count += 1 + (child.isFolder ? countInside(context, child) : 0);
    return count;
}

bool userAgrees(Context& context, const std::vector<Lookup>& items)
{
    constexpr std::size_t listedAtMost = 20;
    std::size_t inside = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const Item& item = *items[i].item;
        const std::size_t count = item.isFolder ? countInside(context, item) : 0;
        inside += count;
        if (i < listedAtMost)
            context.output.note(
                "  " + localText(item) + (item.isFolder ? "/  (" + counted(count, "item") + " in it)" : ""));
    }
    if (items.size() > listedAtMost)
        context.output.note("  and " + std::to_string(items.size() - listedAtMost) + " more");
    context.output.note("Delete " + counted(items.size(), "item") +
                        (inside > 0 ? " and the " + counted(inside, "item") + " in them" : "") +
                        ", here and on the server? [y/N]");
    const std::string answer = asciiLower(Platform::readInputLine().value_or(""));
    return answer == "y" || answer == "yes";
}

std::string whyNotDeleted(const Lookup& lookup, const Reasons& reasons)
{
    const Item& item = *lookup.item;
    if (item.relativePath.Empty())
        return "the root of a drive cannot be deleted";
    if (lookup.offline)
        return "its drive is offline";
    return "not deleted: " + reasons.whyNotDone(item, item.isFolder
                                                          ? "it holds a locked or open file, or the drive is read-only"
                                                          : "it is locked or open, or the drive is read-only");
}

void removeItems(Context& context, const std::vector<Lookup>& lookups, Outcomes& outcomes)
{
    QVBuffer<Item> items;
    for (const Lookup& lookup : lookups)
        items.Append(*lookup.item);
    const CommandResult result = context.connection().deleteFilesOrFolders(items);
    std::vector<Item> kept;
    for (const Lookup& lookup : lookups) {
        if (!isAmong(*lookup.item, result.itemsDeleted))
            kept.push_back(*lookup.item);
    }
    const Reasons reasons(context, kept);
    for (const Lookup& lookup : lookups) {
        if (isAmong(*lookup.item, result.itemsDeleted))
            outcomes.done(lookup.given, "deleted");
        else
            outcomes.failed(lookup.given, whyNotDeleted(lookup, reasons));
    }
    if (kept.empty() && !result.isSuccess)
        outcomes.failedAsAWhole(NotRemembered);
}

bool mustBeRecursive(Context& context, const Lookup& lookup)
{
    const Item& item = *lookup.item;
    const bool canBeDeleted = !lookup.offline && !item.relativePath.Empty();
    return canBeDeleted && item.isFolder && context.connection().getFolderContents(item).GetSize() > 0;
}

std::vector<Lookup> withoutFullFolders(Context& context, std::vector<Lookup> lookups, Outcomes& outcomes)
{
    std::vector<Lookup> rest;
    for (Lookup& lookup : lookups) {
        if (mustBeRecursive(context, lookup))
            outcomes.failed(
                lookup.given, "it is a folder that is not empty; add -r to delete it with everything in it");
        else
            rest.push_back(std::move(lookup));
    }
    return rest;
}

ExitCode remove(Context& context, const RemoveOptions& options)
{
    const bool mustAsk = !options.yes && !options.dryRun;
    if (mustAsk && !Platform::isTerminal(Platform::Stream::Input))
        throw Failure(
            ExitCode::Usage, "rm asks before it deletes, and input is not a terminal; add -y to delete without asking");
    Outcomes outcomes(context);
    std::vector<Lookup> items =
        findItemsOr(context, options.paths, [&outcomes](const Lookup& missing) { outcomes.notFound(missing); });
    if (!options.recursive)
        items = withoutFullFolders(context, std::move(items), outcomes);
    if (items.empty())
        return outcomes.finish();
    if (options.dryRun) {
        for (const Lookup& lookup : items)
            outcomes.done(lookup.given, "would be deleted");
        return outcomes.finish();
    }
    if (mustAsk && !userAgrees(context, items)) {
        for (const Lookup& lookup : items)
            outcomes.done(lookup.given, "kept");
        return outcomes.finish();
    }
    removeItems(context, items, outcomes);
    return outcomes.finish();
}

} // namespace

void addRemoveCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<RemoveOptions>(line, "rm", "Delete items here and on the server",
        "tessaport rm PATH PATH          asks first\n"
        "tessaport rm -r PATH            also folders that are not empty\n"
        "tessaport rm -n PATH            only shows what would be done\n"
        "tessaport rm -y PATH            does not ask",
        remove);
    command.addPaths(options.paths).required();
    command.addFlag("-r,--recursive", options.recursive, "Delete folders with everything in them");
    command.addFlag("-y,--yes", options.yes, "Do not ask");
    command.addDryRun(options.dryRun);
}

} // namespace Quorvex::Velmora::Tool
