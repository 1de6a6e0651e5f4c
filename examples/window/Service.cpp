#include "Service.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>
#include <algorithm>
#include <map>
#include <system_error>
#include <unordered_map>
#include <utility>

#include <velmora/api/Interop.h>
#include <velmora/native/CommandImage.h>

namespace DriveWindow
{
namespace
{

constexpr std::size_t MostCommands = 100;
constexpr std::size_t MostProperties = 500;
constexpr std::size_t LargestIcon = 1 << 20; // In bytes.
constexpr int IconSize = 32;

template <class Records>
std::vector<Folder> foldersOf(const Records& items)
{
    std::vector<Folder> folders;
    for (const Api::Item& item : items)
        folders.push_back({item, shown(item.name)});
    return folders;
}

QString stateOf(const Api::Item& item)
{
    if (item.isInWorkspace && item.isOnServer)
        return "Here and on the server";
    if (item.isInWorkspace)
        return "Only here";
    return item.isOnServer ? "Only on the server" : "";
}

// The words of the local service; another word is shown as it is.
QString stateOf(const QString& word)
{
    static const std::map<QString, QString> texts{{"in-sync", "In sync"}, {"changed-here", "Changed here"},
        {"changed-on-server", "Changed on the server"}, {"changed-on-both", "Changed on both sides"},
        {"only-here", "Only here"}, {"only-on-server", "Only on the server"}, {"locked", "In sync, locked"},
        {"left-out", "Cannot be synced"}, {"failed", "Failed"}};
    const auto found = texts.find(word);
    return found == texts.end() ? shown(word) : found->second;
}

Api::QVBuffer<Api::ItemId> idsOf(const Items& items)
{
    Api::QVBuffer<Api::ItemId> ids;
    for (const Api::Item& item : items)
        ids.Append(item.id);
    return ids;
}

// Only properties that the drive defines are asked for: whether others are a failure is up to the sync application.
Api::QVBuffer<QVString> definedAmong(
    Tessaport& tessaport, const Items& items, std::initializer_list<const char*> wanted)
{
    Api::QVBuffer<QVString> ids;
    for (const auto& definition : tessaport.getPropertyDefinitions(items.front().driveId)) {
        if (std::any_of(wanted.begin(), wanted.end(), [&](const char* id) { return definition.id == id; }))
            ids.Append(definition.id);
    }
    return ids;
}

// Calls `use` with the position of the item, the property and the value of each property that an item has.
template <class Use>
void readValues(Tessaport& tessaport, const Items& items, const Api::QVBuffer<QVString>& properties, Use use)
{
    if (properties.GetSize() == 0)
        return;
    std::unordered_map<QVString, std::size_t> positions;
    for (std::size_t i = 0; i < items.size(); ++i)
        positions.emplace(items[i].relativePath, i);
    for (const auto& value : tessaport.getStringPropertyValues(idsOf(items), properties)) {
        const auto position = positions.find(value.relativePath);
        if (position != positions.end())
            use(position->second, value.propertyDefinitionId, value.value);
    }
}

qint64 sizeOnDisk(const Api::Item& item)
{
    if (item.isFolder || !item.isInWorkspace)
        return -1;
    std::error_code error;
    const auto size = std::filesystem::file_size(Api::localPath(item), error);
    return error ? -1 : static_cast<qint64>(size);
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

// The reasons that the sync application gives, and the items that it gives none for.
QStringList reasonsOf(Tessaport& tessaport, const Items& items)
{
    QStringList reasons;
    readValues(tessaport, items, definedAmong(tessaport, items, {"SyncError"}),
        [&](std::size_t position, const QVString&, const QVString& reason) {
            reasons += QString("%1: %2").arg(quoted(toQString(items[position].name)), toQString(reason));
        });
    return reasons;
}

Outcome outcomeOf(const Api::CommandResult& result)
{
    return {result.isSuccess, result.itemsCreated.GetSize(), result.itemsUpdated.GetSize(),
        result.itemsDeleted.GetSize(), {}};
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

std::vector<Folder> readDrives(Tessaport& tessaport)
{
    tessaport.discover();
    std::vector<Folder> roots;
    for (const Api::Drive& drive : tessaport.getDrives())
        roots.push_back({drive.root, shown(drive.name)});
    Tessaport::clearCachedItems();
    return roots;
}

std::vector<Folder> readFolders(Tessaport& tessaport, const Api::Item& folder)
{
    auto folders = foldersOf(tessaport.getChildFolders(folder));
    Tessaport::clearCachedItems();
    return folders;
}

std::vector<Row> readItems(Tessaport& tessaport, const Api::Item& folder)
{
    std::vector<Row> rows;
    for (Api::Item& item : tessaport.getFolderContents(folder)) {
        QString name = shown(item.name);
        QString state = stateOf(item);
        rows.push_back({std::move(item), std::move(name), std::move(state), -1});
    }
    // The window asks again for what it shows. A host that looks items up by path keeps them.
    Tessaport::clearCachedItems();
    return rows;
}

std::vector<Details> readDetails(Tessaport& tessaport, const Items& items)
{
    std::vector<Details> details;
    for (const Api::Item& item : items)
        details.push_back({stateOf(item), sizeOnDisk(item)});
    readValues(tessaport, items, definedAmong(tessaport, items, {"Size", "SyncState"}),
        [&](std::size_t position, const QVString& property, const QVString& value) {
            if (property == "Size")
                details[position].size = toQString(value).toLongLong();
            else
                details[position].state = stateOf(toQString(value));
        });
    return details;
}

std::vector<Property> readProperties(Tessaport& tessaport, const Items& items)
{
    Api::QVBuffer<QVString> ids;
    std::vector<Property> properties;
    std::unordered_map<QVString, std::size_t> places;
    for (const auto& definition : tessaport.getPropertyDefinitions(items.front().driveId)) {
        if (ids.GetSize() == MostProperties)
            break;
        places.emplace(definition.id, properties.size());
        properties.push_back({shown(definition.displayName), {}});
        ids.Append(definition.id);
    }
    readValues(tessaport, items, ids, [&](std::size_t position, const QVString& property, const QVString& value) {
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

Api::CommandContext contextOf(const Items& items)
{
    Api::CommandContext context;
    context.itemId = items.front().id;
    context.itemIds = idsOf({items.begin() + 1, items.end()});
    return context;
}

CommandMenu readCommands(Tessaport& tessaport, const Items& items)
{
    CommandMenu menu;
    for (const Api::Command& command : tessaport.getCommands(contextOf(items))) {
        if (menu.entries.size() < MostCommands)
            menu.entries.push_back({command, shown(command.name, 80), readIcon(command, menu.problems)});
        else
            ++menu.leftOut;
    }
    return menu;
}

Outcome execute(Tessaport& tessaport, const Api::Command& command, const Items& items)
{
    Outcome outcome = outcomeOf(tessaport.executeCommand(command, contextOf(items)));
    if (!outcome.success)
        outcome.problems = reasonsOf(tessaport, items);
    return outcome;
}

Outcome sync(Tessaport& tessaport, const Items& items)
{
    Api::QVBuffer<Api::Item> wanted;
    for (const Api::Item& item : items)
        wanted.Append(item);
    Outcome outcome = outcomeOf(tessaport.syncFiles(wanted));
    if (!outcome.success)
        outcome.problems = reasonsOf(tessaport, items);
    return outcome;
}

Outcome addFiles(Tessaport& tessaport, const Api::Item& folder, const QStringList& paths)
{
    Api::QVBuffer<QVString> wanted;
    for (const QString& path : paths)
        wanted.Append(fromQString(path));
    Outcome outcome = outcomeOf(tessaport.addFiles(folder, wanted));
    if (!outcome.success)
        outcome.problems = reasonsOf(tessaport, {folder});
    return outcome;
}

} // namespace DriveWindow
