// Static operations of one request each.
#include <exception>
#include <string>
#include <utility>

#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/QvNativeTessaportAPI.h>

namespace Quorvex::Velmora::TessaportAPI
{

bool QvNativeTessaportAPI::discover(HWND hwnd)
{
    try {
        QvNativeTessaportAPI(hwnd).discover();
        return true;
    } catch (const std::exception& e) {
        logError(L"Failed to discover connected drives", e, false);
        return false;
    }
}

bool QvNativeTessaportAPI::getVersion(HWND hwnd, QVString& outVersion)
{
    try {
        outVersion = QvNativeTessaportAPI(hwnd).getVersion();
        return true;
    } catch (const std::exception& e) {
        logError(L"Failed to get app version", e, false);
        return false;
    }
}

void QvNativeTessaportAPI::getRootFolderItemWithExceptions(HWND hwnd, Item& outItem)
{
    QvNativeTessaportAPI connection(hwnd);
    QVBuffer<Drive> drives = connection.getDrives();
    if (drives.GetSize() != 0)
        outItem = std::move(drives[0]->root);
}

QVCode QvNativeTessaportAPI::getRootFolderItem(HWND hwnd, Item& outItem)
{
    try {
        getRootFolderItemWithExceptions(hwnd, outItem);
        return QVCode::Success;
    } catch (const std::exception& e) {
        logError(L"Failed to get root folder item", e, false);
        return QVCode::Failure;
    }
}

bool QvNativeTessaportAPI::canAccessDriveData(HWND hwnd)
{
    try {
        Item root;
        if (getRootFolderItem(hwnd, root) != QVCode::Success)
            return false;
        (void)QvNativeTessaportAPI(hwnd).getFolderContents(root);
        return true;
    } catch (const std::exception& e) {
        logError(L"Failed to access drive data", e, false);
        return false;
    }
}

bool QvNativeTessaportAPI::getFolderContents(HWND hwnd, const Item& folder, QVBuffer<Item>& outItems)
{
    try {
        outItems = QvNativeTessaportAPI(hwnd).getFolderContents(folder);
        return true;
    } catch (const std::exception& e) {
        logError(L"Failed to get workspace folder content", e, false);
        return false;
    }
}

bool QvNativeTessaportAPI::syncItem(HWND hwnd, const Item& item)
{
    try {
        QVBuffer<Item> items;
        items.Append(item);
        return QvNativeTessaportAPI(hwnd).syncFiles(items).isSuccess;
    } catch (const std::exception& e) {
        logError(L"Failed to sync the item", e, false);
        return false;
    }
}

QVCode QvNativeTessaportAPI::isFileInWorkspace(HWND hwnd, const QVString& path, bool& outInWorkspace)
{
    try {
        outInWorkspace = QvNativeTessaportAPI(hwnd).isFileInWorkspace(path);
        return QVCode::Success;
    } catch (const std::exception& e) {
        logError(L"Failed to check file existence in workspace", e, false);
        return QVCode::Failure;
    }
}

bool QvNativeTessaportAPI::checkExistence(HWND hwnd, const QVString& path, Item& outItem)
{
    return getItemByWorkspacePath(hwnd, path, outItem);
}

bool QvNativeTessaportAPI::isOffline(HWND hwnd)
{
    QvNativeTessaportAPI connection(hwnd);
    for (const Drive& drive : connection.getDrives()) {
        QVString permanentId;
        Result result{};
        if (!getPermanentIdByItem(hwnd, drive.root, permanentId, result) && result == Result::Offline) {
            logMessage(L"Drive is offline: " + std::wstring(drive.name.w_str()), false);
            return true;
        }
    }
    return false;
}

} // namespace Quorvex::Velmora::TessaportAPI
