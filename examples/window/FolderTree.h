#pragma once

#include <QTreeWidget>

#include "Requests.h"
#include "Service.h"

namespace DriveWindow
{

struct FolderItem;

/// The tree of drives and folders. The folders in a folder are read when it is opened.
class FolderTree : public QTreeWidget
{
public:
    explicit FolderTree(Requests& windowRequests);

    /// Shows the drives. If they are others than before, the tree begins anew, and the first one is selected.
    void setDrives(const Items& roots);
    /// The folder that is selected; null if no folder is.
    [[nodiscard]] const Api::Item* folder() const;
    /// Reads the folders in the selected one again.
    void refresh();
    /// Selects a folder in the one that is selected, once the tree has it.
    void openFolder(const Api::Item& wantedFolder);

private:
    void read(FolderItem& parent);
    void selectWanted();

    Requests& requests;
    QVString wanted; // The relative path of the folder to be selected; empty if none is awaited.
};

} // namespace DriveWindow
