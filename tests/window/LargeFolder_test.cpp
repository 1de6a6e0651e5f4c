// A folder of 100,000 items: it is all there, and the test prints what it took.
#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProgressDialog>
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
    /// Does something, waits for its outcome, and prints how long that took and for how long at most the window could
    /// do nothing else.
    template <class Act, class Condition>
    void measure(const char* what, Act act, Condition condition)
    {
        QTest::qWait(50);
        (void)block.take();
        QElapsedTimer time;
        time.start();
        act();
        EXPECT_TRUE(waitFor(condition)) << what;
        const auto elapsed = time.elapsed();
        // What is left to do, such as the layout, and the tick that ends the last block.
        QTest::qWait(100);
        const Block longest = block.take();
        std::printf("%s: %lld ms, window blocked for at most %.1f ms (%.1f ms of processor time)\n", what,
            static_cast<long long>(elapsed), longest.elapsed, longest.used);
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
    // The first one is slow, because .NET compiles what it needs.
    for (const char* what : {"first request", "request alone"}) {
        QElapsedTimer requestTime;
        requestTime.start();
        (void)Api::RequestQueue()
            .ask([](Api::QvNativeTessaportAPI& tessaport) {
                return tessaport.getFolderContents(tessaport.getDrives()[0]->root).GetSize();
            })
            .get();
        std::printf("%s: %lld ms\n", what, static_cast<long long>(requestTime.elapsed()));
    }

    measure(
        "list", [&] { trigger("Refresh"); }, [&] { return rows() == Count; });
    std::printf("memory: %.0f MB\n", residentMemory() - before);

    auto& list = part<QTableView>("list");
    const QString last = QString("Section %1 - elevations.dwg").arg(Count - 1, 7, 10, QChar('0'));
    using DriveWindow::ItemModel;
    const auto* const model = list.model();
    measure(
        "sort", [&] { list.sortByColumn(ItemModel::Size, Qt::DescendingOrder); },
        [&] { return model->index(0, 0).data() == last; });
    // The states of the first items suffice.
    list.sortByColumn(ItemModel::Name, Qt::AscendingOrder);
    const auto hasState = [&] { return !model->index(0, ItemModel::State).data().toString().isEmpty(); };
    ASSERT_TRUE(waitFor(hasState));
    measure(
        "sort", [&] { list.sortByColumn(ItemModel::State, Qt::DescendingOrder); }, hasState);
    measure(
        "sort", [&] { list.sortByColumn(ItemModel::Modified, Qt::DescendingOrder); },
        [&] { return model->index(0, 0).data() == last; });
    list.selectRow(0);
    measure(
        "filter", [&] { part<QLineEdit>("filter").setText("7"); }, [&] { return rows() == 40'951; });
    measure(
        "no filter", [&] { part<QLineEdit>("filter").clear(); }, [&] { return rows() == Count; });

    measure(
        "select all",
        [&] {
            list.selectAll();
            // The properties are read a moment later.
            QTest::qWait(300);
        },
        [&] { return list.selectionModel()->isRowSelected(Count - 1); });
    measure(
        "sort of all selected", [&] { list.sortByColumn(ItemModel::Name, Qt::AscendingOrder); },
        [&] { return list.model()->index(0, 0).data() != last; });
    EXPECT_TRUE(list.selectionModel()->isRowSelected(Count - 1));
    measure(
        "sync", [&] { trigger("Sync"); }, [&] { return window->findChild<QProgressDialog*>() != nullptr; });

    QElapsedTimer time;
    time.start();
    window.reset();
    std::printf("close: %lld ms\n", static_cast<long long>(time.elapsed()));
}

TEST_F(LargeFolder, OfFoldersFillsTheTree)
{
    service.record(false);
    const auto folders = [this] {
        const auto* model = part<QTreeView>("tree").model();
        return model->rowCount(model->index(0, 0));
    };
    measure(
        "window", [&] { openWindow(); }, [&] { return column(0).contains("b.txt"); });

    service.answer("GetChildFolders", TestSupport::generated(Count));
    measure(
        "tree", [&] { trigger("Refresh"); }, [&] { return folders() == Count; });

    service.answer("GetChildFolders", TestSupport::generated(Count + 1));
    measure(
        "tree again", [&] { trigger("Refresh"); }, [&] { return folders() == Count + 1; });
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
