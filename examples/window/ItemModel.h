#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QString>
#include <QThreadPool>
#include <cstdint>
#include <vector>

#include "Service.h"

namespace DriveWindow
{

/// The list of the items in a folder, sorted and filtered.
///
/// It sorts on a thread of its own: a proxy model would take seconds for 100,000 items, on the thread of the window.
/// A new arrangement resets the model.
class ItemModel : public QAbstractTableModel
{
public:
    enum Column { Name, Size, Modified, State, ColumnCount };

    ItemModel();
    ~ItemModel() override;

    void setItems(std::vector<Row> items);
    /// Adds to the rows what was read later. `first` counts the items as they were given.
    void setDetails(std::size_t first, const std::vector<Details>& details);
    /// Shows only items whose names contain this, in either case.
    void setFilter(const QString& text);

    /// All items, in the order in which they were given.
    [[nodiscard]] const std::vector<Row>& items() const { return rows; }
    /// The position of a shown row among items().
    [[nodiscard]] std::size_t positionOf(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    void arrange();
    void show(std::vector<std::uint32_t> arranged);

    std::vector<Row> rows;
    std::vector<std::uint32_t> order; // Positions in `rows`.
    QIcon folderIcon;
    QIcon fileIcon;
    QString filter;
    int sortColumn = Name;
    bool descending = false;
    unsigned arrangement = 0; // The number of the latest; others are out of date.
    QThreadPool pool;
};

} // namespace DriveWindow
