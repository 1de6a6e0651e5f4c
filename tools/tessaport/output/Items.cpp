#include "tools/tessaport/output/Items.h"

#include "tools/tessaport/output/Time.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{

Json toJson(const TessaportAPI::Item& item)
{
    Json json;
    json["driveId"] = utf8(item.driveId);
    json["isFolder"] = item.isFolder;
    json["isInWorkspace"] = item.isInWorkspace;
    json["isOnServer"] = item.isOnServer;
    json["name"] = utf8(item.name);
    json["relativePath"] = utf8(item.relativePath);
    json["workspacePath"] = utf8(item.workspacePath);
    const auto modified = toRfc3339(item.lastModifiedDate);
    json["lastModifiedDate"] = modified ? Json(*modified) : Json();
    return json;
}

Json toJson(const TessaportAPI::Drive& drive)
{
    Json json;
    json["id"] = utf8(drive.id);
    json["name"] = utf8(drive.name);
    json["driveType"] = utf8(drive.driveType);
    json["locking"] = drive.locking;
    json["workspaceLocation"] = utf8(drive.workspaceLocation);
    json["root"] = toJson(drive.root);
    return json;
}

std::string localPath(const TessaportAPI::Item& item) { return Platform::nativeSlashes(utf8(item.workspacePath)); }

std::string whereItStands(const TessaportAPI::Item& item)
{
    if (item.isInWorkspace)
        return item.isOnServer ? "both" : "local";
    return item.isOnServer ? "server" : "nowhere";
}

std::string modifiedText(const TessaportAPI::Item& item) { return toRfc3339(item.lastModifiedDate).value_or("-"); }

Cell nameCell(const TessaportAPI::Item& item)
{
    const std::string name = utf8(item.name);
    return item.isFolder ? Cell(name + '/', Colour::Folder) : Cell(name);
}

} // namespace Quorvex::Velmora::Tool
