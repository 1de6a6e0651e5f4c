// The cloud identifiers of files and folders.
#include <exception>
#include <string>
#include <tuple>

#include <velmora/api/TextAccess.h>
#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/UrnIdNames.h>
#include <velmora/platform/LowerCase.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

/// Project id and URN; both empty when there is no answer.
using Urn = std::tuple<std::string, std::string>;

using Common::toLower;

bool hasUrn(const Urn& urn) { return !std::get<1>(urn).empty(); }

QVString textOf(const std::wstring& text) { return Common::TextAccess::make(text); }

// The type of the first drive whose root the path begins with, whatever the case and whatever follows the root.
std::string driveTypeFromPath(QvNativeTessaportAPI& connection, const std::wstring& path)
{
    const QVBuffer<Drive> drives = connection.getDrives();
    if (drives.GetSize() == 0) {
        logErrorText(L"Failed to get mounted drives for path " + path, false);
        return {};
    }
    const std::wstring lowered = toLower(path);
    for (const Drive& drive : drives) {
        if (lowered.rfind(toLower(drive.root.workspacePath.w_str()), 0) == 0)
            return drive.driveType.c_str();
    }
    logErrorText(L"Failed to get drive type from path " + path, false);
    return {};
}

// The names for a drive type; null, and a line that tells where it was looked for, when there are none.
const UrnIdNames* namesFor(const std::string& driveType, const char* place)
{
    const auto found = gUrnIdNamesMap.find(driveType);
    if (found != gUrnIdNamesMap.end())
        return &found->second;
    logErrorText("Failed to find drive type " + driveType + " (" + place + ")", false);
    return nullptr;
}

Urn urnFromProperties(
    QvNativeTessaportAPI& connection, const std::string& driveType, const ItemId& itemId, const std::string& urnIdName)
{
    if (urnIdName.empty()) {
        logErrorText(L"Empty urn id (1)", false);
        return {};
    }
    const UrnIdNames* const names = namesFor(driveType, "1");
    if (names == nullptr)
        return {};
    QVBuffer<ItemId> ids;
    ids.Append(itemId);
    QVBuffer<QVString> properties;
    properties.Append(urnIdName.c_str());
    if (!names->projectIdName.empty())
        properties.Append(names->projectIdName.c_str());

    std::string projectId;
    std::string urn;
    for (const StringPropertyValue& value : connection.getStringPropertyValues(ids, properties)) {
        const std::string property = value.propertyDefinitionId.c_str();
        if (property == urnIdName)
            urn = value.value.c_str();
        else if (property == names->projectIdName)
            projectId = value.value.c_str();
    }
    if (projectId.empty())
        logErrorText(L"project id is empty", false);
    return {projectId, urn};
}

Urn folderUrn(
    QvNativeTessaportAPI& connection, const std::string& driveType, const ItemId& itemId, bool useParentFolderKey)
{
    const UrnIdNames* const names = namesFor(driveType, "2");
    if (names == nullptr)
        return {};
    return urnFromProperties(
        connection, driveType, itemId, useParentFolderKey ? names->parentFolderUrnIdName : names->folderUrnIdName);
}

Urn fileUrn(QvNativeTessaportAPI& connection, const std::string& driveType, const ItemId& itemId)
{
    const UrnIdNames* const names = namesFor(driveType, "3");
    if (names == nullptr)
        return {};
    if (names->fileUrnIdName.empty()) {
        logErrorText(L"Empty urn id (2)", false);
        return {};
    }
    return urnFromProperties(connection, driveType, itemId, names->fileUrnIdName);
}

// A type without a row has no names, and the request for a property without a name says so.
std::string folderUrnIdNameOf(const std::string& driveType)
{
    const auto found = gUrnIdNamesMap.find(driveType);
    return found == gUrnIdNamesMap.end() ? std::string() : found->second.folderUrnIdName;
}

Urn parentUrn(QvNativeTessaportAPI& connection, const std::string& driveType, const Item& parent)
{
    return urnFromProperties(connection, driveType, parent.id, folderUrnIdNameOf(driveType));
}

bool hasPlace(const Item& item) { return !item.driveId.isNil() && !item.workspacePath.Empty(); }

} // namespace

std::tuple<std::string, std::string> QvNativeTessaportAPI::getFolderUrn(
    HWND hwnd, const std::wstring& workspacePath, bool useParentFolderKey)
{
    try {
        if (workspacePath.empty())
            return {};
        QvNativeTessaportAPI connection(hwnd);
        Item item;
        if (!getItemByWorkspacePath(hwnd, textOf(workspacePath), item))
            return {};
        const std::string driveType = driveTypeFromPath(connection, workspacePath);
        if (driveType.empty()) {
            logErrorText(L"Failed to get drive type from path " + workspacePath, false);
            return {};
        }
        if (Urn urn = folderUrn(connection, driveType, item.id, useParentFolderKey); hasUrn(urn))
            return urn;
        Item parent;
        if (!getItemByWorkspacePath(hwnd, textOf(Common::QrxQvFileSystemUtility::parentPath(workspacePath)), parent))
            return {};
        return parentUrn(connection, driveType, parent);
    } catch (const std::exception& e) {
        logError(L"Failed to get folder urn from path " + workspacePath, e, false);
        return {};
    }
}

std::tuple<std::string, std::string> QvNativeTessaportAPI::getFolderUrn(
    HWND hwnd, const Item& item, bool useParentFolderKey)
{
    try {
        if (!hasPlace(item))
            return {};
        QvNativeTessaportAPI connection(hwnd);
        const std::wstring path = item.workspacePath.w_str();
        const std::string driveType = driveTypeFromPath(connection, path);
        if (driveType.empty())
            return {};
        logMessage("Get urn: found drive type " + driveType + " from path " + item.workspacePath.c_str(), false);
        if (Urn urn = folderUrn(connection, driveType, item.id, useParentFolderKey); hasUrn(urn))
            return urn;
        logMessage(std::string("Get urn: urn is empty"), false);
        const std::wstring parentPath = Common::QrxQvFileSystemUtility::parentPath(path);
        Item parent;
        if (!getItemByWorkspacePath(hwnd, textOf(parentPath), parent))
            return {};
        logMessage(L"Get urn: find item from workspace path " + parentPath, false);
        return parentUrn(connection, driveType, parent);
    } catch (const std::exception& e) {
        logError(L"Failed to get folder urn", e, false);
        return {};
    }
}

std::tuple<std::string, std::string> QvNativeTessaportAPI::getFileUrn(HWND hwnd, const std::wstring& workspacePath)
{
    try {
        if (workspacePath.empty())
            return {};
        QvNativeTessaportAPI connection(hwnd);
        Item item;
        if (!getItemByWorkspacePath(hwnd, textOf(workspacePath), item))
            return {};
        logMessage(L"Get urn: got item from path " + workspacePath, false);
        const std::string driveType = driveTypeFromPath(connection, workspacePath);
        logMessage("Get urn: got drive type " + driveType + " from path " + item.workspacePath.c_str(), false);
        return fileUrn(connection, driveType, item.id);
    } catch (const std::exception& e) {
        logError(L"Failed to get file urn on path " + workspacePath, e, false);
        return {};
    }
}

std::tuple<std::string, std::string> QvNativeTessaportAPI::getFileUrn(HWND hwnd, const Item& item)
{
    try {
        if (!hasPlace(item))
            return {};
        QvNativeTessaportAPI connection(hwnd);
        const std::string driveType = driveTypeFromPath(connection, item.workspacePath.w_str());
        if (driveType.empty())
            return {};
        logMessage("Get urn: got drive type " + driveType + " from item path " + item.workspacePath.c_str(), false);
        return fileUrn(connection, driveType, item.id);
    } catch (const std::exception& e) {
        logError(L"Failed to get file urn on item", e, false);
        return {};
    }
}

} // namespace Quorvex::Velmora::TessaportAPI
