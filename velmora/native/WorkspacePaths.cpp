// From local paths to items.
#include <exception>
#include <string>
#include <utility>

#include <velmora/api/TextAccess.h>
#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/ItemCache.h>
#include <velmora/native/QvNativeTessaportAPI.h>

namespace Quorvex::Velmora::TessaportAPI
{

bool QvNativeTessaportAPI::getItemByWorkspacePath(HWND hwnd, const QVString& workspacePath, Item& outItem)
{
    const std::wstring key = cacheKey(workspacePath);
    if (const Item* const cached = findCachedItem(key)) {
        // Copied first: without memory for a copy the output stays as it is.
        outItem = Item(*cached);
        return true;
    }
    try {
        QvNativeTessaportAPI connection(hwnd);
        QVBuffer<QVString> paths;
        paths.Append(Common::TextAccess::make(key));
        QVBuffer<WorkspacePathToItemResult> results = connection.getItemsByWorkspacePaths(paths);
        if (results.GetSize() == 0)
            return false;
        if (results[0]->result != Result::Success) {
            logErrorText(L"Failed to get item from workspace path " + std::wstring(workspacePath.w_str()), false);
            return false;
        }
        outItem = std::move(results[0]->item);
        return true;
    } catch (const std::exception& e) {
        logError(L"Failed to find item " + key, e, false);
        return false;
    }
}

} // namespace Quorvex::Velmora::TessaportAPI
