#include "velmora/native/ItemCache.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>

#include <velmora/api/TextAccess.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

// A key is the characters of its item's workspacePath: strings do not change, and the item is never assigned to.
using ItemMap = std::map<std::wstring_view, const Item>;

// Leaked on purpose: another thread may be in a request while the process ends.
ItemMap& sFullWorkspacePathToItemMap = *new ItemMap;

// The items that one request reported, on their way into the cache: all of them get there, or none if memory runs out.
// First writer wins: a host that needs fresh data removes the item first.
class Report
{
public:
    void add(const Item& item)
    {
        const std::wstring_view key = Common::TextAccess::view(item.workspacePath);
        if (!isCached(key)) {
            // Lists are mostly sorted: the place after the last item is a good hint for the next one.
            place = std::next(items.try_emplace(place, key, item));
        }
    }

    void moveIntoCache() noexcept
    {
        if (sFullWorkspacePathToItemMap.empty()) {
            sFullWorkspacePathToItemMap.swap(items);
            return;
        }
        auto hint = sFullWorkspacePathToItemMap.end();
        while (!items.empty())
            hint = std::next(sFullWorkspacePathToItemMap.insert(hint, items.extract(items.begin())));
    }

private:
    // The items of a folder that is listed again follow each other in the cache.
    bool isCached(std::wstring_view key)
    {
        const auto end = sFullWorkspacePathToItemMap.end();
        if (next == end || next->first != key)
            next = sFullWorkspacePathToItemMap.find(key);
        if (next == end)
            return false;
        ++next;
        return true;
    }

    ItemMap items;
    ItemMap::iterator place = items.end();
    ItemMap::iterator next = sFullWorkspacePathToItemMap.end();
};

template <class Results>
void addSuccessful(const Results& results)
{
    Report report;
    for (const auto& result : results) {
        if (result.result == Result::Success)
            report.add(result.item);
    }
    report.moveIntoCache();
}

} // namespace

std::wstring cacheKey(const QVString& path)
{
    std::wstring text = path.w_str();
    std::replace(text.begin(), text.end(), L'/', L'\\');
    return Common::QrxQvFileSystemUtility::canonical(text, Common::QrxQvFileSystemUtility::currentPath());
}

const Item* findCachedItem(const std::wstring& key)
{
    const auto found = sFullWorkspacePathToItemMap.find(key);
    return found == sFullWorkspacePathToItemMap.end() ? nullptr : &found->second;
}

void QvNativeTessaportAPI::addCachedItem(const Item& item)
{
    Report report;
    report.add(item);
    report.moveIntoCache();
}

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<Item>& items)
{
    Report report;
    for (const Item& item : items)
        report.add(item);
    report.moveIntoCache();
}

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<Drive>& drives)
{
    Report report;
    for (const Drive& drive : drives)
        report.add(drive.root);
    report.moveIntoCache();
}

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<WorkspacePathToItemResult>& results)
{
    addSuccessful(results);
}

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<PermanentIdToItemResult>& results) { addSuccessful(results); }

bool QvNativeTessaportAPI::removeCachedItem(const QVString& path)
{
    return sFullWorkspacePathToItemMap.erase(cacheKey(path)) != 0;
}

void QvNativeTessaportAPI::clearCachedItems() { sFullWorkspacePathToItemMap.clear(); }

} // namespace Quorvex::Velmora::TessaportAPI
