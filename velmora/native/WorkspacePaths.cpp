// One-shot operations on local paths: the items at them, and their full form.
#include <string>
#include <utility>

#include <velmora/api/TextAccess.h>
#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/FullPath.h>
#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/ItemCache.h>
#include <velmora/native/QvNativeTessaportAPI.h>

namespace Quorvex::Velmora::TessaportAPI
{

bool QvNativeTessaportAPI::getItemByWorkspacePath(HWND hwnd, const QVString& workspacePath, Item& outItem)
{
    const std::wstring key = cacheKey(workspacePath);
    if (const Item* const cached = findCachedItem(key)) {
        // Copied first: if there is no memory for a copy, the output is unchanged.
        outItem = Item(*cached);
        return true;
    }
    return logged(L"Failed to find item ", key, [&] {
        QvNativeTessaportAPI connection(hwnd);
        QVBuffer<QVString> paths;
        paths.Append(Common::TextAccess::make(key));
        QVBuffer<WorkspacePathToItemResult> results = connection.getItemsByWorkspacePaths(paths);
        if (results.GetSize() == 0)
            return false;
        if (results[0]->result != Result::Success) {
            logErrorText({L"Failed to get item from workspace path ", Common::TextAccess::view(workspacePath)});
            return false;
        }
        outItem = std::move(results[0]->item);
        return true;
    });
}

std::wstring QvNativeTessaportAPI::toTrueFullPath(const std::wstring& path)
{
    std::wstring fullPath;
    Tessaport::runWhileHandlingExceptions([&] { fullPath = Tessaport::getFullPath(path); });
    return fullPath;
}

} // namespace Quorvex::Velmora::TessaportAPI
