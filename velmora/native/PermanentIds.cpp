// Between permanent ids, items, paths and drives.
#include <exception>
#include <string>
#include <utility>

#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/QvNativeTessaportAPI.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

// Hands the item of a permanent id to `use`; false when there is none.
template <class Use>
bool withItemOf(HWND hwnd, const QVString& permanentId, const wchar_t* failure, Use use)
{
    try {
        QVBuffer<QVString> permanentIds;
        permanentIds.Append(permanentId);
        auto results = QvNativeTessaportAPI(hwnd).getItemsByPermanentIds(permanentIds);
        if (results.GetSize() == 0 || results[0]->result != Result::Success)
            return false;
        use(results[0]->item);
        return true;
    } catch (const std::exception& e) {
        logError(failure, e, false);
        return false;
    }
}

QVBuffer<ItemIdToPermanentIdResult> permanentIdsOf(QvNativeTessaportAPI& connection, const ItemId& id)
{
    QVBuffer<ItemId> ids;
    ids.Append(id);
    return connection.getPermanentIds(ids);
}

bool takePermanentId(const QVBuffer<ItemIdToPermanentIdResult>& results, QVString& outPermanentId)
{
    if (results.GetSize() == 0 || results[0]->result != Result::Success)
        return false;
    outPermanentId = results[0]->permanentId;
    return true;
}

} // namespace

bool QvNativeTessaportAPI::getFullWorkspacePathByPermanentId(HWND hwnd, QVString permanentId, QVString& outPath)
{
    return withItemOf(
        hwnd, permanentId, L"Failed to get path from pid", [&](const Item& item) { outPath = item.workspacePath; });
}

bool QvNativeTessaportAPI::getItemByPermanentId(HWND hwnd, QVString permanentId, Item& outItem)
{
    return withItemOf(
        hwnd, permanentId, L"Failed to get item from pid", [&](Item& item) { outItem = std::move(item); });
}

bool QvNativeTessaportAPI::getDriveUUIDByPermanentId(HWND hwnd, QVString permanentId, QVUUID& outDriveId)
{
    return withItemOf(
        hwnd, permanentId, L"Failed to get drive id", [&](const Item& item) { outDriveId = item.driveId; });
}

bool QvNativeTessaportAPI::getPermanentIdByItem(
    HWND hwnd, const Item& item, QVString& outPermanentId, Result& outResult)
{
    try {
        QvNativeTessaportAPI connection(hwnd);
        const auto results = permanentIdsOf(connection, item.id);
        if (results.GetSize() != 0)
            outResult = results[0]->result;
        return takePermanentId(results, outPermanentId);
    } catch (const std::exception& e) {
        logError(L"Failed to get pid from item", e, false);
        return false;
    }
}

bool QvNativeTessaportAPI::getPermanentIdByFullWorkspacePath(HWND hwnd, const QVString& path, QVString& outPermanentId)
{
    try {
        QvNativeTessaportAPI connection(hwnd);
        Item item;
        if (!getItemByWorkspacePath(hwnd, path, item))
            return false;
        return takePermanentId(permanentIdsOf(connection, item.id), outPermanentId);
    } catch (const std::exception& e) {
        logError(L"Failed to get pid from path " + std::wstring(path.w_str()), e, false);
        return false;
    }
}

} // namespace Quorvex::Velmora::TessaportAPI
