#pragma once

#include <QStringList>
#include <QUrl>
#include <functional>

class QWidget;

namespace DriveWindow
{

/// What the window has the desktop do. Tests set other functions.
struct Desktop {
    /// Opens a file or a web address with its program. Returns whether there is one.
    std::function<bool(const QUrl& url)> open;
    /// Has the user choose local files.
    std::function<QStringList(QWidget* parent)> chooseFiles;
    /// Asks the user a question, in plain text. Returns whether the answer is yes.
    std::function<bool(QWidget* parent, const QString& question)> confirm;

    /// That of the user.
    [[nodiscard]] static Desktop real();
};

} // namespace DriveWindow
