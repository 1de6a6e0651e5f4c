#include <functional>
#include <memory>
#include <vector>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Details.h"
#include "tools/tessaport/items/FolderReader.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"
#include "tools/tessaport/text/Wildcard.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct ListOptions {
    std::string path;
    std::string filter;
    bool recursive = false;
    bool foldersOnly = false;
    bool namesOnly = false;
    bool isLong = false;
};

/// Shows items one after the other.
class Listing
{
public:
    Listing(Context& commandContext, const ListOptions& listOptions) : context(commandContext), options(listOptions)
    {
        if (context.options.json)
            json = std::make_unique<JsonList>(context.output);
    }

    /// From now on, shows paths of this drive with its name, as commands take them.
    void startDrive(const std::string& name) { drive = name; }

    template <class Items>
    void add(const Items& items, const std::function<void(const Item&)>& afterEach)
    {
        const Details details(context, items, options.isLong);
        for (const Item& item : items) {
            add(item, details);
            afterEach(item);
        }
    }

    void finish()
    {
        if (json != nullptr)
            json->close();
        table.print(context.output);
    }

private:
    void add(const Item& item, const Details& details)
    {
        if (!options.filter.empty() && !matchesWildcard(options.filter, toUtf8(item.name)))
            return;
        if (json != nullptr)
            addJson(item, details);
        else if (options.namesOnly)
            context.output.line(shownName(item));
        else if (options.isLong)
            table.row({details.size(item), modifiedText(item), details.state(item), cellFor(item)});
        else
            table.row({modifiedText(item), whereItStands(item), cellFor(item)});
    }

    void addJson(const Item& item, const Details& details)
    {
        Json element = toJson(item);
        if (options.isLong)
            details.addTo(element, item);
        json->add(element);
    }

    // In a recursive listing, only the path tells two items with the same name apart.
    [[nodiscard]] std::string shownName(const Item& item) const
    {
        if (!options.recursive)
            return toUtf8(item.name);
        const std::string path = localText(item.relativePath);
        return path.empty() || drive.empty() ? drive + path : drive + '/' + path;
    }

    [[nodiscard]] Cell cellFor(const Item& item) const
    {
        return item.isFolder ? Cell(shownName(item) + '/', Colour::Folder) : Cell(shownName(item));
    }

    Context& context;
    const ListOptions& options;
    std::unique_ptr<JsonList> json;
    Table table;
    std::string drive;
};

template <class Items>
void listContents(const Items& contents, FolderReader& folders, const ListOptions& options, Listing& listing)
{
    listing.add(contents, [&](const Item& item) {
        if (options.recursive && item.isFolder)
            listContents(folders.tryRead(item), folders, options, listing);
    });
}

ExitCode list(Context& context, const ListOptions& options)
{
    FolderReader folders(context, options.foldersOnly);
    if (options.path.empty()) {
        const auto drives = context.connection().getDrives();
        Listing listing(context, options);
        for (const Drive& drive : drives) {
            listing.startDrive(toUtf8(drive.name));
            listContents(std::vector<Item>{drive.root}, folders, options, listing);
        }
        listing.finish();
        return folders.result();
    }
    const Item item = findItem(context, options.path);
    Listing listing(context, options);
    if (item.isFolder)
        listContents(folders.read(item), folders, options, listing);
    else
        listing.add(std::vector<Item>{item}, [](const Item&) {});
    listing.finish();
    return folders.result();
}

} // namespace

void addListCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<ListOptions>(line, "ls", "List a folder; without PATH the roots of the drives",
        "tessaport ls PATH\n"
        "tessaport ls -R --filter '*.dwg' PATH   files of one kind, at any depth\n"
        "tessaport ls --json PATH",
        list);
    command.addPath(options.path, "Folder or file in a workspace or DRIVE/PATH, with either slash");
    command.addFlag("-l,--long", options.isLong, "Show size in bytes, time and sync state");
    command.addFlag("-R,--recursive", options.recursive, "Also list what is in the folders, at any depth");
    command.addFlag("--folders", options.foldersOnly, "List folders only");
    command.addFlag("-1,--names", options.namesOnly, "Print the names only, one a line");
    command.addOption("--filter", options.filter, "Show only names that match; * and ? match any characters")
        .valueName("PATTERN");
}

} // namespace Quorvex::Velmora::Tool
