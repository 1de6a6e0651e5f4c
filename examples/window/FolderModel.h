#pragma once

#include <QIcon>
#include <QPersistentModelIndex>
#include <QStandardItemModel>
#include <functional>
#include <memory>
#include <vector>

#include "Requests.h"
#include "Service.h"

namespace DriveWindow
{

/// The tree of drives and folders. A view has the folders in a folder read when it opens it.
class FolderModel : public QStandardItemModel
{
public:
    explicit FolderModel(Requests& windowRequests);

    /// Reads the drives, which then replace what the tree has.
    void readDrives(std::function<void()> done);

    [[nodiscard]] Api::Item itemAt(const QModelIndex& index) const;
    /// Returns a folder among those directly in another one, from a row on; invalid if it has not been read.
    [[nodiscard]] QModelIndex find(const QModelIndex& parent, const Api::Item& folder, int first = 0) const;

    [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    void append(
        const QPersistentModelIndex& parent, const std::shared_ptr<std::vector<Folder>>& folders, std::size_t first);

    Requests& requests;
    QIcon icon;
    int timesRead = 0;
};

} // namespace DriveWindow
