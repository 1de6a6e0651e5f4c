#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/commands/Views.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

ExitCode listDrives(Context& context)
{
    showDrives(context);
    return ExitCode::Ok;
}

void printDrivesAsJson(Context& context)
{
    JsonList list(context.output);
    for (const auto& drive : context.connection().getDrives())
        list.add(toJson(drive));
    list.close();
}

} // namespace

void showDrives(Context& context)
{
    if (context.options.json)
        return printDrivesAsJson(context);
    Table table({"NAME", "TYPE", "LOCKS", "WORKSPACE"});
    for (const auto& drive : context.connection().getDrives())
        table.row({toUtf8(drive.name), toUtf8(drive.driveType), drive.locking ? "yes" : "no",
            localText(drive.workspaceLocation)});
    table.print(context.output);
}

void addDrivesCommand(const CommandLine& line)
{
    addCommand(line, "drives", "List the drives",
        "tessaport drives\n"
        "tessaport drives --json",
        listDrives);
}

} // namespace Quorvex::Velmora::Tool
