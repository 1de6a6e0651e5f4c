#pragma once

#include <QMainWindow>
#include <QTimer>

#include "Desktop.h"
#include "FolderTree.h"
#include "ItemModel.h"
#include "Job.h"
#include "Notice.h"
#include "Requests.h"

class QLabel;
class QMenu;
class QTableView;
class QTextBrowser;
class QTreeWidget;

namespace DriveWindow
{

/// Shows the drives: folders on the left, the items of one folder in the middle, properties on the right, messages
/// below.
class Window : public QMainWindow
{
public:
    explicit Window(Desktop windowDesktop = {});

    /// Adds copies of local files to the folder that is shown.
    void addFiles(const QStringList& paths);

    [[nodiscard]] ItemModel& items() { return itemModel; }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void makeViews();
    void makeActions();
    void connectViews();

    void readDrives();
    void showFolder();
    void readFolder();
    void readDetails(unsigned ofListing, std::size_t first);
    void readProperties();
    void readCommands();
    void showCommands(const CommandMenu& found, const Rows& selection);

    void open(const Row& row);
    void sync();
    void startJob(const QString& doing, std::size_t count, Job::Step step);

    /// The selected items, at most so many.
    [[nodiscard]] Rows selectedRows(std::size_t most) const;
    void rememberSelection();
    void restoreSelection();
    void showCount();
    void report(const QString& message);
    void report(const Failure& failure, Requests::Again again);
    void report(const QString& doing, const Outcome& outcome, bool stopped);

    Desktop desktop;
    Notice* notice = nullptr;
    FolderTree* tree = nullptr;
    QTableView* list = nullptr;
    QTreeWidget* properties = nullptr;
    QTextBrowser* messages = nullptr;
    QMenu* commands = nullptr;
    QLabel* waiting = nullptr;
    QLabel* count = nullptr;
    Job* job = nullptr;
    QTimer selectionTimer;
    QTimer waitingTimer;
    Requests requests;
    ItemModel itemModel;
    unsigned listing = 0; // Numbers the contents of the list and of the views beside it; what comes for others is late.
    unsigned selected = 0;
    // The receiver of every signal. The last member: nothing happens any more to a window that is being destroyed.
    QObject alive;
};

} // namespace DriveWindow
