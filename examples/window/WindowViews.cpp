// What the window consists of, and what happens on which signal.
#include <QAction>
#include <QDockWidget>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTableView>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "Window.h"

namespace DriveWindow
{
namespace
{

template <class View>
View* withName(View* view, const char* name)
{
    view->setObjectName(name);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setAlternatingRowColors(true);
    return view;
}

void addDock(QMainWindow& window, Qt::DockWidgetArea area, const char* title, QWidget* content)
{
    auto* dock = new QDockWidget(title);
    dock->setObjectName(title);
    dock->setFeatures(QDockWidget::DockWidgetMovable);
    dock->setWidget(content);
    window.addDockWidget(area, dock);
}

QTableView* makeList(ItemModel& model)
{
    auto* list = withName(new QTableView, "list");
    list->setModel(&model);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    list->setShowGrid(false);
    list->setWordWrap(false);
    list->verticalHeader()->hide();
    list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() + 8);
    list->horizontalHeader()->setSectionResizeMode(ItemModel::Name, QHeaderView::Stretch);
    list->horizontalHeader()->setHighlightSections(false);
    list->setColumnWidth(ItemModel::Size, 75);
    list->setColumnWidth(ItemModel::Modified, 130);
    list->setColumnWidth(ItemModel::State, 130);
    list->sortByColumn(ItemModel::Name, Qt::AscendingOrder);
    list->setSortingEnabled(true);
    return list;
}

} // namespace

void Window::makeViews()
{
    setWindowTitle("Drives");
    resize(1100, 680);
    setAcceptDrops(true);
    tree = withName(new FolderTree(requests), "tree");
    list = makeList(itemModel);
    properties = withName(new QTreeWidget, "properties");
    properties->setHeaderLabels({"Property", "Value"});
    properties->setRootIsDecorated(false);
    messages = new QTextBrowser;
    messages->setObjectName("messages");
    messages->setOpenLinks(false);
    messages->document()->setMaximumBlockCount(1000);

    auto* middle = new QWidget;
    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(notice = new Notice);
    layout->addWidget(list);
    auto* splitter = new QSplitter;
    splitter->addWidget(tree);
    splitter->addWidget(middle);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({190, 650});
    setCentralWidget(splitter);
    addDock(*this, Qt::RightDockWidgetArea, "Properties", properties);
    addDock(*this, Qt::BottomDockWidgetArea, "Messages", messages);
    resizeDocks(findChildren<QDockWidget*>(), {110, 110}, Qt::Vertical);
    resizeDocks(findChildren<QDockWidget*>(), {250, 250}, Qt::Horizontal);

    job = new Job(requests, [this](const QString& doing, const Outcome& outcome, bool stopped) {
        report(doing, outcome, stopped);
        readFolder();
    });
    statusBar()->addWidget(count = new QLabel);
    statusBar()->addWidget(waiting = new QLabel);
    statusBar()->addPermanentWidget(job);
    count->setObjectName("count");
    waiting->setObjectName("waiting");
}

void Window::makeActions()
{
    QToolBar* bar = addToolBar("Actions");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto add = [&](QStyle::StandardPixmap icon, const char* text, const QKeySequence& keys, auto handle) {
        QAction* action = bar->addAction(style()->standardIcon(icon), text);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, &alive, handle);
    };
    add(QStyle::SP_FileDialogToParent, "Up", QKeySequence("Alt+Up"), [this] {
        if (tree->currentIndex().parent().isValid())
            tree->setCurrentIndex(tree->currentIndex().parent());
    });
    add(QStyle::SP_BrowserReload, "Refresh", QKeySequence::Refresh, [this] {
        readDrives();
        readFolder();
    });
    add(QStyle::SP_FileDialogNewFolder, "Add files…", QKeySequence("Ctrl+N"),
        [this] { addFiles(desktop.chooseFiles(this)); });
    add(QStyle::SP_DialogApplyButton, "Sync", QKeySequence("Ctrl+S"), [this] { sync(); });
    auto* filter = new QLineEdit;
    filter->setObjectName("filter");
    filter->setPlaceholderText("Filter by name");
    filter->setClearButtonEnabled(true);
    connect(filter, &QLineEdit::textChanged, &alive, [this](const QString& text) { itemModel.setFilter(text); });
    bar->addWidget(filter);
    commands = menuBar()->addMenu("&Commands");
    commands->setObjectName("commands");
    connect(commands, &QMenu::aboutToShow, &alive, [this] { readCommands(); });
}

void Window::connectViews()
{
    connect(tree, &QTreeWidget::currentItemChanged, &alive, [this] { showFolder(); });
    connect(
        list, &QTableView::activated, &alive, [this](const QModelIndex& index) { open(itemModel.at(index.row())); });
    connect(list, &QTableView::customContextMenuRequested, &alive,
        [this](const QPoint& place) { commands->popup(list->viewport()->mapToGlobal(place)); });
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, &alive, [this] { selectionTimer.start(); });
    selectionTimer.setSingleShot(true);
    selectionTimer.setInterval(150);
    connect(&selectionTimer, &QTimer::timeout, &alive, [this] {
        showCount();
        readProperties();
    });
    connect(&waitingTimer, &QTimer::timeout, &alive, [this] {
        const qint64 seconds = requests.secondsWithoutAnswer();
        waiting->setText(seconds < 2 ? QString() : QString("Tessaport has not answered for %1 s").arg(seconds));
    });
    waitingTimer.start(1000);
    connect(&itemModel, &ItemModel::modelAboutToBeReset, &alive, [this] { rememberSelection(); });
    connect(&itemModel, &ItemModel::modelReset, &alive, [this] {
        restoreSelection();
        showCount();
    });
    connect(messages, &QTextBrowser::anchorClicked, &alive, [this](const QUrl& link) { desktop.open(link); });
}

} // namespace DriveWindow
