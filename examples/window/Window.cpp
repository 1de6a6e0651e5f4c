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
#include <QTreeWidget>
#include <algorithm>

namespace DriveWindow
{
namespace
{

constexpr std::size_t DetailsBatch = 200;
constexpr std::size_t MostForProperties = 100;
constexpr std::size_t All = SIZE_MAX;

Rows part(const Rows& rows, std::size_t first, std::size_t end)
{
    return {rows.begin() + static_cast<std::ptrdiff_t>(first),
        rows.begin() + static_cast<std::ptrdiff_t>(std::min(end, rows.size()))};
}

} // namespace

Window::Window(Desktop windowDesktop)
    : desktop(std::move(windowDesktop)),
      requests([this](const Failure& failure, Requests::Again again) { report(failure, std::move(again)); })
{
    makeViews();
    makeActions();
    connectViews();
    readDrives();
}

void Window::readDrives()
{
    tree->readDrives([this] {
        if (tree->folder() != nullptr)
            return;
        tree->setCurrentItem(tree->topLevelItem(0));
        tree->expand(tree->currentIndex());
        if (tree->folder() == nullptr)
            report(Failure{"There are no drives.", "Set up a drive in Tessaport, then try again.", {}},
                [this] { readDrives(); });
    });
}

void Window::showFolder()
{
    ++listing;
    requests.destroy(itemModel.setItems({}));
    notice->hide();
    readFolder();
}

void Window::readFolder()
{
    if (tree->folder() == nullptr)
        return;
    requests.ask(
        "list the folder " + quoted(tree->folder()->name),
        [folder = *tree->folder()](Tessaport& tessaport) { return readContents(tessaport, folder); },
        [this, number = ++listing](Rows rows) {
            if (number != listing)
                return;
            requests.destroy(itemModel.setItems(std::move(rows)));
            readDetails(number, 0);
            readProperties();
        });
}

// In parts, so that other requests of the user get their turn.
void Window::readDetails(unsigned ofListing, std::size_t first)
{
    if (ofListing != listing || first >= itemModel.items().size())
        return;
    requests.ask(
        "read the states of the files in " + quoted(tree->folder()->name),
        [rows = part(itemModel.items(), first, first + DetailsBatch)](
            Tessaport& tessaport) { return DriveWindow::readDetails(tessaport, rows); },
        [this, ofListing, first](const Rows& details) {
            if (ofListing != listing)
                return;
            itemModel.setDetails(first, details);
            readDetails(ofListing, first + details.size());
        });
}

void Window::readProperties()
{
    const unsigned number = ++selected;
    const Rows selection = selectedRows(MostForProperties);
    if (selection.empty())
        return properties->clear();
    requests.ask(
        "read the properties of the selection",
        [selection](Tessaport& tessaport) { return DriveWindow::readProperties(tessaport, selection); },
        [this, number](const std::vector<Property>& found) {
            if (number != selected)
                return;
            properties->clear();
            for (const Property& property : found)
                new QTreeWidgetItem(properties, {property.name, property.value});
            properties->resizeColumnToContents(0);
        },
        [this] { properties->clear(); });
}

void Window::readCommands()
{
    commands->clear();
    Rows selection = selectedRows(All);
    if (selection.empty() && tree->folder() != nullptr)
        selection.push_back(*tree->folder());
    const QPointer<QAction> state =
        commands->addAction(selection.empty() ? "Nothing is selected" : "Reading the commands…");
    state->setEnabled(false);
    if (selection.empty())
        return;
    // Once the menu is opened again, the action is gone, and the answer is late.
    requests.ask(
        "list the commands",
        [selection](Tessaport& tessaport) { return DriveWindow::readCommands(tessaport, selection); },
        [this, state, selection](const CommandMenu& found) {
            if (state == nullptr)
                return;
            delete state;
            showCommands(found, selection);
        },
        [state] {
            if (state != nullptr)
                state->setText("The commands could not be read");
        },
        [this] { commands->popup(QCursor::pos()); });
}

void Window::showCommands(const CommandMenu& found, const Rows& selection)
{
    for (const MenuEntry& entry : found.entries) {
        if (entry.command.isBeginningOfGroup)
            commands->addSeparator();
        // "&" marks the key of an entry.
        QAction* action =
            commands->addAction(QIcon(QPixmap::fromImage(entry.icon)), QString(entry.text).replace('&', "&&"));
        action->setEnabled(entry.command.isEnabled);
        action->setCheckable(entry.command.isChecked);
        action->setChecked(entry.command.isChecked);
        if (entry.command.isDefaultCommand)
            commands->setDefaultAction(action);
        connect(action, &QAction::triggered, &alive, [this, entry, selection] {
            startJob("run the command " + quoted(entry.text), 1,
                [command = entry.command, selection](
                    Tessaport& tessaport, std::size_t, std::size_t) { return execute(tessaport, command, selection); });
        });
    }
    if (found.entries.empty())
        commands->addAction("No commands")->setEnabled(false);
    if (found.leftOut > 0)
        commands->addAction(QString("%1 more commands are not shown").arg(found.leftOut))->setEnabled(false);
    for (const QString& problem : found.problems)
        report(problem);
}

void Window::sync()
{
    if (tree->folder() == nullptr)
        return;
    auto rows = std::make_shared<Rows>(selectedRows(All));
    QString what = rows->size() == 1 ? quoted(rows->front().name) : QString("%1 items").arg(rows->size());
    if (rows->empty()) {
        // One by one, so that there is progress to see; then the folder itself, for what the list does not have.
        *rows = itemModel.items();
        rows->push_back(*tree->folder());
        what = "the folder " + quoted(tree->folder()->name);
    }
    startJob("sync " + what, rows->size(), [rows](Tessaport& tessaport, std::size_t first, std::size_t end) {
        return DriveWindow::sync(tessaport, part(*rows, first, end));
    });
}

void Window::addFiles(const QStringList& paths)
{
    if (paths.isEmpty() || tree->folder() == nullptr)
        return;
    QStringList replaced;
    for (const QString& path : paths) {
        const auto& rows = itemModel.items();
        const QString name = shown(QFileInfo(path).fileName());
        if (std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return row.name == name; }))
            replaced += quoted(name);
    }
    const QString target = quoted(tree->folder()->name);
    if (!replaced.isEmpty() &&
        !desktop.confirm(this, QString("Replace %1 in %2?").arg(replaced.mid(0, 10).join(", "), target)))
        return;
    startJob("add files to " + target, static_cast<std::size_t>(paths.size()),
        [paths, folder = *tree->folder()](Tessaport& tessaport, std::size_t first, std::size_t end) {
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

void Window::open(const Row& row)
{
    if (row.item->isFolder)
        tree->openFolder(row);
    else if (!row.item->isInWorkspace)
        report(QString("%1 is only on the server. Sync it, then open it.").arg(quoted(row.name)));
    else if (!desktop.open(QUrl::fromLocalFile(toQString(Api::localPath(*row.item)))))
        report(QString("No program has opened %1. Choose one for such files in the settings of the desktop.")
                   .arg(quoted(row.name)));
}

void Window::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls() && tree->folder() != nullptr)
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

Rows Window::selectedRows(std::size_t most) const
{
    Rows rows;
    for (const QItemSelectionRange& range : list->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom() && rows.size() < most; ++row)
            rows.push_back(itemModel.at(row));
    }
    return rows;
}

void Window::rememberSelection()
{
    itemModel.unmarkShown();
    for (const QItemSelectionRange& range : list->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            itemModel.mark(row);
    }
}

void Window::restoreSelection()
{
    QItemSelection selection;
    for (int row = 0; row < itemModel.rowCount(); ++row) {
        const int first = row;
        while (row < itemModel.rowCount() && itemModel.isMarked(row))
            ++row;
        if (row > first)
            selection.select(itemModel.index(first, 0), itemModel.index(row - 1, 0));
    }
    list->selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void Window::showCount()
{
    int number = 0;
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
    report(QString("%1: %2 updated, %3 created, %4 deleted%5.")
               .arg(doing.left(1).toUpper() + doing.mid(1))
               .arg(outcome.updated)
               .arg(outcome.created)
               .arg(outcome.deleted)
               .arg(stopped ? ", then stopped" : ""));
    for (const QString& problem : outcome.problems)
        report(problem);
    if (!outcome.success)
        notice->show(Failure{QString("Cannot %1 completely.").arg(doing),
                         "The messages below give the reasons. Remove them, then do it again.", {}},
            {});
}

} // namespace DriveWindow
