#include <algorithm>
#include <memory>

#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Batches.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Progress.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct SyncOptions {
    std::vector<std::string> paths;
    std::string one;
    bool dryRun = false;
};

using Items = std::vector<Item>;

/// Calls `visit` with every item beneath a folder that stands on one side only.
template <class Visit>
void forEachOneSided(Context& context, const Item& item, Visit visit)
{
    if (item.isInWorkspace != item.isOnServer)
        visit(item);
    if (!item.isFolder)
        return;
    for (const Item& child : context.connection().getFolderContents(item))
        forEachOneSided(context, child, visit);
}

CommandResult syncTogether(Context& context, const Items& items)
{
    QVBuffer<Item> buffer;
    for (const Item& item : items)
        buffer.Append(item);
    return context.connection().syncFiles(buffer);
}

constexpr const char* NotSynced = "not synced: its drive is offline or read-only, the disk is full, the name is not "
                                  "allowed, or there is a folder of this name on the other side";

// What is still on one side beneath a folder that failed is what could not be done; a folder without such items is
// named itself.
void reportFailed(Context& context, const Item& item, Outcomes& outcomes)
{
    bool named = false;
    if (item.isFolder) {
        forEachOneSided(context, item, [&](const Item& waiting) {
            named = true;
            outcomes.failed(localPath(waiting), NotSynced);
        });
    }
    if (!named)
        outcomes.failed(localPath(item), NotSynced);
}

bool wasAskedFor(const Item& item, const Items& items)
{
    return std::any_of(items.begin(), items.end(), [&item](const Item& other) { return isSame(item, other); });
}

// What was asked for is listed once it is in sync; of what lies beneath, what was copied.
void reportListed(const Items& items, const CommandResult& result, Outcomes& outcomes)
{
    for (const Item& item : result.itemsCreated)
        outcomes.done(localPath(item), "kept twice");
    for (const Item& item : result.itemsUpdated)
        outcomes.done(localPath(item), wasAskedFor(item, items) ? "in sync" : "updated");
}

// An item that is in no list was not done, or was done under a new name; asking for it alone tells.
bool reportUnlisted(Context& context, const Items& items, const CommandResult& result, Outcomes& outcomes)
{
    bool found = false;
    for (const Item& item : items) {
        if (isAmong(item, result.itemsUpdated))
            continue;
        found = true;
        if (items.size() == 1 || !syncTogether(context, {item}).isSuccess)
            reportFailed(context, item, outcomes);
        else
            outcomes.done(localPath(item), "in sync");
    }
    return found;
}

void syncBatch(Context& context, const Items& items, Outcomes& outcomes)
{
    try {
        const CommandResult result = syncTogether(context, items);
        reportListed(items, result, outcomes);
        if (!result.isSuccess && !reportUnlisted(context, items, result, outcomes))
            outcomes.failedAsAWhole(NotRemembered);
    } catch (const ApiException&) {
        const Explanation explanation = explainCurrentException();
        for (const Item& item : items)
            outcomes.failed(localPath(item), explanation.text, explanation.code);
    }
}

Items itemsToSync(Context& context, const std::vector<std::string>& paths, Outcomes& outcomes)
{
    Items items;
    if (paths.empty()) {
        for (const Drive& drive : context.connection().getDrives())
            items.push_back(drive.root);
        return items;
    }
    const auto report = [&outcomes](const Lookup& missing) { outcomes.notFound(missing); };
    for (const Lookup& lookup : findItemsOr(context, paths, report))
        items.push_back(*lookup.item);
    return items;
}

void showWhatWouldBeDone(Context& context, const Items& items, Outcomes& outcomes)
{
    for (const Item& item : items) {
        forEachOneSided(context, item, [&outcomes](const Item& waiting) {
            outcomes.done(localPath(waiting), waiting.isOnServer ? "would come down" : "would go up");
        });
    }
}

ExitCode syncMany(Context& context, const SyncOptions& options)
{
    Outcomes outcomes(context);
    const Items items = itemsToSync(context, options.paths, outcomes);
    if (options.dryRun) {
        showWhatWouldBeDone(context, items, outcomes);
        return outcomes.finish();
    }
    Progress progress("Syncing", items.size());
    progress.advanceTo(0);
    inBatches(items, [&](const Items& batch, std::size_t end) {
        progress.clear();
        syncBatch(context, batch, outcomes);
        progress.advanceTo(end);
    });
    progress.clear();
    return outcomes.finish();
}

// The one-call operations, for hosts that keep no connection.
ExitCode syncOne(Context& context, const std::string& path)
{
    Item item;
    if (!QvNativeTessaportAPI::getItemByWorkspacePath(nullptr, libraryText(absolutePath(path)), item)) {
        context.connection().discover();
        throw Failure(ExitCode::NotFound, "'" + path + "': no such item on any drive");
    }
    context.forgetLoggedError();
    const bool synced = QvNativeTessaportAPI::syncItem(nullptr, item);
    if (!synced && !context.lastLoggedError().empty())
        return context.reportStaticFailure("'" + path + "'");
    Outcomes outcomes(context);
    if (synced)
        outcomes.done(path, "in sync");
    else
        reportFailed(context, item, outcomes);
    return outcomes.finish();
}

} // namespace

void addSyncCommand(const CommandLine& line)
{
    const auto options = std::make_shared<SyncOptions>();
    CLI::App& command = addCommand(line, "sync", "Bring both sides up to date; without PATH all drives",
        "tessaport sync\n"
        "tessaport sync PATH PATH       folders with all that is beneath\n"
        "tessaport sync -n PATH         only says what stands on one side and would be copied\n"
        "tessaport sync --one PATH      one item, by the call for hosts that keep no connection",
        [options](Context& context) {
            return options->one.empty() ? syncMany(context, *options) : syncOne(context, options->one);
        });
    CLI::Option* const paths =
        command.add_option("path", options->paths, "Files or folders in a workspace")->type_name("PATH");
    CLI::Option* const dryRun = command.add_flag("-n,--dry-run", options->dryRun, "Only say what would be done");
    command.add_option("--one", options->one, "Sync this one item in one call")
        ->type_name("PATH")
        ->excludes(paths)
        ->excludes(dryRun);
}

} // namespace Quorvex::Velmora::Tool
