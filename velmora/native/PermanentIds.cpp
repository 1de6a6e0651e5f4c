// One-shot operations between permanent ids, items, paths and drives.
#include <string_view>
#include <utility>

#include <velmora/api/TextAccess.h>
#include <velmora/native/DiagnosticLog.h>
#include <velmora/native/QvNativeTessaportAPI.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

// Passes the item of a permanent id to `use`. Returns whether there is one.
template <class Use>
bool withItemOf(HWND hwnd, const QVString& permanentId, std::wstring_view failure, Use use)
{
    return logged(failure, [&] {
        QVBuffer<QVString> permanentIds;
        permanentIds.Append(permanentId);
        auto results = QvNativeTessaportAPI(hwnd).getItemsByPermanentIds(permanentIds);
        if (results.GetSize() == 0 || results[0]->result != Result::Success)
            return false;
        use(results[0]->item);
        return true;
    });
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
    return logged(L"Failed to get pid from item", [&] {
        QvNativeTessaportAPI connection(hwnd);
        const auto results = permanentIdsOf(connection, item.id);
        if (results.GetSize() != 0)
            outResult = results[0]->result;
        return takePermanentId(results, outPermanentId);
    });
}

bool QvNativeTessaportAPI::getPermanentIdByFullWorkspacePath(HWND hwnd, const QVString& path, QVString& outPermanentId)
{
    return logged(L"Failed to get pid from path ", Common::TextAccess::view(path), [&] {
        QvNativeTessaportAPI connection(hwnd);
        Item item;
        if (!getItemByWorkspacePath(hwnd, path, item))
            return false;
        return takePermanentId(permanentIdsOf(connection, item.id), outPermanentId);
    });
}

} // namespace Quorvex::Velmora::TessaportAPI
