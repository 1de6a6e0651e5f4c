#pragma once

#include <QDesktopServices>
#include <QMainWindow>
#include <QTimer>
#include <QUrl>
#include <functional>

#include "FolderTree.h"
#include "ItemModel.h"
#include "Requests.h"

class QFrame;
class QLabel;
class QMenu;
class QPushButton;
class QTableView;
class QTextBrowser;

namespace DriveWindow
{

/// Shows the drives: folders on the left, the items of one folder in the middle, properties on the right, messages
/// below.
class Window : public QMainWindow
{
public:
    Window();

    /// Adds copies of local files to the folder that is shown.
    void addFiles(const QStringList& paths);

    [[nodiscard]] ItemModel& items() { return itemModel; }

    /// Opens a file or a web address with its program, and returns whether there is one. Tests set another function.
    std::function<bool(const QUrl& url)> openUrl = QDesktopServices::openUrl;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct Job;
    using Step = std::function<Outcome(Tessaport& tessaport)>;

    void makeViews();
    QWidget* makeNotice();
    void makeActions();

    void refresh();
    void showFolder();
    void readFolder();
    void showDetails(unsigned ofListing, std::uint32_t first);
    void showProperties();
    void openCommands();
    void showCommands(const CommandMenu& found, const ItemList& items);

    void open(const Api::Item& item);
    void syncSelection();
    [[nodiscard]] bool agrees(const QString& question);
    /// Does something step by step, with progress and a button that stops it after the current step.
    void start(const QString& doing, std::vector<Step> steps);
    void proceed(const std::shared_ptr<Job>& job);

    /// The selected items, at most so many.
    [[nodiscard]] std::shared_ptr<Items> selection(std::uint32_t most = UINT32_MAX) const;
    void report(const QString& message);
    void showNotice(const Failure& failure, const Requests::Call& again);

    FolderTree* tree = nullptr;
    QTableView* list = nullptr;
    QTreeWidget* properties = nullptr;
    QTextBrowser* messages = nullptr;
    QMenu* commands = nullptr;
    QFrame* notice = nullptr;
    QLabel* noticeText = nullptr;
    QPushButton* retry = nullptr;
    Requests::Call tryAgain;
    QTimer selectionTimer;
    ItemModel itemModel;
    Requests requests;
    unsigned listing = 0; // Numbers the contents of the list and of the views beside it; what comes for others is late.
    unsigned selected = 0;
    // The receiver of every signal. The last member: nothing happens any more to a window that is being destroyed.
    QObject alive;
};

} // namespace DriveWindow
