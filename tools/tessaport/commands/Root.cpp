#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct RootOptions {
    std::string driveType = "Quorvex.DataSourceType.Drive";
    bool firstDrive = false;
};

// The rule is for people who try the command; scripts that read the path are not disturbed by it.
void print(Context& context, const Item& item, const std::string& rule)
{
    if (context.options.json) {
        Json json = toJson(item);
        json["rule"] = rule;
        context.output.line(toLine(json));
        return;
    }
    context.output.line(localText(item));
    if (Platform::isTerminal(Platform::Stream::Error))
        context.output.note("(" + rule + ")");
}

ExitCode showFirstRoot(Context& context)
{
    Item item;
    if (QvNativeTessaportAPI::getRootFolderItem(nullptr, item) != QVCode::Success)
        return context.reportStaticFailure("there is no answer");
    if (item.workspacePath.Empty())
        throw Failure(ExitCode::NotFound, "there are no drives");
    print(context, item, "the root of the first drive");
    return ExitCode::Ok;
}

ExitCode showWritableFolder(Context& context, const std::string& driveType)
{
    Item item;
    QVString path;
    if (QvNativeTessaportAPI::getRootFolderLocalPath(nullptr, toQVString(driveType), path, item) == QVCode::Success) {
        print(context, item, "the first folder at the top of a drive of type '" + driveType + "' that takes new files");
        return ExitCode::Ok;
    }
    if (!context.lastLoggedError().empty())
        return context.reportStaticFailure("type '" + driveType + "'");
    throw Failure(ExitCode::NotFound, "no folder at the top of a drive of type '" + driveType + "' takes new files");
}

ExitCode showRoot(Context& context, const RootOptions& options)
{
    return options.firstDrive ? showFirstRoot(context) : showWritableFolder(context, options.driveType);
}

} // namespace

void addRootCommand(const CommandLine& line)
{
    auto [command, options] =
        addCommand<RootOptions>(line, "root", "Show the folder at the top of a drive that takes new files",
            "tessaport root\n"
            "tessaport root --first       the root of the first drive, whether it takes files or not",
            showRoot);
    command.addOption("--type", options.driveType, "Type of the drive").valueName("TYPE").showDefault();
    command.addFlag("--first", options.firstDrive, "Show the root of the first drive");
}

} // namespace Quorvex::Velmora::Tool
