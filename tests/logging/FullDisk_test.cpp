#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVLoggerBase.h>
#include "tests/logging/NumberedEvents.h"
#include "tests/logging/NumberedLog.h"
#include "tests/support/SmallDisk.h"

namespace Quorvex::Velmora::Logging
{
namespace
{

TEST(LogOnAFullDisk, LetsTheErrorPropagateAndKeepsTheQueueAndTheEarlierLines)
{
    constexpr std::uint32_t Count = 5'000;
    const TestSupport::SmallDisk disk(64 * 1024);
    std::wofstream stream(TestSupport::toPath(disk.file(L"log")));
    QVLoggerBase logger(std::make_unique<QVJsonLogTarget>(stream, false));
    for (std::uint32_t i = 0; i < Count; ++i)
        logger.log(numbered(i));
    EXPECT_THROW(logger.flush(), std::runtime_error);

    const auto log = readLog(disk.file(L"log"));
    EXPECT_GT(log.completeLines.size(), 100U);
    expectNumberedLines(log);

    // Once there is space again, the same events are written.
    std::wostringstream other;
    stream.clear();
    stream.std::wios::rdbuf(other.rdbuf());
    logger.flush();
    const std::wstring text = other.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), L'\n'), static_cast<std::ptrdiff_t>(Count));
}

} // namespace
} // namespace Quorvex::Velmora::Logging
