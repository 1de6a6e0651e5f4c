#include "tests/window/WindowTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>

#include "examples/window/ItemModel.h"

namespace Quorvex::Velmora::WindowTest
{

void startApplication()
{
    if (QApplication::instance() != nullptr)
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The classic locale sorts by the codes of the characters.
    QLocale::setDefault(QLocale("en_GB"));
    static int count = 1;
    static char name[] = "window_test";
    static char* arguments[] = {name, nullptr};
    // Leaked on purpose: it would be destroyed after what it needs.
    new QApplication(count, arguments);
}

void nameParts(DriveWindow::Window& window)
{
    window.findChild<QTableView*>()->setObjectName("list");
    window.findChild<QTextBrowser*>()->setObjectName("messages");
    window.findChild<QLineEdit*>()->setObjectName("filter");
    window.menuBar()->actions().value(0)->menu()->setObjectName("commands");
    for (auto* tree : window.findChildren<QTreeWidget*>())
        tree->setObjectName(tree->isHeaderHidden() ? "tree" : "properties");
    for (auto* button : window.findChildren<QPushButton*>()) {
        if (button->text() != "Try again")
            continue;
        button->setObjectName("retry");
        button->parentWidget()->setObjectName("notice");
    }
}

bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 20'000); }

WindowTest::WindowTest()
{
    startApplication();
    QObject::connect(&dialogTimer, &QTimer::timeout, [this] { answerDialog(); });
    dialogTimer.start(20);
}

void WindowTest::openWindow()
{
    window.emplace();
    nameParts(*window);
    window->openUrl = [this](const QUrl& url) {
        opened.push_back(url);
        return programsOpen;
    };
    window->show();
}

void WindowTest::answerDialog()
{
    QWidget* const dialog = QApplication::activeModalWidget();
    if (auto* question = qobject_cast<QMessageBox*>(dialog)) {
        EXPECT_EQ(question->textFormat(), Qt::PlainText);
        questions += question->text();
        question->button(answer ? QMessageBox::Yes : QMessageBox::Cancel)->click();
    } else if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
        // An absolute path does not depend on what the dialog has read of the folder by now.
        files->findChild<QLineEdit*>()->setText(chosenFile);
        EXPECT_TRUE(QMetaObject::invokeMethod(files, "accept"));
    }
}

QStringList WindowTest::column(int column)
{
    const auto* model = part<QTableView>("list").model();
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts += model->index(row, column).data().toString();
    return texts;
}

QModelIndex WindowTest::rowOf(const QString& name)
{
    const auto row = column(DriveWindow::ItemModel::Name).indexOf(name);
    EXPECT_GE(row, 0) << name.toStdString() << " is not in the list";
    return part<QTableView>("list").model()->index(static_cast<int>(row), 0);
}

void WindowTest::select(const QString& name) { part<QTableView>("list").selectRow(rowOf(name).row()); }

void WindowTest::trigger(const QString& action)
{
    for (QAction* candidate : window->findChildren<QAction*>()) {
        if (candidate->text() == action)
            return candidate->trigger();
    }
    FAIL() << "There is no action " << action.toStdString();
}

QString WindowTest::noticeText()
{
    auto& notice = part<QFrame>("notice");
    return notice.isVisible() ? notice.findChild<QLabel*>()->text() : QString();
}

QString WindowTest::messages() { return part<QTextBrowser>("messages").toPlainText(); }

QList<QAction*> WindowTest::openMenu()
{
    auto& menu = part<QMenu>("commands");
    menu.popup({});
    EXPECT_TRUE(waitFor([&] { return menu.actions().value(0)->text() != "Reading the commands…"; }));
    return menu.actions();
}

bool WindowTest::waitForRow(const QString& name)
{
    return waitFor([&] { return column(DriveWindow::ItemModel::Name).contains(name); });
}

bool WindowTest::waitForNotice(const QString& part)
{
    return waitFor([&] { return noticeText().contains(part); });
}

bool WindowTest::waitForMessage(const QString& part)
{
    return waitFor([&] { return messages().contains(part); });
}

bool WindowTest::waitForState(const QString& name, const QString& state)
{
    return waitFor([&] {
        const auto row = column(DriveWindow::ItemModel::Name).indexOf(name);
        return row >= 0 && column(DriveWindow::ItemModel::State).value(row) == state;
    });
}

} // namespace Quorvex::Velmora::WindowTest
