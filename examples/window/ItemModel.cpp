#include "ItemModel.h"

#include <QApplication>
#include <QCollator>
#include <QLocale>
#include <QStyle>
#include <algorithm>
#include <memory>
#include <numeric>

namespace DriveWindow
{
namespace
{

// What sorting needs of the rows: copied, because they change while another thread sorts.
struct SortTask {
    std::vector<QString> names;
    std::vector<QString> states; // Empty unless they are sorted by.
    std::vector<qint64> numbers; // Likewise.
    std::vector<bool> folders;
    QString filter;
    bool descending;
};

std::vector<QCollatorSortKey> sortKeys(const std::vector<QString>& texts)
{
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<QCollatorSortKey> keys;
    keys.reserve(texts.size());
    for (const QString& text : texts)
        keys.push_back(collator.sortKey(text));
    return keys;
}

std::vector<std::uint32_t> arranged(const SortTask& task)
{
    std::vector<std::uint32_t> order;
    for (std::uint32_t i = 0; i < task.names.size(); ++i) {
        if (task.names[i].contains(task.filter, Qt::CaseInsensitive))
            order.push_back(i);
    }
    const auto names = sortKeys(task.names);
    const auto states = sortKeys(task.states);
    const auto isBefore = [&](std::uint32_t a, std::uint32_t b) {
        if (!task.numbers.empty() && task.numbers[a] != task.numbers[b])
            return task.numbers[a] < task.numbers[b];
        const int byState = states.empty() ? 0 : states[a].compare(states[b]);
        return byState != 0 ? byState < 0 : names[a].compare(names[b]) < 0;
    };
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        if (task.folders[a] != task.folders[b])
            return static_cast<bool>(task.folders[a]);
        return task.descending ? isBefore(b, a) : isBefore(a, b);
    });
    return order;
}

} // namespace

ItemModel::ItemModel()
    : folderIcon(QApplication::style()->standardIcon(QStyle::SP_DirIcon)),
      fileIcon(QApplication::style()->standardIcon(QStyle::SP_FileIcon))
{
    pool.setMaxThreadCount(1);
}

ItemModel::~ItemModel()
{
    pool.clear();
    pool.waitForDone();
}

void ItemModel::setItems(std::vector<Row> items)
{
    beginResetModel();
    order.clear();
    // Many items take long to destroy.
    pool.start(
        [old = std::make_shared<std::vector<Row>>(std::exchange(rows, std::move(items)))]() mutable { old.reset(); });
    endResetModel();
    arrange();
}

void ItemModel::setDetails(std::size_t first, const std::vector<Details>& details)
{
    for (std::size_t i = 0; i < details.size(); ++i) {
        rows[first + i].state = details[i].state;
        rows[first + i].size = details[i].size;
    }
    if (!order.empty())
        emit dataChanged(index(0, Size), index(rowCount() - 1, State));
    if (first + details.size() == rows.size() && (sortColumn == Size || sortColumn == State))
        arrange();
}

void ItemModel::setFilter(const QString& text)
{
    filter = text;
    arrange();
}

std::size_t ItemModel::positionOf(const QModelIndex& index) const
{
    return order[static_cast<std::size_t>(index.row())];
}

int ItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(order.size());
}

int ItemModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant ItemModel::data(const QModelIndex& index, int role) const
{
    const Row& row = rows[positionOf(index)];
    if (role == Qt::DecorationRole && index.column() == Name)
        return row.item.isFolder ? folderIcon : fileIcon;
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
        return localTime(row.item.lastModifiedDate);
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

void ItemModel::arrange()
{
    auto task = std::make_shared<SortTask>();
    task->filter = filter;
    task->descending = descending;
    for (const Row& row : rows) {
        task->names.push_back(row.name);
        task->folders.push_back(row.item.isFolder);
        if (sortColumn == State)
            task->states.push_back(row.state);
        else if (sortColumn != Name)
            task->numbers.push_back(sortColumn == Size ? row.size : row.item.lastModifiedDate);
    }
    pool.start([this, task, number = ++arrangement] {
        // The destructor waits for this thread, and what it has posted is removed with this object.
        QMetaObject::invokeMethod(this, [this, order = arranged(*task), number]() mutable {
            if (number == arrangement)
                show(std::move(order));
        });
    });
}

void ItemModel::show(std::vector<std::uint32_t> arranged)
{
    beginResetModel();
    order = std::move(arranged);
    endResetModel();
}

} // namespace DriveWindow
