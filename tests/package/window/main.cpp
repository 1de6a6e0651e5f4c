// Opens the window and prints the names that it lists first.
//   window_starts FOLDER-OF-THE-SERVICE
#include <QApplication>
#include <QObject>
#include <cstdio>

#include <velmora/native/RuntimeOptions.h>
#include "Window.h"

int main(int argc, char** argv)
{
    using DriveWindow::ItemModel;
    QApplication application(argc, argv);
    if (argc != 2)
        return 2;
    DriveWindow::Api::setRuntimeOptions({std::filesystem::u8path(argv[1]), {}});
    DriveWindow::Window window;
    window.show();
    const ItemModel& items = window.items();
    QObject::connect(&items, &ItemModel::modelReset, &application, [&items] {
        for (int row = 0; row < items.rowCount(); ++row)
            std::printf("%s\n", items.at(row).name.c_str());
        if (items.rowCount() > 0)
            QApplication::quit();
    });
    return QApplication::exec();
}
