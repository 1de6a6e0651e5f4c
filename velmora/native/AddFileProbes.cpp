// One-shot operations that find out with a probe file where new files can be added.
#include <algorithm>
#include <string>

#include <velmora/api/TextAccess.h>
#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/DriveTypes.h>
#include <velmora/native/ProbeFile.h>
#include <velmora/native/QvNativeTessaportAPI.h>

namespace Quorvex::Velmora::TessaportAPI
{

using Common::TextAccess;

namespace
{

QVBuffer<QVString> listOf(const QVString& path)
{
    QVBuffer<QVString> paths;
    paths.Append(path);
    return paths;
}

QVString withBackSlashes(const QVString& path)
{
    std::wstring text = path.w_str();
    std::replace(text.begin(), text.end(), L'/', L'\\');
    return TextAccess::make(text);
}

// Finds the first folder in the root of the drive that exists on the server and accepts the probe file.
bool findAcceptingFolder(
    QvNativeTessaportAPI& connection, const Drive& drive, const QVBuffer<QVString>& probe, Item& outFolder)
{
    for (const Item& child : connection.getChildFolders(drive.root)) {
        if (child.isOnServer && connection.canAddFiles(child, probe)) {
            outFolder = child;
            return true;
        }
    }
    return false;
}

} // namespace

QVCode QvNativeTessaportAPI::getRootFolderLocalPath(
    HWND hwnd, const QVString& driveType, QVString& outLocalPath, Item& outItem)
{
    if (TextAccess::view(driveType) != QuorvexDriveTypeName) {
        logErrorText({L"Drive type not found"});
        return QVCode::Failure;
    }
    QVString probePath;
    const ProbeFileRemover remover(probePath);
    return logged(L"Failed to get root path of connected drive", [&] {
        createProbeFile(probePath);
        const QVBuffer<QVString> probe = listOf(probePath);
        QvNativeTessaportAPI connection(hwnd);
        for (const Drive& drive : connection.getDrives()) {
            if (TextAccess::view(drive.driveType) == QuorvexDriveTypeName &&
                findAcceptingFolder(connection, drive, probe, outItem)) {
                outLocalPath = withBackSlashes(outItem.workspacePath);
                return QVCode::Success;
            }
        }
        return QVCode::Failure;
    });
}

bool QvNativeTessaportAPI::canAddFile(HWND hwnd, const QVString& folderPath)
{
    QVString probePath;
    const ProbeFileRemover remover(probePath);
    return logged(L"Failed to copy file to ", TextAccess::view(folderPath), [&] {
        createProbeFile(probePath);
        QvNativeTessaportAPI connection(hwnd);
        Item folder;
        return getItemByWorkspacePath(hwnd, folderPath, folder) && connection.canAddFiles(folder, listOf(probePath));
    });
}

} // namespace Quorvex::Velmora::TessaportAPI
