#include "FolderTree.h"

#include <QHash>
#include <QSet>
#include <QStyle>
#include <utility>

namespace DriveWindow
{

// An item that answers for itself takes less time and memory than one that keeps a value for each role.
struct FolderItem : QTreeWidgetItem {
    explicit FolderItem(Row shownFolder) : folder(std::move(shownFolder)) { setChildIndicatorPolicy(ShowIndicator); }

    [[nodiscard]] QVariant data(int, int role) const override
    {
        if (role == Qt::DisplayRole)
            return folder.name;
        return role == Qt::DecorationRole ? static_cast<const FolderTree*>(treeWidget())->icon : QVariant();
    }

    Row folder;
    enum { Unread, Reading, Read } contents = Unread;
    // Gone with the item, which answers that come later learn from it. Their requests may end on the request thread,
    // which must not have a part in the tree.
    std::shared_ptr<FolderItem*> self;
};

namespace
{

// Many items take long to make, so the request thread makes them.
FolderItems itemsOf(Rows folders)
{
    FolderItems items;
    items.reserve(folders.size());
    for (Row& folder : folders)
        items.push_back(std::make_unique<FolderItem>(std::move(folder)));
    return items;
}

FolderItem* folderItem(QTreeWidgetItem* item) { return static_cast<FolderItem*>(item); }

// Deletes the items from a row on whose folders no longer exist, and returns the others by name.
QHash<QString, FolderItem*> keepOnly(const FolderItems& folders, QTreeWidgetItem& parent, int first)
{
    QHash<QString, FolderItem*> kept;
    QSet<QString> names;
    for (std::size_t i = static_cast<std::size_t>(first); i < folders.size() && parent.childCount() > first; ++i)
        names.insert(folders[i]->folder.name);
    for (int i = parent.childCount() - 1; i >= first; --i) {
        FolderItem* child = folderItem(parent.child(i));
        const QString& name = child->folder.name;
        if (names.contains(name) && !kept.contains(name))
            kept.insert(name, child);
        else
            delete child;
    }
    return kept;
}

} // namespace

FolderTree::FolderTree(Requests& windowRequests)
    : requests(windowRequests), icon(style()->standardIcon(QStyle::SP_DirIcon))
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        if (folderItem(item)->contents == FolderItem::Unread)
            read(*folderItem(item));
    });
    connect(this, &QTreeWidget::currentItemChanged, this, [this] { wanted = {}; });
}

void FolderTree::readDrives(const std::function<void()>& done)
{
    requests.ask(
        "list the drives", [](Tessaport& tessaport) { return itemsOf(DriveWindow::readDrives(tessaport)); },
        [this, done](FolderItems drives) {
            update(*invisibleRootItem(), std::move(drives));
            done();
        });
}

const Row* FolderTree::folder() const
{
    return currentItem() == nullptr ? nullptr : &folderItem(currentItem())->folder;
}

void FolderTree::openFolder(const Row& wantedFolder)
{
    wanted = wantedFolder.item->relativePath;
    selectWanted();
    if (wanted.Empty())
        return;
    read(*folderItem(currentItem()));
    currentItem()->setExpanded(true);
}

void FolderTree::read(FolderItem& item)
{
    item.contents = FolderItem::Reading;
    if (item.self == nullptr)
        item.self = std::make_shared<FolderItem*>(&item);
    const std::weak_ptr<FolderItem*> place(item.self);
    const auto done = [this, place](FolderItems folders) {
        const auto parent = place.lock();
        if (parent == nullptr)
            return;
        (*parent)->contents = FolderItem::Read;
        (*parent)->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
        update(**parent, std::move(folders));
    };
    const auto failed = [place] {
        if (const auto parent = place.lock())
            (*parent)->contents = FolderItem::Unread;
    };
    requests.ask(
        "open the folder " + quoted(item.folder.name),
        [folder = item.folder](Tessaport& tessaport) { return itemsOf(readFolders(tessaport, folder)); }, done, failed);
}

void FolderTree::update(QTreeWidgetItem& parent, FolderItems folders)
{
    int row = 0;
    const auto keep = [&](FolderItem& item, FolderItem& now) {
        std::swap(item.folder, now.folder);
        ++row;
        if (item.contents == FolderItem::Read)
            read(item);
    };
    // Most of them are usually where they were.
    auto next = folders.begin();
    while (row < parent.childCount() && next != folders.end() &&
           folderItem(parent.child(row))->folder.name == (*next)->folder.name)
        keep(*folderItem(parent.child(row)), **next++);

    QHash<QString, FolderItem*> kept = keepOnly(folders, parent, row);
    QList<QTreeWidgetItem*> added;
    const auto insertAdded = [&] {
        parent.insertChildren(row, added);
        row += static_cast<int>(added.size());
        added.clear();
    };
    for (; next != folders.end(); ++next) {
        FolderItem* item = kept.isEmpty() ? nullptr : kept.take((*next)->folder.name);
        if (item == nullptr) {
            added += next->release();
            continue;
        }
        insertAdded();
        if (parent.child(row) != item) {
            parent.removeChild(item);
            parent.insertChild(row, item);
        }
        keep(*item, **next);
    }
    insertAdded();
    selectWanted();
    requests.destroy(std::move(folders));
}

void FolderTree::selectWanted()
{
    for (int i = 0; !wanted.Empty() && i < currentItem()->childCount(); ++i) {
        if (folderItem(currentItem()->child(i))->folder.item->relativePath == wanted)
            setCurrentItem(currentItem()->child(i));
    }
}

} // namespace DriveWindow
