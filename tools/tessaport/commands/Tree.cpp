#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/commands/Views.h"
#include "tools/tessaport/items/Details.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

QVBuffer<Item> branchesOf(Context& context, const Item& folder, const TreeOptions& options)
{
    return options.foldersOnly ? context.connection().getChildFolders(folder)
                               : context.connection().getFolderContents(folder);
}

bool isDeepEnough(const TreeOptions& options, unsigned depth) { return options.depth != 0 && depth >= options.depth; }

std::string noteOn(const Item& item, const Details& details, const TreeOptions& options)
{
    if (options.isLong)
        return "  (" + (item.isFolder ? "" : details.size(item) + " bytes, ") + modifiedText(item) + ", " +
               details.state(item) + ')';
    const std::string where = whereItStands(item);
    return where == "both" ? "" : "  (" + where + " only)";
}

void draw(Context& context, const Item& folder, const std::string& indent, const TreeOptions& options, unsigned depth)
{
    if (isDeepEnough(options, depth))
        return;
    const auto branches = branchesOf(context, folder, options);
    const Details details(context, branches, options.isLong);
    for (std::uint32_t i = 0; i < branches.GetSize(); ++i) {
        const Item& item = *branches[i];
        const bool last = i + 1 == branches.GetSize();
        context.output.line(std::vector<Span>{
            indent + (last ? "└── " : "├── "), nameCell(item), {noteOn(item, details, options), Colour::Dim}});
        if (item.isFolder)
            draw(context, item, indent + (last ? "    " : "│   "), options, depth + 1);
    }
}

void addWithDepth(JsonList& list, const Item& item, const Details& details, const TreeOptions& options, unsigned depth)
{
    Json json = toJson(item);
    json["depth"] = depth;
    if (options.isLong)
        details.addTo(json, item);
    list.add(json);
}

void listBranches(Context& context, JsonList& list, const Item& folder, const TreeOptions& options, unsigned depth)
{
    if (isDeepEnough(options, depth))
        return;
    const auto branches = branchesOf(context, folder, options);
    const Details details(context, branches, options.isLong);
    for (const Item& item : branches) {
        addWithDepth(list, item, details, options, depth + 1);
        if (item.isFolder)
            listBranches(context, list, item, options, depth + 1);
    }
}

struct Root {
    Item item;
    std::string title;
};

std::vector<Root> rootsFor(Context& context, const TreeOptions& options)
{
    std::vector<Root> roots;
    if (options.path.empty()) {
        for (const Drive& drive : context.connection().getDrives())
            roots.push_back({drive.root, toUtf8(drive.name)});
    } else {
        const Item item = findItem(context, options.path);
        roots.push_back({item, localText(item)});
    }
    return roots;
}

ExitCode tree(Context& context, const TreeOptions& options)
{
    const std::vector<Root> roots = rootsFor(context, options);
    if (!context.options.json) {
        for (const Root& root : roots)
            showTree(context, root.item, root.title, options);
        return ExitCode::Ok;
    }
    JsonList list(context.output);
    for (const Root& root : roots) {
        const Details details(context, std::vector<Item>{root.item}, options.isLong);
        addWithDepth(list, root.item, details, options, 0);
        if (root.item.isFolder)
            listBranches(context, list, root.item, options, 0);
    }
    list.close();
    return ExitCode::Ok;
}

} // namespace

void showTree(Context& context, const Item& root, const std::string& title, const TreeOptions& options)
{
    context.output.line(std::vector<Span>{{title, Colour::Heading}});
    if (root.isFolder)
        draw(context, root, "", options, 0);
}

void addTreeCommand(const CommandLine& line)
{
    auto [command, options] =
        addCommand<TreeOptions>(line, "tree", "Show a folder and everything in it; without PATH all drives",
            "tessaport tree PATH\n"
            "tessaport tree --depth 2          all drives, two levels\n"
            "tessaport tree --json PATH        each item with its depth",
            tree);
    command.add_option("path", options.path, "Folder in a workspace or DRIVE/PATH, with either slash")
        ->type_name("PATH");
    command.add_option("--depth", options.depth, "Show this many levels")
        ->type_name("N")
        ->check(CLI::Range(1U, 1000000U).description(""));
    command.add_flag("-l,--long", options.isLong, "Show size, time and sync state");
    command.add_flag("--folders", options.foldersOnly, "Show folders only");
}

} // namespace Quorvex::Velmora::Tool
