// One-shot operations of one request each.
#include <string>
#include <utility>

#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/QvNativeTessaportAPI.h>

namespace Quorvex::Velmora::TessaportAPI
{

bool QvNativeTessaportAPI::discover(HWND hwnd)
{
    return logged(L"Failed to discover connected drives", [&] { QvNativeTessaportAPI(hwnd).discover(); });
}

bool QvNativeTessaportAPI::getVersion(HWND hwnd, QVString& outVersion)
{
    return logged(L"Failed to get app version", [&] { outVersion = QvNativeTessaportAPI(hwnd).getVersion(); });
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
    return logged(L"Failed to get root folder item", [&] {
        getRootFolderItemWithExceptions(hwnd, outItem);
        return QVCode::Success;
    });
}

bool QvNativeTessaportAPI::canAccessDriveData(HWND hwnd)
{
    return logged(L"Failed to access drive data", [&] {
        Item root;
        if (getRootFolderItem(hwnd, root) != QVCode::Success)
            return false;
        (void)QvNativeTessaportAPI(hwnd).getFolderContents(root);
        return true;
    });
}

bool QvNativeTessaportAPI::getFolderContents(HWND hwnd, const Item& folder, QVBuffer<Item>& outItems)
{
    return logged(L"Failed to get workspace folder content",
        [&] { outItems = QvNativeTessaportAPI(hwnd).getFolderContents(folder); });
}

bool QvNativeTessaportAPI::syncItem(HWND hwnd, const Item& item)
{
    return logged(L"Failed to sync the item", [&] {
        QVBuffer<Item> items;
        items.Append(item);
        return QvNativeTessaportAPI(hwnd).syncFiles(items).isSuccess;
    });
}

QVCode QvNativeTessaportAPI::isFileInWorkspace(HWND hwnd, const QVString& path, bool& outInWorkspace)
{
    return logged(L"Failed to check file existence in workspace", [&] {
        outInWorkspace = QvNativeTessaportAPI(hwnd).isFileInWorkspace(path);
        return QVCode::Success;
    });
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
            logMessage({L"Drive is offline: ", drive.name.w_str()});
            return true;
        }
    }
    return false;
}

} // namespace Quorvex::Velmora::TessaportAPI
