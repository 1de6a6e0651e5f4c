#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QString>
#include <cstdint>
#include <vector>

#include "Service.h"

namespace DriveWindow
{

/// The list of the items in a folder, sorted and filtered. A new arrangement resets the model.
///
/// A proxy model would sort 100,000 items for seconds. Here the names arrive in order, and the rest are numbers.
class ItemModel : public QAbstractTableModel
{
public:
    enum Column { Name, Size, Modified, State, ColumnCount };

    ItemModel();

    /// Sets the items, in the order of their names, and returns the previous ones.
    Rows setItems(Rows items);
    /// Sets the sizes and states of items. `first` counts the items as they were given.
    void setDetails(std::size_t first, const Rows& details);
    /// Shows only items whose names contain this, in either case.
    void setFilter(const QString& text);

    /// All items, in the order in which they were given.
    [[nodiscard]] const Rows& items() const { return rows; }
    [[nodiscard]] const Row& at(int row) const { return rows[order[static_cast<std::size_t>(row)]]; }

    /// Marks a shown item. Marks stay with their items when these are arranged, hidden or read again.
    void mark(int row) { marks[order[static_cast<std::size_t>(row)]] = true; }
    void unmarkShown();
    [[nodiscard]] bool isMarked(int row) const { return marks[order[static_cast<std::size_t>(row)]]; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    /// What a row is sorted by: files after folders, then a number.
    using Key = std::pair<bool, qint64>;

    [[nodiscard]] std::vector<Key> sortKeys() const;
    [[nodiscard]] std::vector<std::uint32_t> arranged() const;
    void arrange();

    Rows rows;
    std::vector<bool> marks;          // One for each of `rows`.
    std::vector<std::uint32_t> order; // Positions in `rows`.
    QIcon folderIcon;
    QIcon fileIcon;
    QString filter;
    int sortColumn = Name;
    bool descending = false;
};

} // namespace DriveWindow
