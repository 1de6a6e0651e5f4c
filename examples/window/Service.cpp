#include "Service.h"

#include <QBuffer>
#include <QCollator>
#include <QFileInfo>
#include <QImageReader>
#include <QMap>
#include <QSet>
#include <algorithm>
#include <initializer_list>
#include <map>
#include <numeric>
#include <utility>

#include <velmora/native/CommandImage.h>

namespace DriveWindow
{
namespace
{

constexpr std::size_t MostCommands = 100;
constexpr std::uint32_t MostProperties = 500;
constexpr std::size_t LargestIcon = 1 << 20; // In bytes.
constexpr int LargestIconSide = 1024;        // In pixels.

using Ids = Api::QVBuffer<QVString>;
using Values = std::map<std::pair<QVString, QVString>, QVString>; // By relative path and property.

Api::QVBuffer<Api::ItemId> idsOf(const Api::Item* first, const Api::Item* end)
{
    Api::QVBuffer<Api::ItemId> ids;
    std::for_each(first, end, [&](const Api::Item& item) { ids.Append(item.id); });
    return ids;
}

Api::CommandContext contextOf(const Items& items) { return {items[0]->id, idsOf(items.begin() + 1, items.end())}; }

Values readValues(Tessaport& api, const Items& items, const Ids& properties)
{
    Values values;
    if (properties.GetSize() == 0)
        return values;
    for (const auto& value : api.getStringPropertyValues(idsOf(items.begin(), items.end()), properties))
        values[{value.relativePath, value.propertyDefinitionId}] = value.value;
    return values;
}

// Only properties that the drive defines are asked for: whether others are a failure is up to the sync application.
Values readDefined(Tessaport& api, const Items& items, std::initializer_list<QVString> wanted)
{
    Ids ids;
    for (const auto& definition : api.getPropertyDefinitions(items[0]->driveId)) {
        if (std::find(wanted.begin(), wanted.end(), definition.id) != wanted.end())
            ids.Append(definition.id);
    }
    return readValues(api, items, ids);
}

QString stateOf(const Api::Item& item, const QString& word)
{
    static const QMap<QString, QString> states{{"in-sync", "In sync"}, {"changed-here", "Changed here"},
        {"changed-on-server", "Changed on the server"}, {"changed-on-both", "Changed on both sides"},
        {"only-here", "Only here"}, {"only-on-server", "Only on the server"}, {"locked", "In sync, locked"},
        {"left-out", "Cannot be synced"}, {"failed", "Failed"}};
    if (!word.isEmpty())
        return states.value(word, shown(word));
    if (item.isInWorkspace)
        return item.isOnServer ? "Here and on the server" : "Only here";
    return item.isOnServer ? "Only on the server" : QString();
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
    if (!size.isValid() || size.width() > LargestIconSide || size.height() > LargestIconSide)
        return {};
    return reader.read().scaled(32, 32, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

// What happened, with the reasons that the sync application gives for what did not.
Outcome outcomeOf(Tessaport& api, const Api::CommandResult& result, const Items& items)
{
    Outcome outcome{result.isSuccess, result.itemsCreated.GetSize(), result.itemsUpdated.GetSize(),
        result.itemsDeleted.GetSize(), {}};
    if (outcome.success)
        return outcome;
    const QVString error = "SyncError";
    Values reasons = readDefined(api, items, {error});
    for (const Api::Item& item : items) {
        const QString reason = toQString(reasons[{item.relativePath, error}]);
        if (!reason.isEmpty())
            outcome.problems += QString("%1: %2").arg(quoted(item.name), reason);
    }
    return outcome;
}

} // namespace

Items readDrives(Tessaport& api)
{
    api.discover();
    Items roots;
    for (const Api::Drive& drive : api.getDrives()) {
        roots.Append(drive.root);
        roots[roots.GetSize() - 1]->name = drive.name;
    }
    return roots;
}

std::vector<std::uint32_t> orderByName(const Items& items)
{
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<QCollatorSortKey> keys;
    for (const Api::Item& item : items)
        keys.push_back(collator.sortKey(shown(item.name)));
    std::vector<std::uint32_t> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(
        order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) { return keys[a].compare(keys[b]) < 0; });
    return order;
}

std::vector<Details> readDetails(Tessaport& api, const Items& items)
{
    // The window asks again for what it shows. A host that looks items up by path keeps them.
    Tessaport::clearCachedItems();
    const QVString size = "Size", state = "SyncState";
    Values values = readDefined(api, items, {size, state});
    std::vector<Details> details;
    for (const Api::Item& item : items) {
        const QFileInfo file(toQString(Api::localPath(item)));
        bool isKnown = false;
        const qint64 known = toQString(values[{item.relativePath, size}]).toLongLong(&isKnown);
        const QString word = toQString(values[{item.relativePath, state}]);
        details.push_back({isKnown ? known : file.isFile() ? file.size() : -1, stateOf(item, word)});
    }
    return details;
}

std::vector<QStringList> readProperties(Tessaport& api, const Items& items)
{
    const auto definitions = api.getPropertyDefinitions(items[0]->driveId);
    const std::uint32_t count = std::min(definitions.GetSize(), MostProperties);
    Ids ids;
    for (std::uint32_t i = 0; i < count; ++i)
        ids.Append(definitions[i]->id);
    Values values = readValues(api, items, ids);
    std::vector<QStringList> properties;
    for (std::uint32_t i = 0; i < count; ++i) {
        QSet<QString> found;
        for (const Api::Item& item : items)
            found.insert(shown(values[{item.relativePath, definitions[i]->id}], 1000));
        const QString text = found.size() == 1 ? *found.begin() : "(different values)";
        if (!text.isEmpty())
            properties.push_back({shown(definitions[i]->displayName), text});
    }
    return properties;
}

CommandMenu readCommands(Tessaport& api, const Items& items)
{
    CommandMenu menu;
    for (const Api::Command& command : api.getCommands(contextOf(items))) {
        if (menu.entries.size() == MostCommands) {
            ++menu.leftOut;
            continue;
        }
        menu.entries.push_back({command, {}});
        try {
            menu.entries.back().icon = iconFrom(Api::commandImage(command));
        } catch (const Api::ApiException& e) {
            menu.problems += QString("The icon of the command %1 is missing: %2").arg(quoted(command.name), e.what());
        }
    }
    return menu;
}

Outcome execute(Tessaport& api, const Api::Command& command, const Items& items)
{
    return outcomeOf(api, api.executeCommand(command, contextOf(items)), items);
}

Outcome sync(Tessaport& api, const Items& items) { return outcomeOf(api, api.syncFiles(items), items); }

QStringList namesThere(Tessaport& api, const Api::Item& folder, const QStringList& paths)
{
    QSet<QString> names;
    for (const QString& path : paths)
        names += QFileInfo(path).fileName();
    QStringList found;
    for (const auto& item : api.getFolderContents(folder)) {
        if (names.contains(toQString(item.name)) && found.size() < 10)
            found += quoted(item.name);
    }
    return found;
}

Outcome addFile(Tessaport& api, const Api::Item& folder, const QString& path)
{
    Ids paths;
    paths.Append(fromQString(path));
    Items target;
    target.Append(folder);
    return outcomeOf(api, api.addFiles(folder, paths), target);
}

} // namespace DriveWindow
