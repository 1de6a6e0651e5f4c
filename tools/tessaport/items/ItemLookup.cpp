#include "tools/tessaport/items/ItemLookup.h"

#include <algorithm>
#include <map>
#include <utility>

#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

using Lookups = std::vector<Lookup*>;

void askForPaths(Context& context, const Lookups& lookups)
{
    if (lookups.empty())
        return;
    QVBuffer<QVString> paths;
    for (const Lookup* lookup : lookups)
        paths.Append(toQVString(lookup->path));
    const auto results = context.connection().getItemsByWorkspacePaths(paths);
    for (std::uint32_t i = 0; i < results.GetSize() && i < lookups.size(); ++i) {
        const WorkspacePathToItemResult& result = *results[i];
        lookups[i]->offline = result.result == Result::Offline;
        if (result.result == Result::Success)
            lookups[i]->item = result.item;
    }
}

Lookups withoutItem(std::vector<Lookup>& all, bool offline)
{
    Lookups missing;
    for (Lookup& lookup : all) {
        if (!lookup.item && lookup.offline == offline)
            missing.push_back(&lookup);
    }
    return missing;
}

// The service knows a workspace that was reached through a link by its real path.
void askAgainWithoutLinks(Context& context, std::vector<Lookup>& all)
{
    Lookups changed;
    for (Lookup* lookup : withoutItem(all, false)) {
        std::string real = withoutLinks(lookup->path);
        if (real == lookup->path)
            continue;
        lookup->path = std::move(real);
        changed.push_back(lookup);
    }
    askForPaths(context, changed);
}

std::optional<std::string> relativeTo(const Drive& drive, const std::string& path)
{
    const std::string root = toUtf8(drive.root.workspacePath);
    const std::string full = withBackslashes(path);
    if (full == root)
        return "";
    if (full.size() > root.size() && full.compare(0, root.size(), root) == 0 && full[root.size()] == '\\')
        return full.substr(root.size() + 1);
    return std::nullopt;
}

void askDrive(Context& context, const Drive& drive, const Lookups& lookups)
{
    std::map<std::string, std::vector<Lookup*>> byRelativePath;
    QVBuffer<QVString> relativePaths;
    for (Lookup* lookup : lookups) {
        const auto relative = relativeTo(drive, lookup->path);
        if (!relative)
            continue;
        byRelativePath[*relative].push_back(lookup);
        relativePaths.Append(toQVString(*relative));
    }
    if (byRelativePath.empty())
        return;
    for (const Item& item : context.connection().getItemsByRelativePaths(drive.id, relativePaths)) {
        for (Lookup* lookup : byRelativePath[toUtf8(item.relativePath)])
            lookup->item = item;
    }
}

// An offline drive finds no items by path. By relative path it finds those that it knew last.
void askOfflineDrives(Context& context, std::vector<Lookup>& all)
{
    const Lookups offline = withoutItem(all, true);
    if (offline.empty())
        return;
    for (const Drive& drive : context.connection().getDrives())
        askDrive(context, drive, offline);
}

} // namespace

std::vector<Lookup> findItems(Context& context, const std::vector<std::string>& paths)
{
    std::vector<Lookup> all;
    ItemPaths localPaths(context);
    for (const std::string& path : paths)
        all.push_back({path, localPaths.of(path), std::nullopt, false, ""});
    askForPaths(context, withoutItem(all, false));
    askAgainWithoutLinks(context, all);
    askOfflineDrives(context, all);
    for (Lookup* lookup : withoutItem(all, false))
        lookup->hint = localPaths.hintFor(lookup->given);
    return all;
}

std::vector<Lookup> findItemsOr(
    Context& context, const std::vector<std::string>& paths, const std::function<void(const Lookup&)>& reportMissing)
{
    std::vector<Lookup> found;
    for (Lookup& lookup : findItems(context, paths)) {
        if (lookup.item)
            found.push_back(std::move(lookup));
        else
            reportMissing(lookup);
    }
    return found;
}

std::vector<Item> itemsOrDrives(
    Context& context, const std::vector<std::string>& paths, const std::function<void(const Lookup&)>& reportMissing)
{
    std::vector<Item> items;
    if (paths.empty()) {
        for (const Drive& drive : context.connection().getDrives())
            items.push_back(drive.root);
        return items;
    }
    for (const Lookup& lookup : findItemsOr(context, paths, reportMissing))
        items.push_back(*lookup.item);
    return items;
}

Item findItem(Context& context, const std::string& path)
{
    const Lookup lookup = findItems(context, {path}).front();
    if (!lookup.item)
        throw notFound(lookup);
    return *lookup.item;
}

Item findFolder(Context& context, const std::string& path)
{
    Item item = findItem(context, path);
    if (!item.isFolder)
        throw Failure(ExitCode::Failure, "'" + path + "' is a file, not a folder");
    return item;
}

std::string whyNotFound(const Lookup& lookup)
{
    return lookup.offline ? "not known, and its drive is offline" : "no such item on any drive" + lookup.hint;
}

Failure notFound(const Lookup& lookup)
{
    return {ExitCode::NotFound, "'" + lookup.given + "': " + whyNotFound(lookup)};
}

std::string whyNot(Result result)
{
    return result == Result::Offline
               ? "its drive is offline"
               : "the sync application does not know it (result " + std::to_string(static_cast<int>(result)) + ")";
}

ExitCode codeFor(Result result)
{
    if (result == Result::Success)
        return ExitCode::Ok;
    return result == Result::Offline ? ExitCode::Failure : ExitCode::NotFound;
}

bool isSame(const Item& a, const Item& b) { return a.driveId == b.driveId && a.relativePath == b.relativePath; }

bool isAmong(const Item& item, const QVBuffer<Item>& items)
{
    return std::any_of(items.begin(), items.end(), [&item](const Item& other) { return isSame(item, other); });
}

} // namespace Quorvex::Velmora::Tool
