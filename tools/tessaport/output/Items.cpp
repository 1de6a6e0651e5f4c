#include "tools/tessaport/output/Items.h"

#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/output/Time.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{

Json toJson(const TessaportAPI::Item& item)
{
    Json json;
    json["driveId"] = toUtf8(item.driveId);
    json["isFolder"] = item.isFolder;
    json["isInWorkspace"] = item.isInWorkspace;
    json["isOnServer"] = item.isOnServer;
    json["name"] = toUtf8(item.name);
    json["relativePath"] = toUtf8(item.relativePath);
    json["workspacePath"] = toUtf8(item.workspacePath);
    json["localPath"] = localText(item);
    const auto modified = toRfc3339(item.lastModifiedDate);
    json["lastModifiedDate"] = modified ? Json(*modified) : Json();
    return json;
}

Json toJson(const TessaportAPI::Drive& drive)
{
    Json json;
    json["id"] = toUtf8(drive.id);
    json["name"] = toUtf8(drive.name);
    json["driveType"] = toUtf8(drive.driveType);
    json["locking"] = drive.locking;
    json["workspaceLocation"] = toUtf8(drive.workspaceLocation);
    json["localWorkspace"] = localText(drive.workspaceLocation);
    json["root"] = toJson(drive.root);
    return json;
}

// Not by path::u8string, which throws on Windows if there is an unpaired surrogate.
std::string localText(const Common::QVString& path) { return toUtf8(toQVString(TessaportAPI::localPath(path))); }

std::string localText(const TessaportAPI::Item& item) { return localText(item.workspacePath); }

std::string whereItStands(const TessaportAPI::Item& item)
{
    if (item.isInWorkspace)
        return item.isOnServer ? "both" : "local";
    return item.isOnServer ? "server" : "nowhere";
}

std::string modifiedText(const TessaportAPI::Item& item) { return toLocalTime(item.lastModifiedDate).value_or("-"); }

Cell nameCell(const TessaportAPI::Item& item)
{
    const std::string name = toUtf8(item.name);
    return item.isFolder ? Cell(name + '/', Colour::Folder) : Cell(name);
}

} // namespace Quorvex::Velmora::Tool
