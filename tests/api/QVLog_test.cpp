#include "velmora/api/QVLog.h"

#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using Quorvex::Velmora::Common::QVLog;
using Quorvex::Velmora::Common::QVString;

namespace
{

using Line = std::pair<std::wstring, bool>;

class Log : public testing::Test
{
protected:
    ~Log() override { QVLog::setSink({}); }

    void collect()
    {
        QVLog::setSink([this](const QVString& line, bool flag) { lines.emplace_back(line.w_str(), flag); });
    }

    std::vector<Line> lines;
};

} // namespace

TEST_F(Log, IsTheOnlyOneOfTheProcess)
{
    EXPECT_NE(QVLog::getLogFile(), nullptr);
    EXPECT_EQ(QVLog::getLogFile(), QVLog::getLogFile());
}

TEST_F(Log, PassesLinesAndFlagsToTheSink)
{
    collect();

    QVLog::getLogFile()->addMessage(L"one", false);
    QVLog::getLogFile()->addMessage(L"two", true);

    EXPECT_EQ(lines, (std::vector<Line>{{L"one", false}, {L"two", true}}));
}

TEST_F(Log, DropsLinesWithoutASink)
{
    QVLog::getLogFile()->addMessage(L"before", false);
    collect();
    QVLog::setSink({});

    QVLog::getLogFile()->addMessage(L"after", false);

    EXPECT_TRUE(lines.empty());
}

TEST_F(Log, ContinuesAfterTheSinkHasThrown)
{
    QVLog::setSink([](const QVString&, bool) { throw std::runtime_error("disk full"); });
    EXPECT_NO_THROW(QVLog::getLogFile()->addMessage(L"line", false));
    QVLog::setSink([](const QVString&, bool) { throw 1; });
    EXPECT_NO_THROW(QVLog::getLogFile()->addMessage(L"line", false));

    collect();
    QVLog::getLogFile()->addMessage(L"next", false);

    EXPECT_EQ(lines.size(), 1U);
}

TEST_F(Log, CallsTheSinkOnTheThreadThatWrites)
{
    std::thread::id seen;
    QVLog::setSink([&seen](const QVString&, bool) { seen = std::this_thread::get_id(); });

    std::thread writer([] { QVLog::getLogFile()->addMessage(L"line", false); });
    const std::thread::id expected = writer.get_id();
    writer.join();

    EXPECT_EQ(seen, expected);
}

TEST_F(Log, AllowsTheSinkToWriteToTheLog)
{
    QVLog::setSink([this](const QVString& line, bool flag) {
        lines.emplace_back(line.w_str(), flag);
        if (lines.size() < 3)
            QVLog::getLogFile()->addMessage(L"nested", true);
    });

    QVLog::getLogFile()->addMessage(L"line", false);

    EXPECT_EQ(lines.size(), 3U);
}

// A sink that writes to a pipe waits for its reader.
TEST_F(Log, ASinkThatWaitsKeepsNeitherOtherThreadsNorTheNextSinkFromTheLog)
{
    std::promise<void> begun;
    std::promise<void> reader;
    QVLog::setSink([&begun, arrived = reader.get_future().share()](const QVString&, bool) {
        begun.set_value();
        arrived.wait();
    });
    std::thread waiting([] { QVLog::getLogFile()->addMessage(L"waits", false); });
    begun.get_future().wait();

    auto others = std::async(std::launch::async, [this] {
        collect();
        QVLog::getLogFile()->addMessage(L"line", false);
    });
    const bool wasFree = others.wait_for(std::chrono::seconds(20)) == std::future_status::ready;
    reader.set_value();
    waiting.join();
    others.wait();

    EXPECT_TRUE(wasFree);
    EXPECT_EQ(lines.size(), 1U);
}

TEST_F(Log, PassesEveryLineOfEveryThreadWhileSinksAreReplaced)
{
    constexpr int Writers = 4;
    constexpr int Lines = 20'000;
    std::atomic<int> received{0};
    std::atomic<int> writing{Writers};
    const auto count = [&received] { QVLog::setSink([&received](const QVString&, bool) { ++received; }); };
    count();
    std::vector<std::thread> writers;
    writers.reserve(Writers);
    for (int i = 0; i < Writers; ++i) {
        writers.emplace_back([&writing] {
            for (int line = 0; line < Lines; ++line)
                QVLog::getLogFile()->addMessage(L"line", false);
            --writing;
        });
    }
    while (writing > 0)
        count();
    for (std::thread& writer : writers)
        writer.join();

    EXPECT_EQ(received, Lines * Writers);
}
