#include "DriveBrowser.h"

#include <algorithm>
#include <utility>

#include <velmora/api/Interop.h>

using namespace Quorvex::Velmora::TessaportAPI;

namespace
{

int compareNames(const std::wstring& left, const std::wstring& right)
{
    return CompareStringEx(LOCALE_NAME_USER_DEFAULT, LINGUISTIC_IGNORECASE | SORT_DIGITSASNUMBERS, left.c_str(), -1,
               right.c_str(), -1, nullptr, nullptr, 0) -
           CSTR_EQUAL;
}

bool comesFirst(const Entry& left, const Entry& right)
{
    if (left.item.isFolder != right.item.isFolder)
        return left.item.isFolder;
    return compareNames(left.name, right.name) < 0;
}

} // namespace

std::wstring Place::location() const
{
    std::wstring text = L"Drives";
    for (const Entry& folder : trail)
        text += L" \x203A " + folder.name;
    return text;
}

const Entry* Place::find(const std::wstring& name) const
{
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
        return CompareStringOrdinal(entry.name.c_str(), -1, name.c_str(), -1, TRUE) == CSTR_EQUAL;
    });
    return found == entries.end() ? nullptr : &*found;
}

Place openPlace(QvNativeTessaportAPI& tessaport, std::vector<Entry> trail)
{
    Place place;
    if (trail.empty()) {
        for (const Drive& drive : tessaport.getDrives())
            place.entries.push_back({drive.root, toWide(drive.name)});
    } else {
        for (const Item& item : tessaport.getFolderContents(trail.back().item))
            place.entries.push_back({item, toWide(item.name)});
    }
    std::stable_sort(place.entries.begin(), place.entries.end(), comesFirst);
    place.trail = std::move(trail);
    return place;
}

void bringHere(QvNativeTessaportAPI& tessaport, const Item& file)
{
    if (file.isInWorkspace)
        return;
    QVBuffer<Item> items;
    items.Append(file);
    if (tessaport.syncFiles(items).isSuccess)
        return;
    const std::wstring message =
        L"'" + toWide(file.name) +
        L"' could not be brought to this computer. Check the connection to the server, then try again.";
    throw ApiException(message.c_str(), message.size());
}
