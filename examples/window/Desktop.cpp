#include "Desktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>

namespace DriveWindow
{
namespace
{

bool askUser(QWidget* parent, const QString& question)
{
    QMessageBox box(QMessageBox::Question, QApplication::applicationDisplayName(), question,
        QMessageBox::Yes | QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

} // namespace

Desktop Desktop::real()
{
    return {[](const QUrl& url) { return QDesktopServices::openUrl(url); },
        [](QWidget* parent) { return QFileDialog::getOpenFileNames(parent, "Add files"); }, askUser};
}

} // namespace DriveWindow
