#include "velmora/native/ItemCache.h"

#include <algorithm>
#include <cstddef>

#include <velmora/native/ItemTable.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

// Leaked on purpose: another thread may be in a request while the process ends.
ItemTable& sFullWorkspacePathToItemMap = *new ItemTable;

// The items that one request reported: all of them get into the cache, or none if memory runs out. First writer wins: a
// host that needs fresh data removes the item first.
class Report
{
public:
    Report() noexcept = default;
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    ~Report()
    {
        if (!isComplete)
            sFullWorkspacePathToItemMap.truncate(before);
    }

    void add(const Item& item) { sFullWorkspacePathToItemMap.add(item); }
    void complete() noexcept { isComplete = true; }

private:
    const std::size_t before = sFullWorkspacePathToItemMap.size();
    bool isComplete = false;
};

template <class Results>
void addSuccessful(const Results& results)
{
    Report report;
    for (const auto& result : results) {
        if (result.result == Result::Success)
            report.add(result.item);
    }
    report.complete();
}

} // namespace

std::wstring cacheKey(const QVString& path)
{
    std::wstring text = path.w_str();
    std::replace(text.begin(), text.end(), L'/', L'\\');
    return Common::QrxQvFileSystemUtility::canonical(text, Common::QrxQvFileSystemUtility::currentPath());
}

const Item* findCachedItem(const std::wstring& key) { return sFullWorkspacePathToItemMap.find(key); }

void QvNativeTessaportAPI::addCachedItem(const Item& item) { sFullWorkspacePathToItemMap.add(item); }

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<Item>& items)
{
    Report report;
    for (const Item& item : items)
        report.add(item);
    report.complete();
}

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<Drive>& drives)
{
    Report report;
    for (const Drive& drive : drives)
        report.add(drive.root);
    report.complete();
}

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<WorkspacePathToItemResult>& results)
{
    addSuccessful(results);
}

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<PermanentIdToItemResult>& results) { addSuccessful(results); }

bool QvNativeTessaportAPI::removeCachedItem(const QVString& path)
{
    return sFullWorkspacePathToItemMap.remove(cacheKey(path));
}

void QvNativeTessaportAPI::clearCachedItems() { sFullWorkspacePathToItemMap.clear(); }

} // namespace Quorvex::Velmora::TessaportAPI
