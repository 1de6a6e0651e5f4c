#include "FolderTree.h"

#include <QFileIconProvider>
#include <QThreadPool>
#include <algorithm>
#include <utility>

namespace DriveWindow
{

// An item that answers for itself takes less time and memory than one that keeps a value for each role.
struct FolderItem : QTreeWidgetItem {
    explicit FolderItem(Api::Item shownFolder) : folder(std::move(shownFolder))
    {
        setChildIndicatorPolicy(ShowIndicator);
    }

    [[nodiscard]] QVariant data(int, int role) const override
    {
        if (role == Qt::DisplayRole)
            return shown(folder.name);
        return role == Qt::DecorationRole ? QFileIconProvider().icon(QFileIconProvider::Folder) : QVariant();
    }

    Api::Item folder;
    bool isRead = false;
    // Gone with the item, which answers that come later learn from it. Their requests may end on the request thread,
    // which must not have a part in the tree.
    std::shared_ptr<FolderItem*> self;
};

namespace
{

using FolderItems = std::vector<std::unique_ptr<FolderItem>>;

FolderItem* folderItem(QTreeWidgetItem* item) { return static_cast<FolderItem*>(item); }

// Many items take long to make, so the request thread makes them.
FolderItems readFolders(Tessaport& api, const Api::Item& parent)
{
    FolderItems items;
    const Items folders = api.getChildFolders(parent);
    for (const std::uint32_t position : orderByName(folders))
        items.push_back(std::make_unique<FolderItem>(*folders[position]));
    return items;
}

} // namespace

FolderTree::FolderTree(Requests& windowRequests) : requests(windowRequests)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        if (!folderItem(item)->isRead)
            read(*folderItem(item));
    });
    connect(this, &QTreeWidget::currentItemChanged, this, [this] { wanted = {}; });
}

void FolderTree::setDrives(const Items& roots)
{
    bool same = topLevelItemCount() == static_cast<int>(roots.GetSize());
    for (std::uint32_t i = 0; same && i < roots.GetSize(); ++i) {
        const Api::Item& drive = folderItem(topLevelItem(static_cast<int>(i)))->folder;
        same = drive.driveId == roots[i]->driveId && drive.name == roots[i]->name;
    }
    if (same)
        return;
    clear();
    for (const Api::Item& root : roots)
        addTopLevelItem(new FolderItem(root));
    setCurrentItem(topLevelItem(0));
    expand(currentIndex());
}

const Api::Item* FolderTree::folder() const
{
    return currentItem() == nullptr ? nullptr : &folderItem(currentItem())->folder;
}

void FolderTree::refresh() { read(*folderItem(currentItem())); }

void FolderTree::openFolder(const Api::Item& wantedFolder)
{
    wanted = wantedFolder.relativePath;
    selectWanted();
    if (!wanted.Empty())
        refresh();
}

void FolderTree::read(FolderItem& parent)
{
    parent.isRead = true;
    if (parent.self == nullptr)
        parent.self = std::make_shared<FolderItem*>(&parent);
    const std::weak_ptr<FolderItem*> place(parent.self);
    requests.ask(
        "open the folder " + quoted(parent.folder.name),
        [folder = parent.folder](Tessaport& api) { return readFolders(api, folder); },
        [this, place](FolderItems folders) {
            const auto self = place.lock();
            // Once the user has gone on, the selected folder may be one of those that would be replaced.
            if (self == nullptr || ((*self)->childCount() > 0 && *self != currentItem()))
                return;
            QList<QTreeWidgetItem*> children;
            for (auto& folder : folders)
                children += folder.release();
            // Many items take long to delete. Those that may await an answer are deleted on the thread that gets it.
            QList<QTreeWidgetItem*> unread = (*self)->takeChildren();
            const auto read = std::partition(
                unread.begin(), unread.end(), [](auto* child) { return folderItem(child)->self == nullptr; });
            qDeleteAll(read, unread.end());
            unread.erase(read, unread.end());
            QThreadPool::globalInstance()->start([unread] { qDeleteAll(unread); });
            (*self)->addChildren(children);
            (*self)->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
            selectWanted();
        },
        [place] {
            if (const auto self = place.lock())
                (*self)->isRead = false;
        });
}

void FolderTree::selectWanted()
{
    for (int i = 0; !wanted.Empty() && i < currentItem()->childCount(); ++i) {
        if (folderItem(currentItem()->child(i))->folder.relativePath == wanted)
            setCurrentItem(currentItem()->child(i));
    }
}

} // namespace DriveWindow
