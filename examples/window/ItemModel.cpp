#include "ItemModel.h"

#include <QDateTime>
#include <QLocale>
#include <QThreadPool>
#include <algorithm>
#include <numeric>
#include <utility>

namespace DriveWindow
{

void ItemModel::setItems(ItemList items)
{
    beginResetModel();
    // Many items take long to destroy.
    QThreadPool::globalInstance()->start([old = std::exchange(all, std::move(items))]() mutable { old.reset(); });
    details.assign(all->GetSize(), {});
    byName.resize(all->GetSize());
    std::iota(byName.begin(), byName.end(), 0);
    order = arranged();
    endResetModel();
}

void ItemModel::setOrderByName(std::vector<std::uint32_t> positions)
{
    byName = std::move(positions);
    arrange();
}

void ItemModel::setDetails(std::uint32_t first, const std::vector<Details>& found)
{
    std::copy(found.begin(), found.end(), details.begin() + first);
    if (first + found.size() == details.size() && (sortColumn == Size || sortColumn == State))
        arrange();
    else if (!order.empty())
        emit dataChanged(index(0, Size), index(rowCount() - 1, State));
}

void ItemModel::setFilter(const QString& text)
{
    filter = text;
    arrange();
}

int ItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(order.size());
}

int ItemModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant ItemModel::data(const QModelIndex& index, int role) const
{
    const Api::Item& item = at(index.row());
    const Details& known = details[order[static_cast<std::size_t>(index.row())]];
    if (role == Qt::DecorationRole && index.column() == Name)
        return icons.icon(item.isFolder ? QFileIconProvider::Folder : QFileIconProvider::File);
    if (role == Qt::TextAlignmentRole && index.column() == Size)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Name:
        return shown(item.name);
    case Size:
        return known.size < 0 ? QString() : QLocale().formattedDataSize(known.size);
    case Modified:
        return QLocale().toString(QDateTime::fromSecsSinceEpoch(item.lastModifiedDate), QLocale::ShortFormat);
    default:
        return known.state;
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

// Folders come first, and what is equal is in the order of its names.
std::vector<std::uint32_t> ItemModel::arranged() const
{
    std::vector<std::uint32_t> positions;
    for (const std::uint32_t i : byName) {
        if (filter.isEmpty() || toQString((*all)[i]->name).contains(filter, Qt::CaseInsensitive))
            positions.push_back(i);
    }
    if (descending)
        std::reverse(positions.begin(), positions.end());
    std::stable_sort(positions.begin(), positions.end(), [this](std::uint32_t a, std::uint32_t b) {
        if ((*all)[a]->isFolder != (*all)[b]->isFolder)
            return (*all)[a]->isFolder;
        if (descending)
            std::swap(a, b);
        switch (sortColumn) {
        case Size:
            return details[a].size < details[b].size;
        case Modified:
            return (*all)[a]->lastModifiedDate < (*all)[b]->lastModifiedDate;
        case State:
            return details[a].state < details[b].state;
        default:
            return false;
        }
    });
    return positions;
}

// Keeps the selection, as far as its items are shown.
void ItemModel::arrange()
{
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const std::vector<std::uint32_t> before = std::exchange(order, arranged());
    std::vector<int> rows(all->GetSize(), -1);
    for (std::size_t row = 0; row < order.size(); ++row)
        rows[order[row]] = static_cast<int>(row);
    for (const QModelIndex& old : persistentIndexList())
        changePersistentIndex(old, index(rows[before[static_cast<std::size_t>(old.row())]], old.column()));
    emit layoutChanged({}, VerticalSortHint);
}

} // namespace DriveWindow
