// What the window consists of, and what happens on which signal.
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QTableView>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>
#include <utility>

#include "Window.h"

namespace DriveWindow
{

void Window::makeViews()
{
    setWindowTitle("Drives");
    resize(1100, 680);
    setAcceptDrops(true);
    tree = new FolderTree(requests);
    connect(tree, &QTreeWidget::currentItemChanged, &alive, [this] { showFolder(); });

    list = new QTableView;
    list->setModel(&itemModel);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setShowGrid(false);
    list->setWordWrap(false);
    list->verticalHeader()->hide();
    list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() + 8);
    list->horizontalHeader()->setSectionResizeMode(ItemModel::Name, QHeaderView::Stretch);
    list->setColumnWidth(ItemModel::Size, 75);
    list->setColumnWidth(ItemModel::Modified, 130);
    list->setColumnWidth(ItemModel::State, 130);
    list->sortByColumn(ItemModel::Name, Qt::AscendingOrder);
    list->setSortingEnabled(true);
    connect(list, &QTableView::activated, &alive, [this](const QModelIndex& at) { open(itemModel.at(at.row())); });
    selectionTimer.setSingleShot(true);
    selectionTimer.setInterval(150);
    const auto changed = [this] { selectionTimer.start(); };
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, &alive, changed);
    connect(&itemModel, &ItemModel::modelReset, &alive, changed);
    connect(&selectionTimer, &QTimer::timeout, &alive, [this] { showProperties(); });

    properties = new QTreeWidget;
    properties->setHeaderLabels({"Property", "Value"});
    properties->setRootIsDecorated(false);
    messages = new QTextBrowser;
    messages->setOpenLinks(false);
    messages->document()->setMaximumBlockCount(1000);
    connect(messages, &QTextBrowser::anchorClicked, &alive,
        [this](const QUrl& link) { openUrl(QUrl::fromUserInput(link.toString())); });

    auto* columns = new QSplitter;
    columns->addWidget(tree);
    columns->addWidget(list);
    columns->addWidget(properties);
    columns->setSizes({190, 650, 250});
    auto* rows = new QSplitter(Qt::Vertical);
    rows->addWidget(columns);
    rows->addWidget(messages);
    rows->setSizes({550, 110});
    setCentralWidget(new QWidget);
    auto* layout = new QVBoxLayout(centralWidget());
    layout->addWidget(makeNotice());
    layout->addWidget(rows, 1);
}

QWidget* Window::makeNotice()
{
    notice = new QFrame;
    notice->setFrameShape(QFrame::StyledPanel);
    noticeText = new QLabel;
    noticeText->setTextFormat(Qt::PlainText);
    noticeText->setWordWrap(true);
    // A long word must not widen the window.
    noticeText->setMinimumWidth(100);
    retry = new QPushButton("Try again");
    auto* dismiss = new QPushButton("Close");
    auto* layout = new QHBoxLayout(notice);
    layout->addWidget(noticeText, 1);
    layout->addWidget(retry);
    layout->addWidget(dismiss);
    connect(dismiss, &QPushButton::clicked, notice, &QWidget::hide);
    connect(retry, &QPushButton::clicked, &alive, [this] {
        notice->hide();
        std::exchange(tryAgain, nullptr)();
    });
    notice->hide();
    return notice;
}

void Window::makeActions()
{
    QToolBar* bar = addToolBar("Actions");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto icon = [this](QStyle::StandardPixmap which) { return style()->standardIcon(which); };
    bar->addAction(icon(QStyle::SP_BrowserReload), "Refresh", QKeySequence::Refresh, &alive, [this] { refresh(); });
    bar->addAction(icon(QStyle::SP_FileDialogNewFolder), "Add files…", QKeySequence("Ctrl+N"), &alive,
        [this] { addFiles(QFileDialog::getOpenFileNames(this, "Add files")); });
    bar->addAction(
        icon(QStyle::SP_DialogApplyButton), "Sync", QKeySequence("Ctrl+S"), &alive, [this] { syncSelection(); });
    auto* filter = new QLineEdit;
    filter->setPlaceholderText("Filter by name");
    filter->setClearButtonEnabled(true);
    connect(filter, &QLineEdit::textChanged, &alive, [this](const QString& text) { itemModel.setFilter(text); });
    bar->addWidget(filter);
    commands = menuBar()->addMenu("&Commands");
    connect(commands, &QMenu::aboutToShow, &alive, [this] { openCommands(); });
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(list, &QTableView::customContextMenuRequested, &alive,
        [this](const QPoint& place) { commands->popup(list->viewport()->mapToGlobal(place)); });
}

} // namespace DriveWindow
