#include <algorithm>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
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
    table.row({{"Where", Colour::Heading}, whereItStands(item)});
    table.row({{"Modified", Colour::Heading}, modifiedText(item)});
    table.row({{"Drive", Colour::Heading}, toUtf8(item.driveId)});
    table.row({{"Relative path", Colour::Heading}, localText(item.relativePath)});
    table.row({{"Local path", Colour::Heading}, localText(item)});
    table.print(context.output);
}

/// Prints items one after the other, with an empty line between them.
class Printer
{
public:
    Printer(Context& commandContext, Outcomes& commandOutcomes) : context(commandContext), outcomes(commandOutcomes) {}

    void print(const Item& item)
    {
        if (outcomes.isJson())
            return outcomes.add(toJson(item));
        if (!isFirst)
            outcomes.line("");
        isFirst = false;
        printAsText(context, item);
    }

private:
    Context& context;
    Outcomes& outcomes;
    bool isFirst = true;
};

std::string normalisedRelative(const std::string& relative)
{
    std::string text = withBackslashes(relative);
    text.erase(0, text.find_first_not_of('\\') == std::string::npos ? text.size() : text.find_first_not_of('\\'));
    while (!text.empty() && text.back() == '\\')
        text.pop_back();
    return text;
}

// The request answers with the items that exist only; comparing tells which do not.
ExitCode statOnDrive(Context& context, const StatOptions& options)
{
    const Drive drive = findDrive(context, options.drive);
    QVBuffer<QVString> relativePaths;
    std::vector<std::string> wanted;
    for (const std::string& path : options.paths) {
        wanted.push_back(normalisedRelative(path));
        relativePaths.Append(toQVString(wanted.back()));
    }
    const auto found = context.connection().getItemsByRelativePaths(drive.id, relativePaths);
    Outcomes outcomes(context);
    Printer printer(context, outcomes);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto item = std::find_if(found.begin(), found.end(),
            [&](const Item& candidate) { return asciiLower(toUtf8(candidate.relativePath)) == asciiLower(wanted[i]); });
        if (item != found.end())
            printer.print(*item);
        else
            outcomes.failed(
                options.paths[i], "no such item on the drive '" + toUtf8(drive.name) + "'", ExitCode::NotFound);
    }
    return outcomes.finish();
}

ExitCode statPaths(Context& context, const StatOptions& options)
{
    const std::vector<Lookup> lookups = findItems(context, options.paths);
    Outcomes outcomes(context);
    Printer printer(context, outcomes);
    for (const Lookup& lookup : lookups) {
        if (lookup.item)
            printer.print(*lookup.item);
        else
            outcomes.notFound(lookup);
    }
    return outcomes.finish();
}

ExitCode showFields(Context& context, const StatOptions& options)
{
    return options.drive.empty() ? statPaths(context, options) : statOnDrive(context, options);
}

} // namespace

void addStatCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<StatOptions>(line, "stat", "Show all fields of items",
        "tessaport stat PATH\n"
        "tessaport stat --json PATH PATH\n"
        "tessaport stat --drive 'Harbour Project' plans/a.txt   relative to a drive",
        showFields);
    command.addPaths(options.paths, "Files or folders in a workspace or DRIVE/PATH, with either slash").required();
    command.addOption("--drive", options.drive, "The paths are relative to this drive (name or identifier)")
        .valueName("DRIVE");
}

} // namespace Quorvex::Velmora::Tool
