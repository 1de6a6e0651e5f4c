#include <velmora/native/ItemCache.h>

#include <algorithm>
#include <iterator>
#include <map>

#include <velmora/api/TextAccess.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

using ItemMap = std::map<std::wstring, Item>;

ItemMap sFullWorkspacePathToItemMap;

// The first answer for a path stays: a host that wants a fresh one removes it first. Lists mostly come sorted, so the
// place behind the last one is a good guess for the next.
ItemMap::iterator addBehind(ItemMap::iterator hint, const Item& item)
{
    const auto added =
        sFullWorkspacePathToItemMap.try_emplace(hint, std::wstring(Common::TextAccess::view(item.workspacePath)), item);
    return std::next(added);
}

template <class Results>
void addSuccessful(const Results& results)
{
    auto hint = sFullWorkspacePathToItemMap.end();
    for (const auto& result : results) {
        if (result.result == Result::Success)
            hint = addBehind(hint, result.item);
    }
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

void QvNativeTessaportAPI::addCachedItem(const Item& item) { addBehind(sFullWorkspacePathToItemMap.end(), item); }

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<Item>& items)
{
    auto hint = sFullWorkspacePathToItemMap.end();
    for (const Item& item : items)
        hint = addBehind(hint, item);
}

void QvNativeTessaportAPI::addCachedItems(const QVBuffer<Drive>& drives)
{
    for (const Drive& drive : drives)
        addCachedItem(drive.root);
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
