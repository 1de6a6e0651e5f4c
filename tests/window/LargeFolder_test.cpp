// A folder of 100,000 items: it is all there, and the test prints what it took.
#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>

#include "tests/window/ScriptedWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

constexpr int Count = 100'000;

std::int64_t cpuTimeOfThread()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
}

/// The longest time for which the window's thread did one thing, in milliseconds.
struct Block {
    double elapsed = 0; // Also what other processes used of the processor.
    double used = 0;    // What the thread itself used of it.
};

class LongestBlock
{
public:
    LongestBlock()
    {
        timer.setInterval(0);
        QObject::connect(&timer, &QTimer::timeout, [this] {
            longest.elapsed = std::max(longest.elapsed, static_cast<double>(sinceTick.nsecsElapsed()) / 1e6);
            longest.used = std::max(longest.used, static_cast<double>(cpuTimeOfThread() - usedAtTick) / 1e6);
            start();
        });
        timer.start();
        start();
    }

    /// Since the last time.
    [[nodiscard]] Block take() { return std::exchange(longest, {}); }

private:
    void start()
    {
        sinceTick.start();
        usedAtTick = cpuTimeOfThread();
    }

    QTimer timer;
    QElapsedTimer sinceTick;
    std::int64_t usedAtTick = 0;
    Block longest;
};

double residentMemory()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word == "VmRSS:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    }
    return 0;
}

class LargeFolder : public ScriptedWindow
{
protected:
    /// Prints how long something took, and for how long at most the window could do nothing else.
    template <class Condition>
    void measure(const char* what, Condition condition)
    {
        QElapsedTimer time;
        time.start();
        EXPECT_TRUE(waitFor(condition)) << what;
        const Block longest = block.take();
        std::printf("%s: %lld ms, window blocked for at most %.1f ms (%.1f ms of processor time)\n", what,
            static_cast<long long>(time.elapsed()), longest.elapsed, longest.used);
    }

    int rows() { return part<QTableView>("list").model()->rowCount(); }

    LongestBlock block;
};

TEST_F(LargeFolder, IsListedFilteredSortedAndSelected)
{
    service.record(false);
    openWindow();
    ASSERT_TRUE(waitForRow("b.txt"));
    service.answer("GetFolderContents", TestSupport::generated(Count));
    const double before = residentMemory();
    QElapsedTimer requestTime;
    requestTime.start();
    (void)Api::RequestQueue()
        .ask([](Api::QvNativeTessaportAPI& tessaport) {
            return tessaport.getFolderContents(tessaport.getDrives()[0]->root).GetSize();
        })
        .get();
    std::printf("request alone: %lld ms\n", static_cast<long long>(requestTime.elapsed()));
    QTest::qWait(100);
    (void)block.take();

    trigger("Refresh");
    measure("list", [&] { return rows() == Count; });
    std::printf("memory: %.0f MB\n", residentMemory() - before);

    auto& list = part<QTableView>("list");
    const QString last = QString("Section %1 - elevations.dwg").arg(Count - 1, 7, 10, QChar('0'));
    list.sortByColumn(DriveWindow::ItemModel::Modified, Qt::DescendingOrder);
    measure("sort", [&] { return list.model()->index(0, 0).data() == last; });

    part<QLineEdit>("filter").setText("7");
    measure("filter", [&] { return rows() == 40'951; });
    part<QLineEdit>("filter").clear();
    measure("no filter", [&] { return rows() == Count; });

    list.selectAll();
    measure("select all", [&] { return part<QLabel>("count").text().endsWith("100000 selected"); });
    list.clearSelection();

    QElapsedTimer time;
    time.start();
    window.reset();
    std::printf("close: %lld ms\n", static_cast<long long>(time.elapsed()));
}

TEST_F(LargeFolder, OfFoldersFillsTheTree)
{
    service.record(false);
    service.answer("GetChildFolders", TestSupport::generated(Count));
    openWindow();
    auto* model = part<QTreeView>("tree").model();
    measure("window", [&] { return model->rowCount() == 1; });

    measure("tree", [&] { return model->rowCount(model->index(0, 0)) == Count; });
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
