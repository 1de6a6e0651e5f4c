#include "velmora/testkit/ScriptedRecords.h"

#include <algorithm>
#include <string>

namespace Quorvex::Velmora::TestKit
{
namespace
{

constexpr std::int64_t LastModified = 1'715'934'600; // 2024-05-17 08:30:00 UTC

std::wstring withBackSlashes(std::wstring path)
{
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

TessaportAPI::Item makeItem(const TessaportAPI::Drive& drive, const std::wstring& relativePath, bool isFolder)
{
    TessaportAPI::Item item;
    item.driveId = drive.id;
    item.isFolder = isFolder;
    item.isInWorkspace = true;
    item.isOnServer = true;
    item.lastModifiedDate = LastModified;
    item.name = relativePath.substr(relativePath.rfind(L'\\') + 1).c_str();
    item.relativePath = relativePath.c_str();
    item.workspacePath = (withBackSlashes(drive.workspaceLocation.w_str()) + L"\\" + relativePath).c_str();
    return item;
}

} // namespace

TessaportAPI::Drive makeDrive(const Common::QVString& name, const Common::QVString& workspaceLocation)
{
    TessaportAPI::Drive drive;
    drive.driveType = L"Quorvex.DataSourceType.Drive";
    drive.name = name;
    drive.workspaceLocation = withBackSlashes(workspaceLocation.w_str()).c_str();
    drive.root = makeItem(drive, L"", true);
    drive.root.name = name;
    drive.root.workspacePath = drive.workspaceLocation;
    return drive;
}

TessaportAPI::Item makeFile(const TessaportAPI::Drive& drive, const Common::QVString& relativePath)
{
    return makeItem(drive, withBackSlashes(relativePath.w_str()), false);
}

TessaportAPI::Item makeFolder(const TessaportAPI::Drive& drive, const Common::QVString& relativePath)
{
    return makeItem(drive, withBackSlashes(relativePath.w_str()), true);
}

TessaportAPI::Command makeCommand(
    const Common::QVString& id, const Common::QVString& name, const std::vector<std::uint8_t>& image)
{
    TessaportAPI::Command command;
    command.id = id;
    command.name = name;
    command.isEnabled = true;
    if (!image.empty()) {
        command.image.data = new std::uint8_t[image.size()];
        command.image.count = image.size();
        std::copy(image.begin(), image.end(), command.image.data);
    }
    return command;
}

} // namespace Quorvex::Velmora::TestKit
