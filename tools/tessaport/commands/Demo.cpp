#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/commands/Views.h"
#include "tools/tessaport/home/DemoDrives.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

void showAsJson(Context& context, const Home& home)
{
    const std::string version = toUtf8(context.connection().getVersion());
    context.output.line(toLine({{"home", toText(home.folder())}, {"tessaport", version},
        {"drives", context.connection().getDrives().GetSize()}}));
}

std::string examplePath(Context& context)
{
    for (const auto& drive : context.connection().getDrives()) {
        for (const auto& item : context.connection().getFolderContents(drive.root)) {
            if (!item.isFolder)
                return localText(item);
        }
    }
    return "PATH";
}

void show(Context& context, const Home& home)
{
    context.output.line("Home: " + toText(home.folder()));
    context.output.line("Tessaport " + toUtf8(context.connection().getVersion()));
    context.output.line("");
    showDrives(context);
    for (const auto& drive : context.connection().getDrives()) {
        context.output.line("");
        showTree(context, drive.root, toUtf8(drive.name), {});
    }
    context.output.line("");
    context.output.line("To go on, for example:");
    context.output.line("  " + context.commandFor(home) + " sync");
    context.output.line("  " + context.commandFor(home) + " where " + Platform::quoted(examplePath(context)));
}

ExitCode demo(Context& context)
{
    const Home home = Home::locate();
    makeDemoHome(home);
    if (context.options.json)
        showAsJson(context, home);
    else
        show(context, home);
    return ExitCode::Ok;
}

} // namespace

void addDemoCommand(const CommandLine& line)
{
    addCommand(line, "demo", "Make a home with four drives and real files, and show it",
        "tessaport demo\n"
        "tessaport --home /tmp/try demo       in a new folder",
        demo);
}

} // namespace Quorvex::Velmora::Tool
