// The recipe that watches a folder of a workspace.
#include <QFileSystemWatcher>
#include <QTimer>
#include <functional>

#include <gtest/gtest.h>

#include <velmora/api/Interop.h>
#include "tests/support/TemporaryFolder.h"
#include "tests/window/WindowTest.h"

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

TEST(FolderWatcher, ReportsManyChangesOnce)
{
    startApplication();
    const TestSupport::TemporaryFolder folder;
    Item item;
    item.workspacePath = folder.file(L"").c_str();
    int calls = 0;
    const FolderWatcher watcher(item, [&calls] { ++calls; });

    for (const wchar_t* name : {L"a", L"b", L"c"})
        TestSupport::writeFile(folder.file(name), "x");

    EXPECT_TRUE(waitFor([&] { return calls > 0; }));
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
