#include "FolderModel.h"

#include <QApplication>
#include <QStyle>
#include <QTimer>
#include <algorithm>

namespace DriveWindow
{
namespace
{

// So many rows are added at a time that the window stays alive.
constexpr std::size_t ChunkSize = 1000;

struct TreeItem : QStandardItem {
    enum { Unread, Reading, Read } contents = Unread;
    Api::Item folder;

    TreeItem(const QIcon& icon, const Folder& shownFolder)
        : QStandardItem(icon, shownFolder.name), folder(shownFolder.item)
    {
        setEditable(false);
    }
};

} // namespace

FolderModel::FolderModel(Requests& windowRequests)
    : requests(windowRequests), icon(QApplication::style()->standardIcon(QStyle::SP_DirIcon))
{
}

void FolderModel::readDrives(std::function<void()> done)
{
    requests.ask(
        "list the drives", DriveWindow::readDrives,
        [this, done](const std::vector<Folder>& drives) {
            clear();
            ++timesRead;
            append({}, std::make_shared<std::vector<Folder>>(drives), 0);
            done();
        },
        [this, done] { readDrives(done); });
}

Api::Item FolderModel::itemAt(const QModelIndex& index) const
{
    return static_cast<const TreeItem*>(itemFromIndex(index))->folder;
}

QModelIndex FolderModel::find(const QModelIndex& parent, const Api::Item& folder, int first) const
{
    for (int i = first; i < rowCount(parent); ++i) {
        const QModelIndex child = index(i, 0, parent);
        if (itemAt(child).relativePath == folder.relativePath)
            return child;
    }
    return {};
}

bool FolderModel::hasChildren(const QModelIndex& parent) const
{
    return canFetchMore(parent) || QStandardItemModel::hasChildren(parent);
}

bool FolderModel::canFetchMore(const QModelIndex& parent) const
{
    return parent.isValid() && static_cast<const TreeItem*>(itemFromIndex(parent))->contents == TreeItem::Unread;
}

void FolderModel::fetchMore(const QModelIndex& parent)
{
    auto& item = *static_cast<TreeItem*>(itemFromIndex(parent));
    item.contents = TreeItem::Reading;
    const QPersistentModelIndex place(parent);
    const auto done = [this, place](std::vector<Folder> folders) {
        if (!place.isValid())
            return;
        static_cast<TreeItem*>(itemFromIndex(place))->contents = TreeItem::Read;
        append(place, std::make_shared<std::vector<Folder>>(std::move(folders)), 0);
    };
    const auto again = [this, place] {
        if (place.isValid())
            fetchMore(place);
    };
    const auto failed = [this, place] {
        if (place.isValid())
            static_cast<TreeItem*>(itemFromIndex(place))->contents = TreeItem::Unread;
    };
    requests.ask(
        "open the folder " + quoted(item.text()),
        [folder = item.folder](Tessaport& tessaport) { return readFolders(tessaport, folder); }, done, again, failed);
}

void FolderModel::append(
    const QPersistentModelIndex& parent, const std::shared_ptr<std::vector<Folder>>& folders, std::size_t first)
{
    const std::size_t end = std::min(first + ChunkSize, folders->size());
    QList<QStandardItem*> rows;
    for (std::size_t i = first; i < end; ++i)
        rows.append(new TreeItem(icon, (*folders)[i]));
    QStandardItem* target = parent.isValid() ? itemFromIndex(parent) : invisibleRootItem();
    target->appendRows(rows);
    if (end == folders->size())
        return;
    QTimer::singleShot(0, this, [this, parent, folders, end, current = timesRead] {
        if (current == timesRead)
            append(parent, folders, end);
    });
}

} // namespace DriveWindow
