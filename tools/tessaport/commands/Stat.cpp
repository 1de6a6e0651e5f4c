#include <algorithm>
#include <memory>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct StatOptions {
    std::vector<std::string> paths;
    std::string drive;
};

void printAsText(Context& context, const Item& item)
{
    Table table;
    table.row({{"Name", Colour::Heading}, nameCell(item)});
    table.row({{"Kind", Colour::Heading}, item.isFolder ? "folder" : "file"});
    table.row({{"Stands", Colour::Heading}, whereItStands(item)});
    table.row({{"Modified", Colour::Heading}, modifiedText(item)});
    table.row({{"Drive", Colour::Heading}, utf8(item.driveId)});
    table.row({{"Relative path", Colour::Heading}, Platform::nativeSlashes(utf8(item.relativePath))});
    table.row({{"Local path", Colour::Heading}, localPath(item)});
    table.print(context.output);
}

void print(Context& context, const std::vector<Item>& items)
{
    if (context.options.json) {
        JsonList list(context.output);
        for (const Item& item : items)
            list.add(toJson(item));
        return list.close();
    }
    for (const Item& item : items) {
        if (&item != &items.front())
            context.output.line("");
        printAsText(context, item);
    }
}

std::string normalisedRelative(const std::string& relative)
{
    std::string text = withBackslashes(relative);
    text.erase(0, text.find_first_not_of('\\') == std::string::npos ? text.size() : text.find_first_not_of('\\'));
    while (!text.empty() && text.back() == '\\')
        text.pop_back();
    return text;
}

// The request answers with the items that exist, so those that do not are found by comparing.
ExitCode statOnDrive(Context& context, const StatOptions& options)
{
    const Drive drive = findDrive(context, options.drive);
    QVBuffer<QVString> relativePaths;
    std::vector<std::string> wanted;
    for (const std::string& path : options.paths) {
        wanted.push_back(normalisedRelative(path));
        relativePaths.Append(libraryText(wanted.back()));
    }
    std::vector<Item> found;
    for (const Item& item : context.connection().getItemsByRelativePaths(drive.id, relativePaths))
        found.push_back(item);
    ExitCode worst = ExitCode::Ok;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const bool exists = std::any_of(found.begin(), found.end(),
            [&wanted, i](const Item& item) { return asciiLower(utf8(item.relativePath)) == asciiLower(wanted[i]); });
        if (exists)
            continue;
        context.output.message("'" + options.paths[i] + "': no such item on the drive '" + utf8(drive.name) + "'");
        combine(worst, ExitCode::NotFound);
    }
    print(context, found);
    return worst;
}

ExitCode statPaths(Context& context, const StatOptions& options)
{
    ExitCode worst = ExitCode::Ok;
    std::vector<Item> found;
    for (const Lookup& lookup : findItemsOrReport(context, options.paths, worst))
        found.push_back(*lookup.item);
    print(context, found);
    return worst;
}

} // namespace

void addStatCommand(const CommandLine& line)
{
    const auto options = std::make_shared<StatOptions>();
    CLI::App& command = addCommand(line, "stat", "Show everything known about items",
        "tessaport stat PATH\n"
        "tessaport stat --json PATH PATH\n"
        "tessaport stat --drive 'Harbour Project' plans/a.txt   relative to a drive",
        [options](Context& context) {
            return options->drive.empty() ? statPaths(context, *options) : statOnDrive(context, *options);
        });
    command.add_option("path", options->paths, "Files or folders in a workspace, with either slash")
        ->type_name("PATH")
        ->required();
    command.add_option("--drive", options->drive, "The paths are relative to this drive (name or identifier)")
        ->type_name("NAME");
}

} // namespace Quorvex::Velmora::Tool
