// Takes the pictures of docs/window.md: the real window on the demo drives, without a screen.
//   velmora_window_screenshots FOLDER
#include <QAction>
#include <QApplication>
#include <QImage>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QTableView>
#include <QTextBrowser>
#include <QTreeView>
#include <QTreeWidget>
#include <cstdio>
#include <filesystem>

#include "tests/window/LocalWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

void require(bool condition, const char* what)
{
    if (!condition)
        throw std::runtime_error(std::string("The window did not show ") + what + '.');
}

void save(const QPixmap& picture, const fs::path& file)
{
    // Fewer colours, so that the file is small.
    const QImage image = picture.toImage().convertToFormat(QImage::Format_RGB444);
    require(image.save(QString::fromStdString(file.u8string()), "PNG", 0), "a picture that can be saved");
}

class Photographer
{
public:
    explicit Photographer(fs::path folder) : folder(std::move(folder))
    {
        fs::create_directories(this->folder);
        nameParts(window);
        window.resize(1010, 480);
        window.show();
        require(waitFor([&] { return shows(DriveWindow::ItemModel::State, "In sync"); }), "the first drive");
    }

    void takeAll()
    {
        trigger("Sync");
        require(waitFor([&] { return part<QTextBrowser>("messages").toPlainText().contains("updated"); }), "a sync");
        require(waitFor([&] { return shows(DriveWindow::ItemModel::State, "In sync"); }), "the drive after it");
        auto& tree = part<QTreeView>("tree");
        tree.expand(tree.model()->index(0, 0).model()->index(0, 0, tree.currentIndex()));
        // The list that is read after the sync has no selection.
        const auto hasProperties = [&] {
            part<QTableView>("list").selectRow(2);
            return part<QTreeWidget>("properties").topLevelItemCount() > 0;
        };
        require(waitFor(hasProperties), "properties");
        require(waitFor([&] { return tree.model()->rowCount(tree.model()->index(0, 0, tree.currentIndex())) > 0; }),
            "the folders in a folder");
        save(window.grab(), folder / "window.png");
        save(withMenu(), folder / "window-commands.png");

        demo.setState("not-running");
        trigger("Refresh");
        require(waitFor([&] { return part<QPushButton>("retry").isVisible(); }), "the failure");
        save(window.grab(), folder / "window-not-running.png");
    }

private:
    template <class Part>
    Part& part(const char* name)
    {
        return *window.findChild<Part*>(name);
    }

    bool shows(int column, const QString& text)
    {
        const auto& model = window.items();
        for (int row = 0; row < model.rowCount(); ++row) {
            if (model.index(row, column).data() == text)
                return true;
        }
        return false;
    }

    void trigger(const QString& text)
    {
        for (QAction* action : window.findChildren<QAction*>()) {
            if (action->text() == text)
                action->trigger();
        }
    }

    // A menu is a window of its own, which grab() leaves out.
    QPixmap withMenu()
    {
        auto& menu = part<QMenu>("commands");
        auto& list = part<QTableView>("list");
        const QPoint place = list.viewport()->mapTo(&window, list.visualRect(list.model()->index(2, 0)).center());
        menu.popup(window.mapToGlobal(place));
        require(waitFor([&] { return menu.actions().size() > 1; }), "commands");
        QPixmap picture = window.grab();
        QPainter(&picture).drawPixmap(place, menu.grab());
        menu.close();
        return picture;
    }

    fs::path folder;
    DemoHome demo;
    DriveWindow::Window window;
};

} // namespace
} // namespace Quorvex::Velmora::WindowTest

int main(int count, char** arguments)
try {
    using namespace Quorvex::Velmora::WindowTest;
    if (count != 2) {
        std::fputs("usage: velmora_window_screenshots FOLDER\n", stderr);
        return 2;
    }
    setenv("TZ", "UTC", 1);
    startApplication();
    Photographer(arguments[1]).takeAll();
    return 0;
} catch (const std::exception& e) {
    std::fprintf(stderr, "velmora_window_screenshots: %s\n", e.what());
    return 1;
}
