#include <functional>
#include <memory>
#include <vector>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Details.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/output/Items.h"
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
        return options.recursive ? localText(item.relativePath) : toUtf8(item.name);
    }

    [[nodiscard]] Cell cellFor(const Item& item) const
    {
        return item.isFolder ? Cell(shownName(item) + '/', Colour::Folder) : Cell(shownName(item));
    }

    Context& context;
    const ListOptions& options;
    std::unique_ptr<JsonList> json;
    Table table;
};

QVBuffer<Item> contentsOf(Context& context, const Item& folder, bool foldersOnly)
{
    return foldersOnly ? context.connection().getChildFolders(folder) : context.connection().getFolderContents(folder);
}

void listFolder(Context& context, const Item& folder, const ListOptions& options, Listing& listing)
{
    listing.add(contentsOf(context, folder, options.foldersOnly), [&](const Item& item) {
        if (options.recursive && item.isFolder)
            listFolder(context, item, options, listing);
    });
}

ExitCode list(Context& context, const ListOptions& options)
{
    if (options.path.empty()) {
        const auto drives = context.connection().getDrives();
        Listing listing(context, options);
        std::vector<Item> roots;
        for (const Drive& drive : drives)
            roots.push_back(drive.root);
        listing.add(roots, [&](const Item& root) {
            if (options.recursive)
                listFolder(context, root, options, listing);
        });
        listing.finish();
        return ExitCode::Ok;
    }
    const Item item = findItem(context, options.path);
    Listing listing(context, options);
    if (item.isFolder)
        listFolder(context, item, options, listing);
    else
        listing.add(std::vector<Item>{item}, [](const Item&) {});
    listing.finish();
    return ExitCode::Ok;
}

} // namespace

void addListCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<ListOptions>(line, "ls", "List a folder; without PATH the roots of the drives",
        "tessaport ls PATH\n"
        "tessaport ls -R --filter '*.dwg' PATH   files of one kind, at any depth\n"
        "tessaport ls --json PATH",
        list);
    command.add_option("path", options.path, "Folder or file in a workspace or DRIVE/PATH, with either slash")
        ->type_name("PATH");
    command.add_flag("-l,--long", options.isLong, "Show size in bytes, time and sync state");
    command.add_flag("-R,--recursive", options.recursive, "Also list what is in the folders, at any depth");
    command.add_flag("--folders", options.foldersOnly, "List folders only");
    command.add_flag("-1,--names", options.namesOnly, "Print the names only, one a line");
    command.add_option("--filter", options.filter, "Show only names that match; * and ? match any characters")
        ->type_name("PATTERN");
}

} // namespace Quorvex::Velmora::Tool
