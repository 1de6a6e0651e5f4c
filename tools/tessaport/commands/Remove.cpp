#include <memory>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct RemoveOptions {
    std::vector<std::string> paths;
    bool yes = false;
    bool dryRun = false;
};

bool userAgrees(Context& context, const std::vector<Lookup>& items)
{
    constexpr std::size_t listedAtMost = 20;
    for (std::size_t i = 0; i < items.size() && i < listedAtMost; ++i)
        context.output.rawMessage("  " + printable(localPath(*items[i].item)) + (items[i].item->isFolder ? "/" : ""));
    if (items.size() > listedAtMost)
        context.output.rawMessage("  and " + std::to_string(items.size() - listedAtMost) + " more");
    context.output.rawMessage(
        "Delete " + counted(items.size(), "item") + " with all that is beneath, here and on the server? [y/N]");
    const std::string answer = asciiLower(Platform::readInputLine().value_or(""));
    return answer == "y" || answer == "yes";
}

std::string whyNotDeleted(const Item& item, bool offline)
{
    if (item.relativePath.Empty())
        return "the root of a drive cannot be deleted";
    if (offline)
        return "its drive is offline";
    return item.isFolder ? "not deleted: it holds a locked or open file, or the drive is read-only"
                         : "not deleted: it is locked or open, or the drive is read-only";
}

void removeItems(Context& context, const std::vector<Lookup>& lookups, Outcomes& outcomes)
{
    QVBuffer<Item> items;
    for (const Lookup& lookup : lookups)
        items.Append(*lookup.item);
    const CommandResult result = context.connection().deleteFilesOrFolders(items);
    bool allDone = true;
    for (const Lookup& lookup : lookups) {
        if (isAmong(*lookup.item, result.itemsDeleted)) {
            outcomes.done(lookup.given, "deleted");
        } else {
            allDone = false;
            outcomes.failed(lookup.given, whyNotDeleted(*lookup.item, lookup.offline));
        }
    }
    if (allDone && !result.isSuccess)
        outcomes.failedAsAWhole(NotRemembered);
}

ExitCode remove(Context& context, const RemoveOptions& options)
{
    const bool mustAsk = !options.yes && !options.dryRun;
    if (mustAsk && !Platform::isTerminal(Platform::Stream::Input))
        throw Failure(ExitCode::Usage, "nobody can be asked, as input is no terminal; add -y to delete without asking");
    Outcomes outcomes(context);
    const std::vector<Lookup> items =
        findItemsOr(context, options.paths, [&outcomes](const Lookup& missing) { outcomes.notFound(missing); });
    if (items.empty())
        return outcomes.finish();
    if (options.dryRun) {
        for (const Lookup& lookup : items)
            outcomes.done(lookup.given, "would be deleted");
        return outcomes.finish();
    }
    if (mustAsk && !userAgrees(context, items)) {
        for (const Lookup& lookup : items)
            outcomes.failed(lookup.given, "kept, as you wished");
        return outcomes.finish();
    }
    removeItems(context, items, outcomes);
    return outcomes.finish();
}

} // namespace

void addRemoveCommand(const CommandLine& line)
{
    const auto options = std::make_shared<RemoveOptions>();
    CLI::App& command = addCommand(line, "rm", "Delete items here and on the server, folders with all that is beneath",
        "tessaport rm PATH PATH          asks first\n"
        "tessaport rm -n PATH            only says what would be done\n"
        "tessaport rm -y PATH            does not ask",
        [options](Context& context) { return remove(context, *options); });
    command.add_option("path", options->paths, "Files or folders in a workspace")->type_name("PATH")->required();
    command.add_flag("-y,--yes", options->yes, "Do not ask");
    command.add_flag("-n,--dry-run", options->dryRun, "Only say what would be done");
}

} // namespace Quorvex::Velmora::Tool
