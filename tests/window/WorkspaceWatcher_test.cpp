// The recipe that watches a folder of a workspace.
#include <QFileSystemWatcher>
#include <QTimer>
#include <functional>

#include <gtest/gtest.h>

#include <velmora/api/Interop.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/window/LocalWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

using namespace TessaportAPI;

// Calls `changed` soon after files directly in a folder were added, removed or renamed: once for many changes in a row.
class FolderWatcher
{
public:
    FolderWatcher(const Item& folder, const std::function<void()>& changed)
    {
        timer.setSingleShot(true);
        timer.setInterval(200);
        QObject::connect(&timer, &QTimer::timeout, changed);
        QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &timer, [this] { timer.start(); });
        watcher.addPath(QString::fromStdString(localPath(folder).u8string()));
    }

private:
    QTimer timer;
    QFileSystemWatcher watcher;
};

using FolderWatcherTest = LocalWindow;

TEST_F(FolderWatcherTest, ReportsASyncThatChangesTheWorkspaceOnce)
{
    QvNativeTessaportAPI tessaport;
    const Item root = tessaport.getDrives()[0]->root;
    for (const char* name : {"a.txt", "b.txt", "c.txt"})
        writeText(demo.onServer(name), "x");
    int calls = 0;
    const FolderWatcher watcher(root, [&calls] { ++calls; });

    QVBuffer<Item> items;
    items.Append(root);
    ASSERT_TRUE(tessaport.syncFiles(items).isSuccess);

    ASSERT_TRUE(fs::exists(demo.here("c.txt")));
    EXPECT_TRUE(waitFor([&] { return calls > 0; }));
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
