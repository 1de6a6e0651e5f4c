#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Batches.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/items/SyncPlan.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/output/Progress.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct SyncOptions : ChangeOptions {
    std::string one;
    bool isQuiet = false;
};

using Items = std::vector<Item>;

constexpr const char* ActionProperty = "SyncAction";

/// Calls `visit` with each item in a folder, at any depth, that exists on one side only.
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

Items contentsOf(Context& context, const Item& folder)
{
    Items items;
    for (const Item& item : context.connection().getFolderContents(folder))
        items.push_back(item);
    return items;
}

std::string notSynced(const std::string& reason) { return "not synced: " + reason; }

std::string whyNotSynced(const Reasons& reasons, const Item& item)
{
    return notSynced(reasons.whyNotDone(item,
        "its drive is offline or read-only, the disk is full, the name is not allowed, or there "
        "is a folder of this name on the other side"));
}

/// Names what the sync application says has failed in a folder; false if it says nothing.
bool reportFailedInside(Context& context, const Item& folder, Outcomes& outcomes)
{
    const Items items = contentsOf(context, folder);
    const Reasons reasons(context, items);
    bool found = false;
    for (const Item& item : items) {
        if (reasons.hasFailed(item)) {
            outcomes.failed(localText(item), whyNotSynced(reasons, item));
            found = true;
        }
        if (item.isFolder)
            found = reportFailedInside(context, item, outcomes) || found;
    }
    return found;
}

// For sync applications that keep no reasons: what is still on one side in a folder is what could not be done.
bool reportOneSidedInside(Context& context, const Item& folder, Outcomes& outcomes)
{
    bool found = false;
    forEachOneSided(context, folder, [&](const Item& waiting) {
        if (PropertyTexts(context, {waiting}, {"SyncState"}).of(waiting, "SyncState") == "left-out")
            return;
        outcomes.failed(localText(waiting), whyNotSynced(Reasons(context, {waiting}), waiting));
        found = true;
    });
    return found;
}

void reportFailed(Context& context, const Item& item, Outcomes& outcomes)
{
    if (const auto drive = refusalOf(context, item.driveId); drive && drive->isOffline) {
        outcomes.failed(localText(item), notSynced(drive->reason));
        return;
    }
    if (item.isFolder && (reportFailedInside(context, item, outcomes) || reportOneSidedInside(context, item, outcomes)))
        return;
    outcomes.failed(localText(item), whyNotSynced(Reasons(context, {item}), item));
}

bool wasAskedFor(const Item& item, const Items& items)
{
    return std::any_of(items.begin(), items.end(), [&item](const Item& other) { return isSame(item, other); });
}

/// The name that a copy kept in a conflict was given beside: "a (conflict 2024-05-01 101530).txt" beside "a.txt".
std::string originalOf(const std::string& copy)
{
    const std::size_t note = copy.rfind(" (conflict ");
    const std::size_t end = note == std::string::npos ? note : copy.find(')', note);
    return end == std::string::npos ? "" : copy.substr(0, note) + copy.substr(end + 1);
}

/// The side from which a version came: "here" if it was uploaded, "server" if it was downloaded.
std::string originOf(const std::string& action)
{
    return action == "uploaded" ? "here" : action == "downloaded" ? "server" : "";
}

/// Which version kept the name.
std::string sideThatKeptTheName(const Item& copy, const PropertyTexts& actions)
{
    const QVString original = toQVString(originalOf(toUtf8(copy.relativePath)));
    return originOf(actions.of(copy.driveId, original, ActionProperty));
}

std::string explanationOf(const std::string& original, const std::string& sideThatKeptIt)
{
    if (sideThatKeptIt.empty())
        return "";
    return ": '" + fileName(original) + "' is the version " +
           (sideThatKeptIt == "here" ? "from here, this is the one from the server"
                                     : "from the server, this is the one from here");
}

void reportConflict(const Item& copy, const PropertyTexts& actions, Outcomes& outcomes)
{
    const std::string side = sideThatKeptTheName(copy, actions);
    const std::string original = originalOf(localText(copy));
    outcomes.done(
        localText(copy), "kept twice", explanationOf(original, side), {{"of", original}, {"nameKeptBy", side}});
    outcomes.endWith(ExitCode::Conflict);
}

std::string whatWasDone(const Item& item, const Items& askedFor, const PropertyTexts& actions)
{
    std::string action = actions.of(item, ActionProperty);
    if (!action.empty())
        return action;
    return wasAskedFor(item, askedFor) ? "in sync" : "updated";
}

void reportConflicts(Context& context, const CommandResult& result, Outcomes& outcomes)
{
    std::unordered_set<std::string> originals;
    for (const Item& copy : result.itemsCreated)
        originals.insert(toUtf8(copy.driveId) + originalOf(toUtf8(copy.relativePath)));
    Items known;
    for (const Item& item : result.itemsUpdated) {
        if (!originals.empty() && originals.count(toUtf8(item.driveId) + toUtf8(item.relativePath)) > 0)
            known.push_back(item);
    }
    const PropertyTexts actions(context, known, {ActionProperty});
    for (const Item& copy : result.itemsCreated)
        reportConflict(copy, actions, outcomes);
}

// What was asked for is listed if it is in sync, and what is inside of it if it was copied or renamed.
void reportListed(Context& context, const Items& items, const CommandResult& result, Outcomes& outcomes)
{
    reportConflicts(context, result, outcomes);
    const auto report = [&](const Batch<Item>& batch) {
        const PropertyTexts actions(context, batch.things, {ActionProperty});
        for (const Item& item : batch.things)
            outcomes.done(localText(item), whatWasDone(item, items, actions));
    };
    // A result may list every file of a drive.
    inBatches(result.itemsUpdated, report);
}

/// Calls `look`, which asks about one item; its failure is that item's, and the other items are still looked at.
template <class Look>
void orReportWhyNot(const Item& item, Outcomes& outcomes, Look look)
{
    try {
        look();
    } catch (const ApiException&) {
        const Explanation explanation = explainCurrentException();
        outcomes.failed(localText(item), explanation.text, explanation.code);
    }
}

// An item that is in no list has failed or has been renamed. Syncing it alone shows which.
bool reportUnlisted(Context& context, const Items& items, const CommandResult& result, Outcomes& outcomes)
{
    bool found = false;
    for (const Item& item : items) {
        if (isAmong(item, result.itemsUpdated))
            continue;
        found = true;
        if (items.size() == 1 || !syncTogether(context, {item}).isSuccess)
            orReportWhyNot(item, outcomes, [&] { reportFailed(context, item, outcomes); });
        else
            outcomes.done(localText(item), "in sync");
    }
    return found;
}

void syncBatch(Context& context, const Items& items, Outcomes& outcomes)
{
    try {
        const CommandResult result = syncTogether(context, items);
        reportListed(context, items, result, outcomes);
        if (!result.isSuccess && !reportUnlisted(context, items, result, outcomes))
            outcomes.failedAsAWhole(NotRemembered);
    } catch (const ApiException&) {
        const Explanation explanation = explainCurrentException();
        for (const Item& item : items)
            outcomes.failed(localText(item), explanation.text, explanation.code);
    }
}

constexpr const char* Download = "would come down";

std::string whatWouldBeDone(const Item& item, const std::string& state)
{
    // A side whose folder is missing or cannot be opened is nothing that a sync would copy.
    if (item.relativePath.Empty())
        return "";
    if (state == "changed-here" || (item.isInWorkspace && !item.isOnServer))
        return "would go up";
    if (state == "changed-on-server" || (item.isOnServer && !item.isInWorkspace))
        return Download;
    return state == "changed-on-both" ? "changed on both sides" : "";
}

/// Says of an item whose name the sync application does not accept why it would not be synced; false for all others.
bool reportLeftOut(Context& context, const Item& item, const std::string& state, Outcomes& outcomes)
{
    if (state != "left-out")
        return false;
    const Reasons reasons(context, {item});
    if (item.isInWorkspace == item.isOnServer && !reasons.hasFailed(item))
        return false;
    outcomes.failed(localText(item), whyNotSynced(reasons, item));
    return true;
}

/// Says what a sync of items on one drive would do, as far as their states show it.
void showWhatWouldBeDone(Context& context, const Items& items, const Refusal& drive, Outcomes& outcomes)
{
    const PropertyTexts states(context, items, {"SyncState"});
    for (const Item& item : items) {
        const std::string state = states.of(item, "SyncState");
        const std::string what = whatWouldBeDone(item, state);
        if (drive.isOffline || (drive.refuses() && !what.empty() && what != Download)) {
            outcomes.failed(localText(item), notSynced(drive.reason));
            continue;
        }
        // A folder that is not created on the other side takes everything in it along.
        if (reportLeftOut(context, item, state, outcomes))
            continue;
        if (!what.empty())
            outcomes.done(localText(item), what);
        if (item.isFolder)
            showWhatWouldBeDone(context, contentsOf(context, item), drive, outcomes);
    }
}

void showPlan(const std::vector<PlannedChange>& plan, Outcomes& outcomes)
{
    std::map<std::string, std::string> actions;
    for (const PlannedChange& change : plan)
        actions[change.path] = change.action;
    for (const PlannedChange& change : plan) {
        if (!change.error.empty()) {
            outcomes.failed(change.path, notSynced(change.error));
        } else if (change.action == "kept-twice") {
            const std::string original = originalOf(change.path);
            const std::string side = originOf(actions[original]);
            outcomes.done(change.path, "would be kept twice", explanationOf(original, side),
                {{"of", original}, {"nameKeptBy", side}});
        } else {
            outcomes.done(change.path, change.action == "uploaded"     ? "would go up"
                                       : change.action == "downloaded" ? Download
                                                                       : "would be renamed");
        }
    }
}

void showWhatWouldBeDone(Context& context, const Item& item, const Refusal& drive, Outcomes& outcomes)
{
    const auto plan = drive.isOffline ? std::nullopt : planFor(context, item);
    if (plan)
        showPlan(*plan, outcomes);
    else
        showWhatWouldBeDone(context, Items{item}, drive, outcomes);
}

void showWhatWouldBeDone(Context& context, const Items& items, Outcomes& outcomes)
{
    std::unordered_map<Common::QVUUID, Refusal> drives;
    for (const Item& item : items) {
        const auto [drive, isNew] = drives.try_emplace(item.driveId);
        if (isNew)
            drive->second = refusalOf(context, item.driveId).value_or(Refusal{});
        const Refusal& refusal = drive->second;
        orReportWhyNot(item, outcomes, [&] { showWhatWouldBeDone(context, item, refusal, outcomes); });
    }
}

ExitCode syncMany(Context& context, const SyncOptions& options)
{
    Outcomes outcomes(context);
    if (options.isQuiet)
        outcomes.beQuiet();
    const Items items =
        itemsOrDrives(context, options.paths, [&outcomes](const Lookup& missing) { outcomes.notFound(missing); });
    if (options.dryRun) {
        showWhatWouldBeDone(context, items, outcomes);
        return outcomes.finish();
    }
    Progress progress(context.output, "Syncing", items.size());
    if (!options.isQuiet)
        progress.advanceTo(0);
    inBatches(items, [&](const Batch<Item>& batch) {
        syncBatch(context, batch.things, outcomes);
        if (!options.isQuiet)
            progress.advanceTo(batch.countSoFar);
    });
    if (!outcomes.isJson())
        outcomes.line("Total: " + (outcomes.total().empty() ? "nothing to sync" : outcomes.total()));
    return outcomes.finish();
}

// By the one-shot operations, for hosts that keep no connection.
ExitCode syncOne(Context& context, const std::string& path)
{
    Item item;
    if (!QvNativeTessaportAPI::getItemByWorkspacePath(nullptr, toQVString(ItemPaths(context).of(path)), item)) {
        context.connection().discover();
        throw Failure(
            ExitCode::NotFound, "'" + path + "': no such item on any drive" + ItemPaths(context).hintFor(path));
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

ExitCode sync(Context& context, const SyncOptions& options)
{
    return options.one.empty() ? syncMany(context, options) : syncOne(context, options.one);
}

} // namespace

void addSyncCommand(const CommandLine& line)
{
    auto [command, options] =
        addCommand<SyncOptions>(line, "sync", "Bring both sides up to date; without PATH all drives",
            "tessaport sync\n"
            "tessaport sync PATH PATH       folders with everything in them\n"
            "tessaport sync -n PATH         only show what would be done\n"
            "tessaport sync -q              print nothing but errors\n"
            "tessaport sync --one PATH      one item, by the operation for hosts that keep no connection",
            sync);
    const CommandOption paths = command.addPaths(options.paths);
    const CommandOption dryRun = command.addDryRun(options.dryRun);
    const CommandOption quiet =
        command.addFlag("-q,--quiet", options.isQuiet, "Print nothing but errors").excludes({dryRun});
    command.addOption("--one", options.one, "Sync this one item with a one-shot operation")
        .valueName("PATH")
        .excludes({paths, dryRun, quiet});
}

} // namespace Quorvex::Velmora::Tool
