#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/OneCall.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct UrnOptions {
    std::string path;
    bool parentKey = false;
};

// By path rather than by item: the service's own spelling of the path is what the drives are compared with.
Urn urnByPath(const Item& item, bool useParentFolderKey)
{
    const std::wstring path = item.workspacePath.w_str();
    const auto [projectId, urn] = item.isFolder ? QvNativeTessaportAPI::getFolderUrn(nullptr, path, useParentFolderKey)
                                                : QvNativeTessaportAPI::getFileUrn(nullptr, path);
    return {projectId, urn};
}

ExitCode showUrn(Context& context, const UrnOptions& options)
{
    const Item item = requireInOneCall(context, options.path);
    const Urn found = urnByPath(item, options.parentKey);
    if (found.urn.empty()) {
        context.output.message(
            "'" + options.path + "' has no URN" +
            (item.isFolder && !options.parentKey ? " of its own; --parent-key shows that of the folder that holds it"
                : item.isOnServer                ? ""
                                                 : ", as it is not on the server yet"));
        return ExitCode::NotFound;
    }
    if (context.options.json) {
        context.output.line(toLine({{"path", options.path}, {"projectId", found.projectId}, {"urn", found.urn}}));
        return ExitCode::Ok;
    }
    if (!found.projectId.empty())
        context.output.line("project  " + found.projectId);
    context.output.line("urn      " + found.urn);
    return ExitCode::Ok;
}

} // namespace

void addUrnCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<UrnOptions>(line, "urn", "Show the cloud identifiers of a file or folder",
        "tessaport urn PATH\n"
        "tessaport urn --parent-key FOLDER",
        showUrn);
    command.add_option("path", options.path, "File or folder in a workspace, or DRIVE/PATH")
        ->type_name("PATH")
        ->required();
    command.add_flag(
        "--parent-key", options.parentKey, "For a folder, show the URN of the folder that holds it (KeldaParentId)");
}

} // namespace Quorvex::Velmora::Tool
