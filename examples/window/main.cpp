#include <QApplication>
#include <cstdio>

#include <velmora/native/RuntimeOptions.h>
#include "Window.h"

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 2) {
        std::fputs("usage: velmora_window [folder of Quorvex.Tessaport.API.dll]\n", stderr);
        return 2;
    }
    if (arguments.size() == 2)
        DriveWindow::Api::setRuntimeOptions({std::filesystem::u8path(arguments[1].toStdString()), {}});
    DriveWindow::Window window;
    window.show();
    return QApplication::exec();
}
