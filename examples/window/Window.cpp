#include "Window.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTableView>
#include <QTextBrowser>
#include <QTime>
#include <utility>

#include <velmora/native/MessageFormatting.h>

namespace DriveWindow
{
namespace
{

constexpr std::uint32_t DetailsBatch = 200;
constexpr std::uint32_t SyncBatch = 20;
constexpr std::uint32_t MostForProperties = 100;
constexpr int LongestMessage = 4000;

Items part(const Items& items, std::uint32_t first, std::uint32_t count)
{
    Items some;
    for (std::uint32_t i = first; i < items.GetSize() && i - first < count; ++i)
        some.Append(*items[i]);
    return some;
}

} // namespace

/// A long piece of work, in many short requests.
struct Window::Job {
    QString doing;
    std::vector<Step> steps;
    QProgressDialog* progress;
    std::size_t done = 0;
    Outcome total = {};
};

Window::Window()
    : requests([this](const Failure& failure, const Requests::Call& again) {
          report(failure.what + ' ' + failure.message);
          showNotice(failure, again);
      })
{
    makeViews();
    makeActions();
    refresh();
}

void Window::refresh()
{
    requests.ask("list the drives", readDrives, [this](const Items& drives) {
        tree->setDrives(drives);
        if (drives.GetSize() == 0)
            showNotice(
                {"There are no drives.", "Set up a drive in Tessaport, then try again.", {}}, [this] { refresh(); });
    });
    if (tree->folder() != nullptr) {
        tree->refresh();
        readFolder();
    }
}

void Window::showFolder()
{
    itemModel.setItems(std::make_shared<Items>());
    notice->hide();
    readFolder();
}

void Window::readFolder()
{
    const unsigned number = ++listing;
    if (tree->folder() == nullptr)
        return;
    const QString doing = "list the folder " + quoted(tree->folder()->name);
    requests.ask(
        doing,
        [folder = *tree->folder()](
            Tessaport& api) { return std::make_shared<const Items>(api.getFolderContents(folder)); },
        [this, number, doing](const ItemList& items) {
            if (number != listing)
                return;
            itemModel.setItems(items);
            // To compare many names takes longer than to list them.
            const auto sort = [items](Tessaport&) { return orderByName(*items); };
            requests.ask(doing, sort, [this, number](const std::vector<std::uint32_t>& order) {
                if (number != listing)
                    return;
                itemModel.setOrderByName(order);
                showDetails(number, 0);
            });
        });
}

// In parts, so that other requests of the user get their turn.
void Window::showDetails(unsigned ofListing, std::uint32_t first)
{
    if (ofListing != listing || first >= itemModel.items()->GetSize())
        return;
    requests.ask(
        "read the states of the files in " + quoted(tree->folder()->name),
        [items = itemModel.items(), first](
            Tessaport& api) { return readDetails(api, part(*items, first, DetailsBatch)); },
        [this, ofListing, first](const std::vector<Details>& details) {
            if (ofListing != listing)
                return;
            itemModel.setDetails(first, details);
            showDetails(ofListing, first + DetailsBatch);
        });
}

void Window::showProperties()
{
    const ItemList items = selection(MostForProperties);
    properties->clear();
    if (items->GetSize() == 0)
        return;
    requests.ask(
        "read the properties of the selection", [items](Tessaport& api) { return readProperties(api, *items); },
        [this, number = ++selected](const std::vector<QStringList>& found) {
            if (number != selected)
                return;
            for (const QStringList& property : found)
                new QTreeWidgetItem(properties, property);
            properties->resizeColumnToContents(0);
        });
}

void Window::openCommands()
{
    commands->clear();
    const QPointer<QAction> state = commands->addAction("Reading the commands…");
    state->setEnabled(false);
    const auto items = selection();
    if (items->GetSize() == 0 && tree->folder() != nullptr)
        items->Append(*tree->folder());
    if (items->GetSize() == 0)
        return state->setText("Nothing is selected");
    // Once the menu is opened again, the action is gone, and the answer is late.
    requests.ask(
        "list the commands", [items](Tessaport& api) { return readCommands(api, *items); },
        [this, state, items](const CommandMenu& found) {
            if (state != nullptr)
                showCommands(found, items);
        },
        [state] {
            if (state != nullptr)
                state->setText("The commands could not be read. Open the menu again.");
        });
}

void Window::showCommands(const CommandMenu& found, const ItemList& items)
{
    commands->clear();
    for (const CommandMenu::Entry& entry : found.entries) {
        const Api::Command& command = entry.command;
        if (command.isBeginningOfGroup)
            commands->addSeparator();
        // "&" marks the key of an entry.
        QAction* action =
            commands->addAction(QIcon(QPixmap::fromImage(entry.icon)), shown(command.name, 80).replace('&', "&&"));
        action->setEnabled(command.isEnabled);
        action->setCheckable(command.isChecked);
        action->setChecked(command.isChecked);
        if (command.isDefaultCommand)
            commands->setDefaultAction(action);
        connect(action, &QAction::triggered, &alive, [this, command, items] {
            start("run the command " + quoted(command.name),
                {[command, items](Tessaport& api) { return execute(api, command, *items); }});
        });
    }
    if (found.entries.empty())
        commands->addAction("No commands")->setEnabled(false);
    if (found.leftOut > 0)
        commands->addAction(QString("%1 more commands are not shown").arg(found.leftOut))->setEnabled(false);
    for (const QString& problem : found.problems)
        report(problem);
}

void Window::syncSelection()
{
    auto items = selection();
    const std::uint32_t count = items->GetSize();
    QString what = count == 1 ? quoted((*items)[0]->name) : QString("%1 items").arg(count);
    if (count == 0 && tree->folder() != nullptr) {
        // In parts, so that there is progress to see; then the folder itself, for what the list does not have.
        what = "the folder " + quoted(tree->folder()->name);
        *items = *itemModel.items();
        items->Append(*tree->folder());
    }
    std::vector<Step> steps;
    for (std::uint32_t first = 0; first < items->GetSize(); first += SyncBatch)
        steps.emplace_back([items, first](Tessaport& api) { return sync(api, part(*items, first, SyncBatch)); });
    start("sync " + what, steps);
}

void Window::addFiles(const QStringList& paths)
{
    if (paths.isEmpty() || tree->folder() == nullptr)
        return;
    const QString doing = "add files to " + quoted(tree->folder()->name);
    const auto folder = std::make_shared<Api::Item>(*tree->folder());
    std::vector<Step> steps;
    for (const QString& path : paths)
        steps.emplace_back([folder, path](Tessaport& api) { return addFile(api, *folder, path); });
    // What the list shows may be out of date, and would then be replaced without a question.
    requests.ask(
        doing, [folder, paths](Tessaport& api) { return namesThere(api, *folder, paths); },
        [this, doing, steps, folder](const QStringList& replaced) {
            if (replaced.isEmpty() ||
                agrees(QString("Replace %1 in %2?").arg(replaced.join(", "), quoted(folder->name))))
                start(doing, steps);
        });
}

bool Window::agrees(const QString& question)
{
    QMessageBox box(QMessageBox::Question, {}, question, QMessageBox::Yes | QMessageBox::Cancel, this);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

void Window::start(const QString& doing, std::vector<Step> steps)
{
    if (steps.empty())
        return;
    auto* progress = new QProgressDialog(doing, "Stop", 0, static_cast<int>(steps.size()), this);
    progress->findChild<QLabel*>()->setTextFormat(Qt::PlainText);
    progress->setMinimumDuration(500);
    proceed(std::make_shared<Job>(Job{doing, std::move(steps), progress}));
}

void Window::proceed(const std::shared_ptr<Job>& job)
{
    if (job->done < job->steps.size() && !job->progress->wasCanceled()) {
        job->progress->setValue(static_cast<int>(job->done));
        // If it fails, a retry continues here.
        requests.ask(
            job->doing, job->steps[job->done],
            [this, job](const Outcome& outcome) {
                ++job->done;
                Outcome& total = job->total;
                total.success = total.success && outcome.success;
                total.created += outcome.created;
                total.updated += outcome.updated;
                total.deleted += outcome.deleted;
                total.problems += outcome.problems;
                proceed(job);
            },
            [job] { job->progress->reset(); });
        return;
    }
    report(QString("%1: %2 updated, %3 created, %4 deleted%5.")
               .arg(job->doing.left(1).toUpper() + job->doing.mid(1))
               .arg(job->total.updated)
               .arg(job->total.created)
               .arg(job->total.deleted)
               .arg(job->progress->wasCanceled() ? ", then stopped" : ""));
    for (const QString& problem : job->total.problems)
        report(problem);
    if (!job->total.success)
        showNotice({QString("Cannot %1 completely.").arg(job->doing),
                       "The messages below give the reasons. Remove them, then do it again.", {}},
            {});
    job->progress->deleteLater();
    readFolder();
}

void Window::open(const Api::Item& item)
{
    if (item.isFolder)
        tree->openFolder(item);
    else if (!item.isInWorkspace)
        report(QString("%1 is only on the server. Sync it, then open it.").arg(quoted(item.name)));
    else if (!openUrl(QUrl::fromLocalFile(toQString(Api::localPath(item)))))
        report(QString("No program has opened %1. Choose one for such files in the settings of the desktop.")
                   .arg(quoted(item.name)));
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

std::shared_ptr<Items> Window::selection(std::uint32_t most) const
{
    auto items = std::make_shared<Items>();
    for (const QItemSelectionRange& range : list->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom() && items->GetSize() < most; ++row)
            items->Append(itemModel.at(row));
    }
    return items;
}

void Window::report(const QString& message)
{
    const QString line = cut(QTime::currentTime().toString("HH:mm:ss  ") + message, LongestMessage);
    messages->append(QString::fromStdWString(Api::toRichText(line.toStdWString())));
}

void Window::showNotice(const Failure& failure, const Requests::Call& again)
{
    noticeText->setText(failure.what + '\n' + failure.remedy);
    tryAgain = again;
    retry->setVisible(again != nullptr);
    notice->show();
}

} // namespace DriveWindow
