#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVJsonParser.h>
#include <velmora/text/Unicode.h>
#include "tests/support/CapturedErrors.h"
#include "tests/support/MemoryLimit.h"

namespace Quorvex::Velmora::Logging
{
namespace
{

/// One line of a log as it is stored in a file, in UTF-8.
std::string logLine()
{
    std::wostringstream stream;
    QVJsonLogTarget target(stream, false);
    target.beginRecord(L"");
    target.putUInt32(L"n", 7);
    target.putString(L"path", L"C:\\x/\xE9\x4E2D\n");
    target.putBool(L"a.b", true);
    std::wstring astral;
    Common::Unicode::appendWide(astral, 0x1F600);
    target.putString(L"a.c", astral);
    target.endRecord(L"");
    return Common::Unicode::toUtf8(stream.str());
}

struct Reading {
    bool reported = false;
    bool answered = false;
};

Reading read(const std::string& line)
{
    const TestSupport::MemoryLimit limit(TestSupport::TwoGiB);
    const TestSupport::CapturedErrors errors;
    std::wistringstream stream(Common::Unicode::fromUtf8(line));
    const QVJsonParser parser(stream);
    Reading reading;
    for (const wchar_t* const key : {L"n", L"path", L"a.b", L"a.c"}) {
        std::wstring text;
        std::uint32_t number = 0;
        double fraction = 0;
        bool flag = false;
        reading.answered |= parser.getString(key, text);
        reading.answered |= parser.getUInt32(key, number);
        reading.answered |= parser.getDouble(key, fraction);
        reading.answered |= parser.getBool(key, flag);
    }
    reading.reported = !errors.text().empty();
    return reading;
}

TEST(UndamagedLogLine, IsReadWithoutAReport)
{
    const auto reading = read(logLine());
    EXPECT_FALSE(reading.reported);
    EXPECT_TRUE(reading.answered);
}

TEST(DamagedLogLine, CutAtAnyByteIsReportedAndEmpty)
{
    const std::string line = logLine();
    const std::size_t object = line.size() - 1;
    ASSERT_EQ(line[object], '\n');
    for (std::size_t cut = 0; cut < object; ++cut) {
        const auto reading = read(line.substr(0, cut));
        EXPECT_TRUE(reading.reported) << cut;
        EXPECT_FALSE(reading.answered) << cut;
    }
}

TEST(DamagedLogLine, WithAFlippedBitGivesAReportOrValues)
{
    const std::string line = logLine();
    for (std::size_t bit = 0; bit < line.size() * 8; ++bit) {
        std::string damaged = line;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        const auto reading = read(damaged);
        EXPECT_NE(reading.reported, reading.answered) << bit;
    }
}

} // namespace
} // namespace Quorvex::Velmora::Logging
