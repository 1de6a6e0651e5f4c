// Each operation is run with each of its allocations failing. It must not leak, and its object must be as before or as
// after a run that succeeds.
#include "tests/support/FailingAllocations.h"

#include <array>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include <boost/property_tree/json_parser.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVJsonParser.h>
#include <velmora/logging/QVKeyValueEvent.h>
#include <velmora/logging/QVLoggerBase.h>
#include "tests/logging/RecordingFormatter.h"

namespace Quorvex::Velmora::Logging
{
namespace
{

using testing::AnyOf;
using TestSupport::failEachAllocation;
using TestSupport::liveAllocations;
using TestSupport::madeAllocations;

// Too long to be stored without an allocation.
const std::wstring LongText = L"a string that takes an allocation of its own";

using Put = std::pair<const char*, void (*)(IO::QVKeyValueSink&)>;
const std::array<Put, 9> Puts{
    Put{"Flat", [](auto& sink) { sink.putString(L"a new key with some length", LongText); }},
    Put{"Nested", [](auto& sink) { sink.putString(L"one new level.another new level.a third new level", LongText); }},
    Put{"BelowAnExistingKey", [](auto& sink) { sink.putString(L"nested.another new level.a third", LongText); }},
    Put{"Replacement", [](auto& sink) { sink.putString(L"nested.inner", LongText); }},
    Put{"OfTheRoot", [](auto& sink) { sink.putString(L"", LongText); }},
    Put{"OfABool", [](auto& sink) { sink.putBool(L"new", false); }},
    Put{"OfADouble", [](auto& sink) { sink.putDouble(L"new", 1234567.125); }},
    Put{"OfAUInt32", [](auto& sink) { sink.putUInt32(L"new", 4'000'000'000U); }},
    Put{"OfAUInt64", [](auto& sink) { sink.putUInt64(L"new", 18'000'000'000'000'000'000U); }},
};

void putKeys(IO::QVKeyValueSink& sink, int count)
{
    sink.putString(L"nested.inner", L"previous");
    for (int i = 1; i < count; ++i)
        sink.putUInt32(L"key " + std::to_wstring(i), 1'000'000U);
}

// Few keys, as many as are searched one by one, and more.
constexpr std::array<int, 3> KeyCounts{3, 32, 50};

/// Everything that an event shows: its keys and values, nested ones included.
std::wstring imageOf(const QVKeyValueEvent& event)
{
    RecordingFormatter formatter;
    event.writeTo(formatter);
    std::wstring image;
    for (const auto& call : formatter.calls)
        image += call + L'\n';
    for (const wchar_t* const key :
        {L"", L"nested.inner", L"nested.another new level", L"one new level.another new level",
            L"nested.another new level.a third", L"one new level.another new level.a third new level"}) {
        std::wstring text = L"(none)";
        event.getString(key, text);
        image += text + L'\n';
    }
    return image;
}

class FailingPut : public testing::TestWithParam<Put>
{
};

TEST_P(FailingPut, LeavesAnEventAsBeforeOrAsAfter)
{
    const auto put = GetParam().second;
    for (const int keyCount : KeyCounts) {
        QVKeyValueEvent original(L"e");
        putKeys(original, keyCount);
        QVKeyValueEvent changed(original);
        put(changed);
        const std::wstring before = imageOf(original);
        const std::wstring after = imageOf(changed);

        QVKeyValueEvent event(original);
        const auto check = [&] {
            EXPECT_THAT(imageOf(event), AnyOf(before, after));
            // A key that a failed put has left behind would be there twice now.
            put(event);
            EXPECT_EQ(imageOf(event), after);
            event = original;
        };
        EXPECT_GT(failEachAllocation([&] { put(event); }, check), 0);
    }
}

/// What the target writes for its current record.
std::wstring recordOf(QVJsonLogTarget& target, std::wostringstream& stream)
{
    stream.str({});
    try {
        target.endRecord(L"");
    } catch (const boost::property_tree::json_parser_error& error) {
        return L"not written";
    }
    return stream.str();
}

TEST_P(FailingPut, LeavesARecordAsBeforeOrAsAfter)
{
    const auto put = GetParam().second;
    std::wostringstream stream;
    std::optional<QVJsonLogTarget> target;
    const auto restart = [&] {
        target.emplace(stream, false);
        target->beginRecord(L"");
        putKeys(*target, 3);
    };
    restart();
    const std::wstring before = recordOf(*target, stream);
    put(*target);
    const std::wstring after = recordOf(*target, stream);
    restart();

    const auto check = [&] {
        EXPECT_THAT(recordOf(*target, stream), AnyOf(before, after));
        put(*target);
        EXPECT_EQ(recordOf(*target, stream), after);
        restart();
    };
    EXPECT_GT(failEachAllocation([&] { put(*target); }, check), 0);
}

INSTANTIATE_TEST_SUITE_P(
    , FailingPut, testing::ValuesIn(Puts), [](const auto& info) { return std::string(info.param.first); });

TEST(FailingAllocationOfAnEvent, WhileItIsConstructedOrCopiedLeaksNothing)
{
    QVKeyValueEvent original(LongText);
    putKeys(original, 50);
    QVKeyValueEvent target(L"target");
    const std::wstring before = imageOf(target);
    const std::wstring after = imageOf(original);

    EXPECT_GT(failEachAllocation([] { const QVKeyValueEvent event(LongText); }, [] {}), 0);
    EXPECT_GT(failEachAllocation([&] { QVKeyValueEvent(original).finish(); }, [] {}), 0);
    const auto check = [&] {
        EXPECT_THAT(imageOf(target), AnyOf(before, after));
        target = QVKeyValueEvent(L"target");
    };
    EXPECT_GT(failEachAllocation([&] { target = original; }, check), 0);
}

TEST(FailingAllocationOfAGetter, PropagatesOrGivesTheValue)
{
    QVKeyValueEvent event(L"e");
    event.putDouble(L"double", 1234567.125);
    event.putUInt64(L"uint64", 18'000'000'000'000'000'000U);
    event.putBool(L"bool", true);
    event.putString(L"string", LongText);
    double fraction = 0;
    std::uint64_t number = 0;
    bool flag = false;
    std::wstring text;
    bool found = true;

    const auto check = [&] {
        EXPECT_TRUE(found) << "the failed allocation was taken for a value that does not convert";
    };
#ifdef _WIN32
    // The C++ library takes a failed allocation of its own for a number that does not convert there.
    EXPECT_TRUE(event.getDouble(L"double", fraction));
#else
    EXPECT_GT(failEachAllocation([&] { found = event.getDouble(L"double", fraction); }, check), 0);
#endif
    EXPECT_GT(failEachAllocation([&] { found = event.getUInt64(L"uint64", number); }, check), 0);
    EXPECT_GT(failEachAllocation([&] { found = event.getBool(L"bool", flag); }, check), 0);
    const auto checkAndEmpty = [&] {
        check();
        std::wstring().swap(text);
    };
    EXPECT_GT(failEachAllocation([&] { found = event.getString(L"string", text); }, checkAndEmpty), 0);
    EXPECT_EQ(fraction, 1234567.125);
    EXPECT_EQ(number, 18'000'000'000'000'000'000U);
    EXPECT_TRUE(flag);
}

/// Counts lines without an allocation.
class LineCounter : public std::wstreambuf
{
public:
    int lines = 0;

protected:
    int_type overflow(int_type c) override
    {
        lines += c == L'\n' ? 1 : 0;
        return traits_type::not_eof(c);
    }
};

std::unique_ptr<QVLoggableEvent> eventWithText()
{
    auto event = std::make_unique<QVKeyValueEvent>(L"e");
    event->putString(L"key", LongText);
    return event;
}

TEST(FailingAllocationOfALogger, QueuesTheEventOrReleasesIt)
{
    LineCounter counter;
    std::wostream stream(&counter);
    QVLoggerBase logger(std::make_unique<QVJsonLogTarget>(stream, false));
    logger.log(eventWithText());
    logger.flush();

    bool logged = false;
    const auto check = [&] {
        counter.lines = 0;
        logger.flush();
        EXPECT_EQ(counter.lines, logged ? 1 : 0);
        logged = false;
    };
    const auto log = [&] {
        logger.log(eventWithText());
        logged = true;
    };
    EXPECT_GT(failEachAllocation(log, check), 0);
}

TEST(FailingAllocationOfALogger, KeepsTheQueueForTheNextFlush)
{
    constexpr int Count = 3;
    LineCounter counter;
    std::wostream stream(&counter);
    QVLoggerBase logger(std::make_unique<QVJsonLogTarget>(stream, false));
    const auto fill = [&logger] {
        for (int i = 0; i < Count; ++i)
            logger.log(eventWithText());
    };
    fill();
    logger.flush();
    fill();

    bool flushed = false;
    const auto check = [&] {
        counter.lines = 0;
        logger.flush();
        EXPECT_EQ(counter.lines, flushed ? 0 : Count);
        flushed = false;
        fill();
    };
    const auto flush = [&] {
        logger.flush();
        flushed = true;
    };
    EXPECT_GT(failEachAllocation(flush, check), 0);
}

TEST(LoggerMemory, IsReleasedByAFlush)
{
    QVLoggerBase logger(nullptr);
    const auto before = liveAllocations();
    for (int i = 0; i < 1000; ++i)
        logger.log(eventWithText());
    logger.flush();
    EXPECT_EQ(liveAllocations(), before);
}

/// A line of a log with many members.
std::wstring document()
{
    std::wostringstream stream;
    QVJsonLogTarget target(stream, false);
    target.beginRecord(L"");
    putKeys(target, 50);
    target.endRecord(L"");
    return stream.str();
}

TEST(FailingAllocationOfAJsonParser, LeaksNothing)
{
    const std::wstring text = document();
    const auto parse = [&text] {
        std::wistringstream stream(text);
        const QVJsonParser parser(stream);
        std::uint32_t number = 0;
        EXPECT_TRUE(parser.getUInt32(L"key 1", number));
    };
    EXPECT_GT(failEachAllocation(parse, [] {}), 0);
}

// A copy of the tree would take more than one further allocation for each member.
TEST(JsonParserMemory, HoldsOneTreeOnly)
{
    const std::wstring text = document();
    const auto allocationsOf = [&text](const auto& read) {
        std::wistringstream stream(text);
        const auto before = madeAllocations();
        read(stream);
        return madeAllocations() - before;
    };
    const auto ofTheLibrary = allocationsOf([](std::wistream& stream) {
        boost::property_tree::wptree tree;
        boost::property_tree::read_json(stream, tree);
    });
    const auto ofTheParser = allocationsOf([](std::wistream& stream) { const QVJsonParser parser(stream); });
    EXPECT_LE(ofTheParser, ofTheLibrary + 10);
}

} // namespace
} // namespace Quorvex::Velmora::Logging
