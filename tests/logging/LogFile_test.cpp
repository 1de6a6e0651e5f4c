// Logs in files that fill their disk, and logs of processes that die.
#include "../support/CapturedErrors.h"
#include "../support/SmallDisk.h"
#include "../support/TemporaryFolder.h"

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVJsonParser.h>
#include <velmora/logging/QVKeyValueEvent.h>
#include <velmora/logging/QVLoggerBase.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace Quorvex::Velmora::Logging
{
namespace
{

std::unique_ptr<QVLoggableEvent> numbered(std::uint32_t number)
{
    auto event = std::make_unique<QVKeyValueEvent>(L"e");
    event->putUInt32(L"n", number);
    event->putString(L"text", L"some words, so that a line does not fit a file's blocks");
    return event;
}

struct LogText {
    std::vector<std::string> wholeLines;
    std::string rest;
};

LogText readLog(const std::wstring& path)
{
    const auto bytes = TestSupport::readFile(path);
    std::istringstream stream(std::string(bytes.begin(), bytes.end()));
    LogText log;
    for (std::string line; std::getline(stream, line);) {
        if (stream.eof())
            log.rest = line;
        else
            log.wholeLines.push_back(line);
    }
    return log;
}

void expectNumberedLines(const LogText& log)
{
    std::uint32_t expected = 0;
    for (const auto& line : log.wholeLines) {
        const TestSupport::CapturedErrors errors;
        std::wistringstream stream(std::wstring(line.begin(), line.end()));
        const QVJsonParser parser(stream);
        std::uint32_t number = 0;
        ASSERT_TRUE(parser.getUInt32(L"n", number)) << line << errors.text();
        ASSERT_EQ(number, expected++);
    }
}

TEST(LogOnAFullDisk, PassesTheErrorOutAndKeepsTheQueueAndTheEarlierLines)
{
    constexpr std::uint32_t Count = 5'000;
    const TestSupport::SmallDisk disk(64 * 1024);
    std::wofstream stream(TestSupport::toPath(disk.file(L"log")));
    QVLoggerBase logger(std::make_unique<QVJsonLogTarget>(stream, false));
    for (std::uint32_t i = 0; i < Count; ++i)
        logger.log(numbered(i));
    EXPECT_THROW(logger.flush(), std::runtime_error);

    const auto log = readLog(disk.file(L"log"));
    EXPECT_GT(log.wholeLines.size(), 100U);
    expectNumberedLines(log);

    // With room again, the same events are written.
    std::wostringstream other;
    stream.clear();
    stream.std::wios::rdbuf(other.rdbuf());
    logger.flush();
    const std::wstring text = other.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), L'\n'), static_cast<std::ptrdiff_t>(Count));
}

[[noreturn]] void logForEver(const std::wstring& path)
{
    std::wofstream stream(TestSupport::toPath(path));
    QVLoggerBase logger(std::make_unique<QVJsonLogTarget>(stream, false));
    for (std::uint32_t i = 0;; ++i) {
        logger.log(numbered(i));
        if (i % 16 == 0)
            logger.flush();
    }
}

TEST(LogOfAKilledProcess, HasWholeLinesBeforeTheLast)
{
    const TestSupport::TemporaryFolder folder;
    for (int round = 0; round < 5; ++round) {
        const std::wstring path = folder.file(L"log" + std::to_wstring(round));
        const pid_t child = fork();
        ASSERT_NE(child, -1);
        if (child == 0)
            logForEver(path);
        std::this_thread::sleep_for(std::chrono::milliseconds(50 + 13 * round));
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));

        const auto log = readLog(path);
        EXPECT_GT(log.wholeLines.size(), 0U);
        expectNumberedLines(log);
    }
}

} // namespace
} // namespace Quorvex::Velmora::Logging
