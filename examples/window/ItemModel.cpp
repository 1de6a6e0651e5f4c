#include "ItemModel.h"

#include <QApplication>
#include <QHash>
#include <QLocale>
#include <QStringMatcher>
#include <QStyle>
#include <algorithm>
#include <unordered_set>
#include <utility>

namespace DriveWindow
{
namespace
{

// The states of the rows as numbers in their order.
std::vector<qint64> numberedStates(const Rows& rows)
{
    QHash<QString, std::size_t> found; // In the order in which they were found: there are few of them.
    std::vector<std::size_t> states;
    states.reserve(rows.size());
    for (const Row& row : rows) {
        const auto known = found.constFind(row.state);
        states.push_back(known != found.cend() ? *known : *found.insert(row.state, std::size_t(found.size())));
    }
    QStringList sorted = found.keys();
    sorted.sort();
    std::vector<qint64> numbers(states.size());
    for (qsizetype i = 0; i < sorted.size(); ++i)
        numbers[found[sorted[i]]] = i;
    std::vector<qint64> result;
    result.reserve(states.size());
    for (const std::size_t state : states)
        result.push_back(numbers[state]);
    return result;
}

} // namespace

ItemModel::ItemModel()
    : folderIcon(QApplication::style()->standardIcon(QStyle::SP_DirIcon)),
      fileIcon(QApplication::style()->standardIcon(QStyle::SP_FileIcon))
{
}

Rows ItemModel::setItems(Rows items)
{
    beginResetModel();
    std::unordered_set<QVString> marked;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (marks[i])
            marked.insert(rows[i].item->relativePath);
    }
    std::swap(rows, items);
    marks.assign(rows.size(), false);
    for (std::size_t i = 0; i < rows.size() && !marked.empty(); ++i)
        marks[i] = marked.count(rows[i].item->relativePath) > 0;
    order = arranged();
    endResetModel();
    return items;
}

void ItemModel::setDetails(std::size_t first, const Rows& details)
{
    for (std::size_t i = 0; i < details.size(); ++i) {
        rows[first + i].state = details[i].state;
        rows[first + i].size = details[i].size;
    }
    if (first + details.size() == rows.size() && (sortColumn == Size || sortColumn == State))
        arrange();
    else if (!order.empty())
        emit dataChanged(index(0, Size), index(rowCount() - 1, State));
}

void ItemModel::setFilter(const QString& text)
{
    filter = text;
    arrange();
}

void ItemModel::unmarkShown()
{
    for (const std::uint32_t position : order)
        marks[position] = false;
}

int ItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(order.size());
}

int ItemModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant ItemModel::data(const QModelIndex& index, int role) const
{
    const Row& row = at(index.row());
    if (role == Qt::DecorationRole && index.column() == Name)
        return row.item->isFolder ? folderIcon : fileIcon;
    if (role == Qt::TextAlignmentRole && index.column() == Size)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Name:
        return row.name;
    case Size:
        return row.size < 0 ? QString() : QLocale().formattedDataSize(row.size);
    case Modified:
        return localTime(row.item->lastModifiedDate);
    default:
        return row.state;
    }
}

QVariant ItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QStringList{"Name", "Size", "Modified", "State"}.value(section);
}

void ItemModel::sort(int column, Qt::SortOrder sortOrder)
{
    sortColumn = column;
    descending = sortOrder == Qt::DescendingOrder;
    arrange();
}

std::vector<ItemModel::Key> ItemModel::sortKeys() const
{
    const std::vector<qint64> states = sortColumn == State ? numberedStates(rows) : std::vector<qint64>();
    std::vector<Key> keys;
    keys.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const qint64 number = sortColumn == State      ? states[i]
                              : sortColumn == Size     ? rows[i].size
                              : sortColumn == Modified ? rows[i].item->lastModifiedDate
                                                       : static_cast<qint64>(i);
        keys.emplace_back(!rows[i].item->isFolder, number);
    }
    return keys;
}

std::vector<std::uint32_t> ItemModel::arranged() const
{
    const QStringMatcher matcher(filter, Qt::CaseInsensitive);
    std::vector<std::uint32_t> positions;
    for (std::uint32_t i = 0; i < rows.size(); ++i) {
        if (filter.isEmpty() || matcher.indexIn(rows[i].name) >= 0)
            positions.push_back(i);
    }
    const std::vector<Key> keys = sortKeys();
    std::stable_sort(
        positions.begin(), positions.end(), [&](std::uint32_t a, std::uint32_t b) { return keys[a] < keys[b]; });
    if (descending) {
        const auto files = std::partition_point(
            positions.begin(), positions.end(), [&](std::uint32_t i) { return rows[i].item->isFolder; });
        std::reverse(positions.begin(), files);
        std::reverse(files, positions.end());
    }
    return positions;
}

void ItemModel::arrange()
{
    beginResetModel();
    order = arranged();
    endResetModel();
}

} // namespace DriveWindow
