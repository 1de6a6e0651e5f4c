// Closes the window while its sync waits for a lock that is never released, and ends with an exit code of its own.
// Prints the milliseconds since 1970 just before it closes the window.
#include <QAction>
#include <QApplication>
#include <QProgressDialog>
#include <QTimer>
#include <chrono>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>

#include "tests/window/LocalWindow.h"

using namespace Quorvex::Velmora::WindowTest;

int main()
{
    startApplication();
    // Leaked on purpose: the sync goes on in it to the end of the process.
    const DemoHome& demo = *new DemoHome;
    int code = 1;
    {
        DriveWindow::Window window;
        window.show();
        if (!waitFor([&] { return window.items().rowCount() > 0; }))
            return 2;
        const int file = open((demo.path() / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (flock(file, LOCK_EX) != 0)
            return 3;
        for (QAction* action : window.findChildren<QAction*>()) {
            if (action->text() == "Sync")
                action->trigger();
        }
        QTimer::singleShot(1000, [&] {
            code = window.findChild<QProgressDialog*>()->isVisible() ? 7 : 4;
            const auto now = std::chrono::system_clock::now().time_since_epoch();
            std::printf(
                "%lld\n", static_cast<long long>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
            std::fflush(stdout);
            window.close();
        });
        QApplication::exec();
    }
    return code;
}
