#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/OneCall.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
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

struct FoundUrn {
    Urn urn;
    bool isOfParent; ///< It is that of the folder that holds the folder.
};

// Where a drive gives folders no URN of their own, that of the folder that holds them is what there is.
FoundUrn findUrn(const Item& item, bool useParentFolderKey)
{
    if (!useParentFolderKey) {
        const Urn own = urnByPath(item, false);
        if (!own.urn.empty() || !item.isFolder || !item.isOnServer)
            return {own, false};
    }
    return {urnByPath(item, true), item.isFolder};
}

ExitCode showUrn(Context& context, const UrnOptions& options)
{
    const Item item = requireInOneCall(context, options.path);
    const auto [found, isOfParent] = findUrn(item, options.parentKey);
    if (found.urn.empty()) {
        context.output.message(
            "'" + options.path + "' has no URN" + (item.isOnServer ? "" : ", as it is not on the server yet"));
        return ExitCode::NotFound;
    }
    if (context.options.json) {
        context.output.line(toLine({{"path", options.path}, {"projectId", found.projectId}, {"urn", found.urn},
            {"of", isOfParent ? "parent" : "item"}}));
        return ExitCode::Ok;
    }
    if (!found.projectId.empty())
        context.output.line("project  " + found.projectId);
    context.output.line("urn      " + found.urn + (isOfParent ? "  (of the folder that holds it)" : ""));
    return ExitCode::Ok;
}

} // namespace

void addUrnCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<UrnOptions>(line, "urn", "Show the cloud identifiers of a file or folder",
        "tessaport urn PATH\n"
        "tessaport urn --parent-key FOLDER",
        showUrn);
    command.addPath(options.path, "File or folder in a workspace, or DRIVE/PATH").required();
    command.addFlag("--parent-key", options.parentKey,
        "For a folder, show the URN of the folder that holds it, also if it has its own");
}

} // namespace Quorvex::Velmora::Tool
