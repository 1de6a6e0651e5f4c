#include "tools/tessaport/items/Conflict.h"

#include <map>
#include <utility>

#include "tools/tessaport/items/PendingItems.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

using ItemsByPath = std::map<std::string, Item>;

ItemsByPath itemsAt(Context& context, const Common::QVUUID& drive, const std::vector<std::string>& relativePaths)
{
    QVBuffer<QVString> paths;
    for (const std::string& path : relativePaths)
        paths.Append(toQVString(path));
    ItemsByPath items;
    for (const Item& item : context.connection().getItemsByRelativePaths(drive, paths))
        items.emplace(toUtf8(item.relativePath), item);
    return items;
}

std::string opposite(const std::string& side) { return side.empty() ? "" : side == "here" ? "server" : "here"; }

Item folderOf(Context& context, const Item& item)
{
    const std::string path = toUtf8(item.relativePath);
    const std::size_t slash = path.rfind('\\');
    if (slash != std::string::npos)
        return itemsAt(context, item.driveId, {path.substr(0, slash)}).begin()->second;
    for (const Drive& drive : context.connection().getDrives()) {
        if (drive.id == item.driveId)
            return drive.root;
    }
    throw Failure(ExitCode::NotFound, "the drive of '" + path + "' is gone; list the drives again");
}

} // namespace

std::vector<Conflict> conflictsIn(Context& context, const Item& top)
{
    std::vector<PendingItem> copies;
    std::vector<std::string> paths;
    for (PendingItem& item : pendingIn(context, top)) {
        if (item.conflictOf.empty())
            continue;
        paths.insert(paths.end(), {item.relativePath, item.conflictOf});
        copies.push_back(std::move(item));
    }
    if (copies.empty())
        return {};
    const ItemsByPath items = itemsAt(context, top.driveId, paths);
    std::vector<Item> all;
    for (const auto& [path, item] : items)
        all.push_back(item);
    const PropertyTexts sizes(context, all, {"Size"});
    const auto versionOf = [&sizes](const Item& item, const std::string& from) {
        return Version{item, toNumber(sizes.of(item, "Size")), from};
    };
    std::vector<Conflict> conflicts;
    for (const PendingItem& copy : copies) {
        const auto ours = items.find(copy.conflictOf);
        const auto other = items.find(copy.relativePath);
        // One of them may have been renamed since.
        if (ours != items.end() && other != items.end())
            conflicts.push_back(
                {versionOf(ours->second, opposite(copy.conflictFrom)), versionOf(other->second, copy.conflictFrom)});
    }
    return conflicts;
}

Siblings::Siblings(Context& context, const Item& item)
{
    const auto contents = context.connection().getFolderContents(folderOf(context, item));
    const std::vector<Item> items(contents.begin(), contents.end());
    const PropertyTexts texts(context, items, {"ConflictOf"}, PropertyTexts::Refusal::Thrown);
    const std::string path = toUtf8(item.relativePath);
    for (const Item& sibling : items) {
        if (texts.of(sibling, "ConflictOf") == path)
            found.push_back(sibling);
    }
    originalPath = texts.of(item, "ConflictOf");
}

std::string Siblings::original() const { return fileName(originalPath); }

} // namespace Quorvex::Velmora::Tool
