#include "tools/tessaport/items/PendingItems.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include <velmora/api/Exceptions.h>
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

using Pending = std::vector<PendingItem>;

constexpr PendingKind Kinds[] = {
    {"failed", 'F', "failed"},
    {"only-here", 'A', "only here"},
    {"only-on-server", 'N', "only on the server"},
    {"changed-here", 'M', "changed here"},
    {"changed-on-server", 'S', "changed on the server"},
    {"changed-on-both", 'B', "changed on both sides"},
    {"left-out", 'X', "left out"},
    {"offline", 'O', "offline"},
    {"conflict", 'C', "conflict copy"},
    {"locked", 'L', "locked"},
};

const PendingKind* findKind(std::string_view word)
{
    const auto* const found =
        std::find_if(std::begin(Kinds), std::end(Kinds), [word](const PendingKind& kind) { return word == kind.word; });
    return found == std::end(Kinds) ? nullptr : found;
}

PendingItem fromItem(const Item& item)
{
    PendingItem pending;
    pending.drive = item.driveId;
    pending.relativePath = toUtf8(item.relativePath);
    pending.workspacePath = toUtf8(item.workspacePath);
    pending.isFolder = item.isFolder;
    return pending;
}

Pending fromList(const Item& top, const std::string& list)
{
    Pending all;
    for (const Json& element : parseJson(list)) {
        PendingItem item;
        item.drive = top.driveId;
        item.relativePath = element.value("path", "");
        item.workspacePath = workspacePathIn(top, item.relativePath);
        item.isFolder = element.value("folder", false);
        item.state = element.value("state", "");
        item.error = element.value("error", "");
        item.lockedBy = element.value("lockedBy", "");
        item.conflictOf = element.value("conflictOf", "");
        item.conflictFrom = element.value("conflictFrom", "");
        all.push_back(std::move(item));
    }
    return all;
}

/// Whether a drive defines a property.
bool defines(Context& context, const Common::QVUUID& drive, const char* property)
{
    const auto definitions = context.connection().getPropertyDefinitions(drive);
    return std::any_of(definitions.begin(), definitions.end(),
        [property](const PropertyDefinition& definition) { return toUtf8(definition.id) == property; });
}

std::string stateWithoutProperties(const Item& item)
{
    return item.isInWorkspace == item.isOnServer ? "in-sync" : item.isInWorkspace ? "only-here" : "only-on-server";
}

/// For sync applications that cannot list it at once: looks at each item with the properties that there are.
class Walk
{
public:
    Walk(Context& commandContext, const Item& top)
        : context(commandContext), hasStates(defines(commandContext, top.driveId, "SyncState"))
    {
        lookAt({top});
    }

    Pending found;

private:
    void lookAt(const std::vector<Item>& items)
    {
        const PropertyTexts texts(context, hasStates ? items : std::vector<Item>{}, {"SyncState", "SyncError"},
            PropertyTexts::Refusal::Thrown);
        for (const Item& item : items) {
            PendingItem pending = fromItem(item);
            pending.state = hasStates ? texts.of(item, "SyncState") : stateWithoutProperties(item);
            pending.error = texts.of(item, "SyncError");
            if (!pending.error.empty() || (!pending.state.empty() && pending.state != "in-sync"))
                found.push_back(pending);
            if (!item.isFolder)
                continue;
            const auto contents = context.connection().getFolderContents(item);
            lookAt({contents.begin(), contents.end()});
        }
    }

    Context& context;
    bool hasStates;
};

/// What a sync application that lists it at once says; empty if it does not.
std::string listOf(Context& context, const Item& top, const char* property)
{
    try {
        return PropertyTexts(context, {top}, {property}, PropertyTexts::Refusal::Thrown).of(top, property);
    } catch (const ApiException&) {
        if (defines(context, top.driveId, "SyncState"))
            throw;
        return "";
    }
}

/// How an item of an offline drive is listed; nothing on other drives.
std::optional<PendingItem> onOfflineDrive(Context& context, const Item& top)
{
    const auto drive = refusalOf(context, top.driveId);
    if (!drive || !drive->isOffline)
        return std::nullopt;
    PendingItem offline = fromItem(top);
    offline.state = "offline";
    offline.error = drive->reason;
    return offline;
}

} // namespace

std::string textOfState(const std::string& word)
{
    const PendingKind* const kind = findKind(word);
    return kind != nullptr ? kind->text : word == "in-sync" ? "in sync" : word;
}

const PendingKind& PendingItem::kind() const
{
    const bool saysWhy = !error.empty() && state != "left-out" && state != "offline";
    const PendingKind* const ofState = saysWhy ? nullptr : findKind(state);
    if (ofState != nullptr && ((state != "locked" && state != "left-out") || conflictOf.empty()))
        return *ofState;
    return *findKind(conflictOf.empty() || saysWhy ? "failed" : "conflict");
}

bool PendingItem::isPending() const { return kind().letter != 'L'; }

std::string workspacePathIn(const Item& sameDrive, const std::string& relativePath)
{
    const std::string path = toUtf8(sameDrive.workspacePath);
    std::string root = path.substr(0, path.size() - toUtf8(sameDrive.relativePath).size());
    if (!root.empty() && root.back() != '\\' && !relativePath.empty())
        root += '\\';
    return root + relativePath;
}

Pending pendingIn(Context& context, const Item& top)
{
    if (const auto offline = onOfflineDrive(context, top))
        return {*offline};
    const std::string list = listOf(context, top, "Pending");
    return list.empty() ? Walk(context, top).found : fromList(top, list);
}

Pending leftOutIn(Context& context, const Item& top)
{
    if (const auto offline = onOfflineDrive(context, top))
        return {*offline};
    const std::string list = listOf(context, top, "LeftOut");
    return list.empty() ? Pending{} : fromList(top, list);
}

} // namespace Quorvex::Velmora::Tool
