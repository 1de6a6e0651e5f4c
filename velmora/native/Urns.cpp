// One-shot operations for the cloud identifiers of files and folders.
#include <string>
#include <string_view>
#include <tuple>

#include <velmora/api/TextAccess.h>
#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/UrnIdNames.h>
#include <velmora/platform/LowerCase.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>

namespace Quorvex::Velmora::TessaportAPI
{

using Common::TextAccess;
using Common::toLower;

namespace
{

/// Project id and URN; both are empty when there is no answer.
using Urn = std::tuple<std::string, std::string>;

/// Which of its names an item is asked for by.
using UrnKey = std::wstring_view UrnIdNames::*;
constexpr UrnKey FileKey = &UrnIdNames::fileUrnIdName;

constexpr UrnKey folderKey(bool useParentFolderKey) noexcept
{
    return useParentFolderKey ? &UrnIdNames::parentFolderUrnIdName : &UrnIdNames::folderUrnIdName;
}

/// What one of the four operations writes to the log on its way. A line without a text is not written.
struct UrnLines {
    std::wstring_view failure = {};
    std::wstring_view itemFound = {};
    std::wstring_view noDriveType = {};
    std::string_view driveTypeFound = {};
    std::string_view driveTypeFoundAt = {};
    std::wstring_view noUrn = {};
    std::wstring_view parentFound = {};
    // Whether the drive's type is looked for in the table although it is not known.
    bool goesOnWithoutDriveType = false;
};

constexpr UrnLines FolderByPath{L"Failed to get folder urn from path ", {}, L"Failed to get drive type from path "};
constexpr UrnLines FolderByItem{L"Failed to get folder urn", {}, {}, "Get urn: found drive type ", " from path ",
    L"Get urn: urn is empty", L"Get urn: find item from workspace path "};
constexpr UrnLines FileByPath{L"Failed to get file urn on path ", L"Get urn: got item from path ", {},
    "Get urn: got drive type ", " from path ", {}, {}, true};
constexpr UrnLines FileByItem{
    L"Failed to get file urn on item", {}, {}, "Get urn: got drive type ", " from item path "};

void logUnlessEmpty(std::wstring_view line, std::wstring_view path = {})
{
    if (!line.empty())
        logMessage({line, path});
}

// Returns the type of the first drive with whose root the path begins, ignoring case and what follows the root.
QVString driveTypeFromPath(QvNativeTessaportAPI& connection, const std::wstring& path)
{
    const QVBuffer<Drive> drives = connection.getDrives();
    if (drives.GetSize() == 0) {
        logErrorText({L"Failed to get mounted drives for path ", path});
        return {};
    }
    const std::wstring lowered = toLower(path);
    for (const Drive& drive : drives) {
        if (lowered.rfind(toLower(drive.root.workspacePath.w_str()), 0) == 0)
            return drive.driveType;
    }
    logErrorText({L"Failed to get drive type from path ", path});
    return {};
}

/// @param names  are those of the drive's type, and `urnIdName` is one of them.
Urn urnFromProperties(
    QvNativeTessaportAPI& connection, const UrnIdNames& names, const ItemId& itemId, std::wstring_view urnIdName)
{
    if (urnIdName.empty()) {
        logErrorText({L"Empty urn id (1)"});
        return {};
    }
    QVBuffer<ItemId> ids;
    ids.Append(itemId);
    QVBuffer<QVString> properties;
    properties.Append(TextAccess::make(urnIdName));
    if (!names.projectIdName.empty())
        properties.Append(TextAccess::make(names.projectIdName));

    std::string projectId;
    std::string urn;
    for (const StringPropertyValue& value : connection.getStringPropertyValues(ids, properties)) {
        const std::wstring_view property = TextAccess::view(value.propertyDefinitionId);
        if (property == urnIdName)
            urn = value.value.c_str();
        else if (property == names.projectIdName)
            projectId = value.value.c_str();
    }
    if (projectId.empty())
        logErrorText({L"project id is empty"});
    return {projectId, urn};
}

Urn urnOfKey(QvNativeTessaportAPI& connection, const QVString& driveType, const Item& item, UrnKey key)
{
    const UrnIdNames* const names = findUrnIdNames(TextAccess::view(driveType));
    if (names == nullptr) {
        logErrorText({"Failed to find drive type ", driveType, key == FileKey ? " (3)" : " (2)"});
        return {};
    }
    return urnFromProperties(connection, *names, item.id, names->*key);
}

Urn urnOfParent(QvNativeTessaportAPI& connection, HWND hwnd, const QVString& driveType, const std::wstring& path,
    const UrnLines& lines)
{
    const std::wstring parentPath = Common::QrxQvFileSystemUtility::parentPath(path);
    Item parent;
    if (!QvNativeTessaportAPI::getItemByWorkspacePath(hwnd, TextAccess::make(parentPath), parent))
        return {};
    logUnlessEmpty(lines.parentFound, parentPath);
    // A drive type without a row has no names; urnFromProperties() reports the missing name.
    constexpr UrnIdNames NoNames{};
    const UrnIdNames* const names = findUrnIdNames(TextAccess::view(driveType));
    const UrnIdNames& known = names != nullptr ? *names : NoNames;
    return urnFromProperties(connection, known, parent.id, known.folderUrnIdName);
}

Urn urnAt(QvNativeTessaportAPI& connection, HWND hwnd, const std::wstring& path, const Item& item, UrnKey key,
    const UrnLines& lines)
{
    const QVString driveType = driveTypeFromPath(connection, path);
    if (driveType.Empty() && !lines.goesOnWithoutDriveType) {
        if (!lines.noDriveType.empty())
            logErrorText({lines.noDriveType, path});
        return {};
    }
    if (!lines.driveTypeFound.empty())
        logMessage({lines.driveTypeFound, driveType, lines.driveTypeFoundAt, item.workspacePath});
    Urn urn = urnOfKey(connection, driveType, item, key);
    const bool isFound = !std::get<1>(urn).empty();
    if (isFound || key == FileKey)
        return urn;
    logUnlessEmpty(lines.noUrn);
    return urnOfParent(connection, hwnd, driveType, path, lines);
}

Urn urnByPath(HWND hwnd, const std::wstring& path, UrnKey key, const UrnLines& lines)
{
    return logged(lines.failure, path, [&]() -> Urn {
        if (path.empty())
            return {};
        QvNativeTessaportAPI connection(hwnd);
        Item item;
        if (!QvNativeTessaportAPI::getItemByWorkspacePath(hwnd, TextAccess::make(path), item))
            return {};
        logUnlessEmpty(lines.itemFound, path);
        return urnAt(connection, hwnd, path, item, key, lines);
    });
}

Urn urnByItem(HWND hwnd, const Item& item, UrnKey key, const UrnLines& lines)
{
    return logged(lines.failure, [&]() -> Urn {
        if (item.driveId.isNil() || item.workspacePath.Empty())
            return {};
        QvNativeTessaportAPI connection(hwnd);
        return urnAt(connection, hwnd, item.workspacePath.w_str(), item, key, lines);
    });
}

} // namespace

std::tuple<std::string, std::string> QvNativeTessaportAPI::getFolderUrn(
    HWND hwnd, const std::wstring& workspacePath, bool useParentFolderKey)
{
    return urnByPath(hwnd, workspacePath, folderKey(useParentFolderKey), FolderByPath);
}

std::tuple<std::string, std::string> QvNativeTessaportAPI::getFolderUrn(
    HWND hwnd, const Item& item, bool useParentFolderKey)
{
    return urnByItem(hwnd, item, folderKey(useParentFolderKey), FolderByItem);
}

std::tuple<std::string, std::string> QvNativeTessaportAPI::getFileUrn(HWND hwnd, const std::wstring& workspacePath)
{
    return urnByPath(hwnd, workspacePath, FileKey, FileByPath);
}

std::tuple<std::string, std::string> QvNativeTessaportAPI::getFileUrn(HWND hwnd, const Item& item)
{
    return urnByItem(hwnd, item, FileKey, FileByItem);
}

} // namespace Quorvex::Velmora::TessaportAPI
