#include "Window.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QTableView>
#include <QTextBrowser>
#include <QTime>
#include <QTreeView>
#include <QTreeWidget>
#include <algorithm>
#include <memory>

#include <velmora/api/Interop.h>

namespace DriveWindow
{
namespace
{

constexpr std::size_t DetailsBatch = 200;
constexpr std::size_t MostForProperties = 100;
constexpr std::size_t MostKept = 1000;
constexpr std::size_t All = SIZE_MAX;

Items itemsOf(const std::vector<Row>& rows, std::size_t first, std::size_t count)
{
    Items items;
    for (std::size_t i = first; i < rows.size() && i < first + count; ++i)
        items.push_back(rows[i].item);
    return items;
}

// In a menu, "&" marks the key of an entry, and a tab begins its shortcut; shown() has replaced tabs.
QString menuText(QString text) { return text.replace('&', "&&"); }

QString counted(std::size_t number, const char* what) { return QString("%1 %2").arg(number).arg(what); }

} // namespace

Window::Window(Desktop windowDesktop)
    : desktop(std::move(windowDesktop)),
      requests([this](const Failure& failure, Requests::Again again) { report(failure, std::move(again)); },
          [this](int seconds) {
              waiting->setText(seconds < 2 ? QString() : QString("Tessaport has not answered for %1 s").arg(seconds));
          }),
      folderModel(requests)
{
    makeViews();
    makeActions();
    connectViews();
    readDrives();
}

void Window::readDrives()
{
    folderModel.readDrives([this] {
        tree->setCurrentIndex(folderModel.index(0, 0));
        tree->expand(tree->currentIndex());
        if (!hasFolder())
            report(Failure{"There are no drives.", "Set up a drive in Tessaport, then try again.", {}},
                [this] { readDrives(); });
    });
}

void Window::showFolder()
{
    wanted = {};
    if (!hasFolder())
        return;
    folder = folderModel.itemAt(tree->currentIndex());
    itemModel.setItems({});
    kept.clear();
    notice->hide();
    readFolder();
}

void Window::readFolder()
{
    if (!hasFolder())
        return;
    requests.ask(
        "list the folder " + folderName(),
        [folder = folder](Tessaport& tessaport) { return readItems(tessaport, folder); },
        [this, number = ++listing](std::vector<Row> rows) {
            if (number != listing)
                return;
            itemModel.setItems(std::move(rows));
            readDetails(number, 0);
            readProperties();
        },
        [this] { readFolder(); });
}

// In parts, so that other requests of the user get their turn.
void Window::readDetails(unsigned ofListing, std::size_t first)
{
    if (ofListing != listing || first >= itemModel.items().size())
        return;
    requests.ask(
        "read the states of the files in " + folderName(),
        [items = itemsOf(itemModel.items(), first, DetailsBatch)](
            Tessaport& tessaport) { return DriveWindow::readDetails(tessaport, items); },
        [this, ofListing, first](const std::vector<Details>& details) {
            if (ofListing != listing)
                return;
            itemModel.setDetails(first, details);
            readDetails(ofListing, first + details.size());
        },
        [this, ofListing, first] { readDetails(ofListing, first); });
}

void Window::readProperties()
{
    const unsigned number = ++selected;
    const Items selection = selectedItems(MostForProperties);
    if (selection.empty())
        return properties->clear();
    requests.ask(
        "read the properties of the selection",
        [selection](Tessaport& tessaport) { return DriveWindow::readProperties(tessaport, selection); },
        [this, number](const std::vector<Property>& found) {
            if (number != selected)
                return;
            properties->clear();
            QList<QTreeWidgetItem*> lines;
            for (const Property& property : found)
                lines.append(new QTreeWidgetItem({property.name, property.value}));
            properties->addTopLevelItems(lines);
            properties->resizeColumnToContents(0);
        },
        [this] { readProperties(); }, [this] { properties->clear(); });
}

void Window::readCommands()
{
    commands->clear();
    Items selection = selectedItems(All);
    if (selection.empty() && hasFolder())
        selection.push_back(folder);
    QAction* state = commands->addAction(selection.empty() ? "Nothing is selected" : "Reading the commands…");
    state->setEnabled(false);
    if (selection.empty())
        return;
    requests.ask(
        "list the commands",
        [selection](Tessaport& tessaport) { return DriveWindow::readCommands(tessaport, selection); },
        [this, state = QPointer(state), selection](const CommandMenu& found) {
            if (state == nullptr)
                return; // The menu was opened anew.
            delete state;
            showCommands(found, selection);
        },
        [this] { commands->popup(QCursor::pos()); },
        [state = QPointer(state)] {
            if (state != nullptr)
                state->setText("The commands could not be read");
        });
}

void Window::showCommands(const CommandMenu& found, const Items& selection)
{
    for (const MenuEntry& entry : found.entries) {
        if (entry.command.isBeginningOfGroup)
            commands->addSeparator();
        QAction* action = commands->addAction(QIcon(QPixmap::fromImage(entry.icon)), menuText(entry.text));
        action->setEnabled(entry.command.isEnabled);
        action->setCheckable(entry.command.isChecked);
        action->setChecked(entry.command.isChecked);
        if (entry.command.isDefaultCommand)
            commands->setDefaultAction(action);
        connect(action, &QAction::triggered, &alive, [this, entry, selection] { run(entry, selection); });
    }
    if (found.entries.empty())
        commands->addAction("No commands")->setEnabled(false);
    if (found.leftOut > 0)
        commands->addAction(counted(found.leftOut, "more commands are not shown"))->setEnabled(false);
    for (const QString& problem : found.problems)
        report(problem);
}

void Window::run(const MenuEntry& entry, const Items& selection)
{
    startJob(QString("run the command %1").arg(quoted(entry.text)), 1,
        [command = entry.command, selection](
            Tessaport& tessaport, std::size_t, std::size_t) { return execute(tessaport, command, selection); });
}

void Window::sync()
{
    if (!hasFolder())
        return;
    Items chosen = selectedItems(All);
    const QString doing = chosen.size() == 1 ? "sync " + quoted(toQString(chosen[0].name))
                          : chosen.empty()   ? "sync the folder " + folderName()
                                             : "sync " + counted(chosen.size(), "items");
    if (chosen.empty()) {
        // One by one, so that there is progress to see; then the folder itself, for what the list does not have.
        chosen = itemsOf(itemModel.items(), 0, All);
        chosen.push_back(folder);
    }
    const auto items = std::make_shared<const Items>(std::move(chosen));
    startJob(doing, items->size(), [items](Tessaport& tessaport, std::size_t first, std::size_t end) {
        const auto begin = items->begin();
        return DriveWindow::sync(
            tessaport, {begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(end)});
    });
}

void Window::addFiles(const QStringList& paths)
{
    if (paths.isEmpty() || !hasFolder())
        return;
    QStringList replaced;
    for (const QString& path : paths) {
        const auto& rows = itemModel.items();
        const QString name = QFileInfo(path).fileName();
        if (std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return toQString(row.item.name) == name; }))
            replaced += quoted(name);
    }
    if (!replaced.isEmpty() &&
        !desktop.confirm(this, QString("Replace %1 in %2?").arg(replaced.mid(0, 10).join(", "), folderName())))
        return;
    startJob("add files to " + folderName(), static_cast<std::size_t>(paths.size()),
        [paths, folder = folder](Tessaport& tessaport, std::size_t first, std::size_t end) {
            return DriveWindow::addFiles(
                tessaport, folder, paths.mid(static_cast<qsizetype>(first), static_cast<qsizetype>(end - first)));
        });
}

void Window::startJob(const QString& doing, std::size_t things, Job::Step step)
{
    if (job->isBusy())
        report(QString("Wait until the current work is done, or stop it, to %1.").arg(doing));
    else
        job->start(doing, things, std::move(step));
}

void Window::open(const QModelIndex& index)
{
    const Api::Item& item = itemModel.items()[itemModel.positionOf(index)].item;
    const QString name = quoted(toQString(item.name));
    if (item.isFolder)
        openFolder(item);
    else if (!item.isInWorkspace)
        report(QString("%1 is only on the server. Sync it, then open it.").arg(name));
    else if (!desktop.open(QUrl::fromLocalFile(toQString(Api::localPath(item)))))
        report(
            QString("No program has opened %1. Choose one for such files in the settings of the desktop.").arg(name));
}

void Window::openFolder(const Api::Item& item)
{
    const QModelIndex parent = tree->currentIndex();
    const QModelIndex found = folderModel.find(parent, item);
    if (found.isValid())
        return tree->setCurrentIndex(found);
    wanted = item;
    tree->expand(parent);
}

void Window::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls() && hasFolder())
        event->acceptProposedAction();
}

void Window::dropEvent(QDropEvent* event)
{
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            paths += url.toLocalFile();
        else
            report(QString("%1 is no local file. Save it first, then add it.").arg(quoted(url.toString())));
    }
    event->acceptProposedAction();
    addFiles(paths);
}

bool Window::hasFolder() const { return tree->currentIndex().isValid(); }

QString Window::folderName() const { return quoted(tree->currentIndex().data().toString()); }

Items Window::selectedItems(std::size_t most) const
{
    Items items;
    for (const QItemSelectionRange& range : list->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom() && items.size() < most; ++row)
            items.push_back(itemModel.items()[itemModel.positionOf(itemModel.index(row, 0))].item);
    }
    return items;
}

// Also while the folder is read again: until then, the list is empty.
void Window::rememberSelection()
{
    if (itemModel.rowCount() == 0)
        return;
    kept.clear();
    for (const Api::Item& item : selectedItems(MostKept))
        kept.insert(item.relativePath);
}

void Window::restoreSelection()
{
    QItemSelection selection;
    for (int row = 0; !kept.empty() && row < itemModel.rowCount(); ++row) {
        const QModelIndex index = itemModel.index(row, 0);
        if (kept.count(itemModel.items()[itemModel.positionOf(index)].item.relativePath) > 0)
            selection.select(index, index);
    }
    list->selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void Window::showCount()
{
    qsizetype number = 0;
    for (const QItemSelectionRange& range : list->selectionModel()->selection())
        number += range.height();
    count->setText(
        QString("%1 of %2 items, %3 selected").arg(itemModel.rowCount()).arg(itemModel.items().size()).arg(number));
}

void Window::report(const QString& message)
{
    messages->append(richText(QTime::currentTime().toString("HH:mm:ss  ") + message));
}

void Window::report(const Failure& failure, Requests::Again again)
{
    report(failure.message.isEmpty() ? failure.what : failure.what + ' ' + failure.message);
    notice->show(failure, std::move(again));
}

void Window::report(const QString& doing, const Outcome& outcome, bool stopped)
{
    const QString done = QString("%1: %2 updated, %3 created, %4 deleted%5.")
                             .arg(doing.left(1).toUpper() + doing.mid(1))
                             .arg(outcome.updated)
                             .arg(outcome.created)
                             .arg(outcome.deleted)
                             .arg(stopped ? ", then stopped" : "");
    report(done);
    for (const QString& problem : outcome.problems)
        report(problem);
    if (!outcome.success)
        notice->show(Failure{QString("Cannot %1 completely.").arg(doing),
                         "The messages below give the reasons. Remove them, then do it again.", {}},
            {});
}

} // namespace DriveWindow
