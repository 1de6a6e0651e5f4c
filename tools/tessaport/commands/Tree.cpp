#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/commands/Views.h"
#include "tools/tessaport/items/Details.h"
#include "tools/tessaport/items/FolderReader.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

std::string noteOn(const Item& item, const Details& details, const TreeOptions& options)
{
    if (options.isLong)
        return "  (" + (item.isFolder ? "" : details.size(item) + " bytes, ") + modifiedText(item) + ", " +
               details.state(item) + ')';
    const std::string where = whereItStands(item);
    return where == "both" ? "" : "  (" + where + " only)";
}

void addWithDepth(JsonList& list, const Item& item, const Details& details, const TreeOptions& options, unsigned depth)
{
    Json json = toJson(item);
    json["depth"] = depth;
    if (options.isLong)
        details.addTo(json, item);
    list.add(json);
}

/// Shows folders with everything in them, as far down as the options say.
class Tree
{
public:
    Tree(Context& commandContext, const TreeOptions& treeOptions)
        : context(commandContext), options(treeOptions), folders(commandContext, treeOptions.foldersOnly)
    {
    }

    void draw(const Item& folder, const std::string& indent = "", unsigned depth = 0)
    {
        const QVBuffer<Item> branches = branchesOf(folder, depth);
        const Details details(context, branches, options.isLong);
        for (std::uint32_t i = 0; i < branches.GetSize(); ++i) {
            const Item& item = *branches[i];
            const bool last = i + 1 == branches.GetSize();
            context.output.line(std::vector<Span>{
                indent + (last ? "└── " : "├── "), nameCell(item), {noteOn(item, details, options), Colour::Dim}});
            draw(item, indent + (last ? "    " : "│   "), depth + 1);
        }
    }

    void addTo(JsonList& list, const Item& folder, unsigned depth = 0)
    {
        const QVBuffer<Item> branches = branchesOf(folder, depth);
        const Details details(context, branches, options.isLong);
        for (const Item& item : branches) {
            addWithDepth(list, item, details, options, depth + 1);
            addTo(list, item, depth + 1);
        }
    }

    /// Whether every folder could be read.
    [[nodiscard]] ExitCode result() const { return folders.result(); }

private:
    QVBuffer<Item> branchesOf(const Item& item, unsigned depth)
    {
        const bool isDeepEnough = options.depth != 0 && depth >= options.depth;
        return item.isFolder && !isDeepEnough ? folders.tryRead(item) : QVBuffer<Item>();
    }

    Context& context;
    const TreeOptions& options;
    FolderReader folders;
};

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

ExitCode showAsJson(Context& context, const std::vector<Root>& roots, const TreeOptions& options)
{
    Tree tree(context, options);
    JsonList list(context.output);
    for (const Root& root : roots) {
        const Details details(context, std::vector<Item>{root.item}, options.isLong);
        addWithDepth(list, root.item, details, options, 0);
        tree.addTo(list, root.item);
    }
    list.close();
    return tree.result();
}

ExitCode tree(Context& context, const TreeOptions& options)
{
    const std::vector<Root> roots = rootsFor(context, options);
    if (context.options.json)
        return showAsJson(context, roots, options);
    ExitCode code = ExitCode::Ok;
    for (const Root& root : roots)
        combine(code, showTree(context, root.item, root.title, options));
    return code;
}

} // namespace

ExitCode showTree(Context& context, const Item& root, const std::string& title, const TreeOptions& options)
{
    context.output.line(std::vector<Span>{{title, Colour::Heading}});
    Tree tree(context, options);
    tree.draw(root);
    return tree.result();
}

void addTreeCommand(const CommandLine& line)
{
    auto [command, options] =
        addCommand<TreeOptions>(line, "tree", "Show a folder and everything in it; without PATH all drives",
            "tessaport tree PATH\n"
            "tessaport tree --depth 2          all drives, two levels\n"
            "tessaport tree --json PATH        each item with its depth",
            tree);
    command.addPath(options.path, "Folder in a workspace or DRIVE/PATH, with either slash");
    command.addOption("--depth", options.depth, "Show this many levels").valueName("N").from1To(1000000);
    command.addFlag("-l,--long", options.isLong, "Show size, time and sync state");
    command.addFlag("--folders", options.foldersOnly, "Show folders only");
}

} // namespace Quorvex::Velmora::Tool
