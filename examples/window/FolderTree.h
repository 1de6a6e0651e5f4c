#pragma once

#include <QIcon>
#include <QTreeWidget>
#include <functional>
#include <memory>
#include <vector>

#include "Requests.h"
#include "Service.h"

namespace DriveWindow
{

struct FolderItem;
using FolderItems = std::vector<std::unique_ptr<FolderItem>>;

/// The tree of drives and folders. The folders in a folder are read when it is opened.
class FolderTree : public QTreeWidget
{
public:
    explicit FolderTree(Requests& windowRequests);

    /// Reads the drives, and again what has been read below them. What still exists stays open and selected.
    void readDrives(const std::function<void()>& done);
    /// The folder that is selected; null if no folder is.
    [[nodiscard]] const Row* folder() const;
    /// Selects a folder in the one that is selected, once the tree has it.
    void openFolder(const Row& wantedFolder);

private:
    friend struct FolderItem;

    void read(FolderItem& item);
    void update(QTreeWidgetItem& parent, FolderItems folders);
    void selectWanted();

    Requests& requests;
    QIcon icon;
    QVString wanted; // The relative path of the folder to be selected; empty if none is awaited.
};

} // namespace DriveWindow
