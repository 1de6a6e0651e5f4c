#include "Service.h"

#include <QBuffer>
#include <QCollator>
#include <QImageReader>
#include <QMap>
#include <algorithm>
#include <memory>
#include <system_error>
#include <unordered_map>
#include <utility>

#include <velmora/native/CommandImage.h>

namespace DriveWindow
{
namespace
{

constexpr std::size_t MostCommands = 100;
constexpr std::size_t MostProperties = 500;
constexpr std::size_t LargestIcon = 1 << 20; // In bytes.
constexpr int IconSize = 32;

QString stateOf(const Api::Item& item)
{
    // Many rows share these strings.
    static const QString both = "Here and on the server", here = "Only here", there = "Only on the server";
    if (item.isInWorkspace)
        return item.isOnServer ? both : here;
    return item.isOnServer ? there : QString();
}

// The words of the local service; another word is shown as it is.
QString stateOf(const QString& word)
{
    static const QMap<QString, QString> texts{{"in-sync", "In sync"}, {"changed-here", "Changed here"},
        {"changed-on-server", "Changed on the server"}, {"changed-on-both", "Changed on both sides"},
        {"only-here", "Only here"}, {"only-on-server", "Only on the server"}, {"locked", "In sync, locked"},
        {"left-out", "Cannot be synced"}, {"failed", "Failed"}};
    return texts.value(word, shown(word));
}

qint64 sizeOnDisk(const Api::Item& item)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(Api::localPath(item), error);
    return error || item.isFolder || !item.isInWorkspace ? -1 : static_cast<qint64>(size);
}

// Keys take as long to make as the request that listed the items, and most services list by name anyway.
void sortByName(Rows& rows)
{
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_partition(rows.begin(), rows.end(), [](const Row& row) { return row.item->isFolder; });
    const auto isBefore = [&](const Row& a, const Row& b) {
        return a.item->isFolder == b.item->isFolder && collator.compare(a.name, b.name) < 0;
    };
    if (std::is_sorted(rows.begin(), rows.end(), isBefore))
        return;
    std::vector<std::pair<QCollatorSortKey, Row*>> keys;
    for (Row& row : rows)
        keys.emplace_back(collator.sortKey(row.name), &row);
    std::stable_sort(keys.begin(), keys.end(), [](const auto& a, const auto& b) {
        if (a.second->item->isFolder != b.second->item->isFolder)
            return a.second->item->isFolder;
        return a.first.compare(b.first) < 0;
    });
    Rows sorted;
    sorted.reserve(rows.size());
    for (const auto& [key, row] : keys)
        sorted.push_back(std::move(*row));
    rows = std::move(sorted);
}

template <class Records>
Rows rowsOf(Records&& items)
{
    Rows rows;
    rows.reserve(items.GetSize());
    for (Api::Item& item : items) {
        QString name = shown(item.name);
        QString state = stateOf(item);
        rows.push_back({std::make_shared<const Api::Item>(std::move(item)), std::move(name), std::move(state)});
    }
    sortByName(rows);
    return rows;
}

Api::QVBuffer<Api::ItemId> idsOf(const Rows& rows)
{
    Api::QVBuffer<Api::ItemId> ids;
    for (const Row& row : rows)
        ids.Append(row.item->id);
    return ids;
}

Api::CommandContext contextOf(const Rows& rows)
{
    Api::CommandContext context;
    context.itemId = rows.front().item->id;
    context.itemIds = idsOf({rows.begin() + 1, rows.end()});
    return context;
}

// Calls `use` with the position of the item, the property and the value of each property that an item has.
template <class Use>
void readValues(Tessaport& tessaport, const Rows& rows, const Api::QVBuffer<QVString>& properties, Use use)
{
    if (properties.GetSize() == 0)
        return;
    std::unordered_map<QVString, std::size_t> positions;
    for (std::size_t i = 0; i < rows.size(); ++i)
        positions.emplace(rows[i].item->relativePath, i);
    for (const auto& value : tessaport.getStringPropertyValues(idsOf(rows), properties)) {
        const auto position = positions.find(value.relativePath);
        if (position != positions.end())
            use(position->second, value.propertyDefinitionId, value.value);
    }
}

// Only properties that the drive defines are asked for: whether others are a failure is up to the sync application.
Api::QVBuffer<QVString> definedAmong(Tessaport& tessaport, const Rows& rows, std::initializer_list<const char*> wanted)
{
    Api::QVBuffer<QVString> ids;
    for (const auto& definition : tessaport.getPropertyDefinitions(rows.front().item->driveId)) {
        if (std::any_of(wanted.begin(), wanted.end(), [&](const char* id) { return definition.id == id; }))
            ids.Append(definition.id);
    }
    return ids;
}

// The bytes are untrusted: the size is checked before anything is decoded.
QImage iconFrom(const std::vector<std::uint8_t>& bytes)
{
    if (bytes.size() > LargestIcon)
        return {};
    QByteArray data(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&data);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > 1024 || size.height() > 1024)
        return {};
    return reader.read().scaled(IconSize, IconSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QImage readIcon(const Api::Command& command, QStringList& problems)
{
    try {
        return iconFrom(Api::commandImage(command));
    } catch (const Api::ApiException& e) {
        problems += QString("The icon of the command %1 is missing: %2").arg(quoted(toQString(command.name)), e.what());
        return {};
    }
}

// What happened, with the reasons that the sync application gives for what did not.
Outcome outcomeOf(Tessaport& tessaport, const Api::CommandResult& result, const Rows& rows)
{
    Outcome outcome{result.isSuccess, result.itemsCreated.GetSize(), result.itemsUpdated.GetSize(),
        result.itemsDeleted.GetSize(), {}};
    if (outcome.success)
        return outcome;
    readValues(tessaport, rows, definedAmong(tessaport, rows, {"SyncError"}),
        [&](std::size_t position, const QVString&, const QVString& reason) {
            outcome.problems += QString("%1: %2").arg(quoted(rows[position].name), toQString(reason));
        });
    return outcome;
}

} // namespace

void Outcome::add(const Outcome& other)
{
    success = success && other.success;
    created += other.created;
    updated += other.updated;
    deleted += other.deleted;
    problems += other.problems;
}

Rows readDrives(Tessaport& tessaport)
{
    tessaport.discover();
    Rows roots;
    for (const Api::Drive& drive : tessaport.getDrives())
        roots.push_back({std::make_shared<const Api::Item>(drive.root), shown(drive.name), {}});
    return roots;
}

Rows readFolders(Tessaport& tessaport, const Row& folder) { return rowsOf(tessaport.getChildFolders(*folder.item)); }

Rows readContents(Tessaport& tessaport, const Row& folder) { return rowsOf(tessaport.getFolderContents(*folder.item)); }

Rows readDetails(Tessaport& tessaport, Rows rows)
{
    // The window asks again for what it shows. A host that looks items up by path keeps them.
    Tessaport::clearCachedItems();
    for (Row& row : rows)
        row.size = sizeOnDisk(*row.item);
    readValues(tessaport, rows, definedAmong(tessaport, rows, {"Size", "SyncState"}),
        [&](std::size_t position, const QVString& property, const QVString& value) {
            if (property == "Size")
                rows[position].size = toQString(value).toLongLong();
            else
                rows[position].state = stateOf(toQString(value));
        });
    return rows;
}

std::vector<Property> readProperties(Tessaport& tessaport, const Rows& rows)
{
    Api::QVBuffer<QVString> ids;
    std::vector<Property> properties;
    std::unordered_map<QVString, std::size_t> places;
    for (const auto& definition : tessaport.getPropertyDefinitions(rows.front().item->driveId)) {
        if (ids.GetSize() == MostProperties)
            break;
        places.emplace(definition.id, properties.size());
        properties.push_back({shown(definition.displayName), {}});
        ids.Append(definition.id);
    }
    readValues(tessaport, rows, ids, [&](std::size_t position, const QVString& property, const QVString& value) {
        const auto place = places.find(property);
        if (place == places.end())
            return;
        QString& text = properties[place->second].value;
        const QString found = shown(value, 1000);
        text = position == 0 || text == found ? found : "(different values)";
    });
    properties.erase(std::remove_if(properties.begin(), properties.end(),
                         [](const Property& property) { return property.value.isEmpty(); }),
        properties.end());
    return properties;
}

CommandMenu readCommands(Tessaport& tessaport, const Rows& rows)
{
    CommandMenu menu;
    for (const Api::Command& command : tessaport.getCommands(contextOf(rows))) {
        if (menu.entries.size() < MostCommands)
            menu.entries.push_back({command, shown(command.name, 80), readIcon(command, menu.problems)});
        else
            ++menu.leftOut;
    }
    return menu;
}

Outcome execute(Tessaport& tessaport, const Api::Command& command, const Rows& rows)
{
    return outcomeOf(tessaport, tessaport.executeCommand(command, contextOf(rows)), rows);
}

Outcome sync(Tessaport& tessaport, const Rows& rows)
{
    Api::QVBuffer<Api::Item> items;
    for (const Row& row : rows)
        items.Append(*row.item);
    return outcomeOf(tessaport, tessaport.syncFiles(items), rows);
}

Outcome addFiles(Tessaport& tessaport, const Row& folder, const QStringList& paths)
{
    Api::QVBuffer<QVString> wanted;
    for (const QString& path : paths)
        wanted.Append(fromQString(path));
    return outcomeOf(tessaport, tessaport.addFiles(*folder.item, wanted), {folder});
}

} // namespace DriveWindow
