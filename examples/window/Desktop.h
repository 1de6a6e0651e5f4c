#pragma once

#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <functional>

namespace DriveWindow
{

/// Asks the user a question, in plain text. Returns whether the answer is yes.
inline bool askUser(QWidget* parent, const QString& question)
{
    QMessageBox box(QMessageBox::Question, {}, question, QMessageBox::Yes | QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

/// What the window has the desktop do. Tests set other functions.
struct Desktop {
    /// Opens a file or a web address with its program. Returns whether there is one.
    std::function<bool(const QUrl& url)> open = QDesktopServices::openUrl;
    /// Has the user choose local files.
    std::function<QStringList(QWidget* parent)> chooseFiles = [](QWidget* parent) {
        return QFileDialog::getOpenFileNames(parent, "Add files");
    };
    std::function<bool(QWidget* parent, const QString& question)> confirm = askUser;
};

} // namespace DriveWindow
