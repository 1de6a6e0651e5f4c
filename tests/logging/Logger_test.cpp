#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/logging/QVJsonParser.h>
#include <velmora/logging/QVKeyValueEvent.h>
#include <velmora/logging/QVLoggerBase.h>
#include "tests/logging/RecordingFormatter.h"
#include "tests/support/VirtualTable.h"

namespace Quorvex::Velmora::Logging
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::expectSlots;

std::unique_ptr<QVKeyValueEvent> eventNamed(const std::wstring& name)
{
    return std::make_unique<QVKeyValueEvent>(name);
}

/// A logger whose formatter can be inspected.
struct RecordingLogger : QVLoggerBase {
    RecordingLogger()
        : QVLoggerBase(std::make_unique<RecordingFormatter>()),
          formatter(static_cast<RecordingFormatter&>(*QVLoggerBase::target()))
    {
    }

    RecordingFormatter& formatter;
};

TEST(Logger, CallsNothingForAnEmptyQueue)
{
    RecordingLogger logger;
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, IsEmpty());
}

TEST(Logger, WritesAnEventWithoutKeysAsAnEmptyRecord)
{
    RecordingLogger logger;
    logger.log(eventNamed(L"A"));
    EXPECT_THAT(logger.formatter.calls, IsEmpty());
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, ElementsAre(L"begin A", L"end()"));
}

TEST(Logger, WritesEventsOnceAndInTheOrderOfLogging)
{
    RecordingLogger logger;
    auto event = eventNamed(L"A");
    event->putUInt32(L"n", 1);
    logger.log(std::move(event));
    logger.log(eventNamed(L"B"));
    logger.flush();
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, ElementsAre(L"begin A", L"n=1", L"end()", L"begin B", L"end()"));
}

TEST(Logger, WritesLaterEventsWithTheNextFlush)
{
    RecordingLogger logger;
    logger.log(eventNamed(L"A"));
    logger.flush();
    logger.log(eventNamed(L"B"));
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, ElementsAre(L"begin A", L"end()", L"begin B", L"end()"));
}

TEST(Logger, IgnoresANullEvent)
{
    RecordingLogger logger;
    logger.log(nullptr);
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, IsEmpty());
}

struct CountedEvent : QVLoggableEvent {
    explicit CountedEvent(int& count) : alive(count) { ++alive; }
    ~CountedEvent() override { --alive; }
    [[nodiscard]] std::wstring name() const override { return L"counted"; }

    int& alive;
};

TEST(Logger, ReleasesEventsAfterTheFlush)
{
    int alive = 0;
    RecordingLogger logger;
    logger.log(std::make_unique<CountedEvent>(alive));
    logger.log(std::make_unique<CountedEvent>(alive));
    EXPECT_EQ(alive, 2);
    logger.flush();
    EXPECT_EQ(alive, 0);
}

TEST(Logger, DropsUnflushedEventsWhenDestroyed)
{
    int alive = 0;
    std::vector<std::wstring> calls;
    struct Watched : RecordingFormatter {
        explicit Watched(std::vector<std::wstring>& target) : seen(target) {}
        ~Watched() override { seen = calls; }
        std::vector<std::wstring>& seen;
    };
    {
        QVLoggerBase logger(std::make_unique<Watched>(calls));
        logger.log(std::make_unique<CountedEvent>(alive));
    }
    EXPECT_EQ(alive, 0);
    EXPECT_THAT(calls, IsEmpty());
}

TEST(Logger, WritesNothingWithoutAFormatter)
{
    int alive = 0;
    QVLoggerBase logger(nullptr);
    EXPECT_EQ(logger.target(), nullptr);
    logger.log(std::make_unique<CountedEvent>(alive));
    logger.flush();
    EXPECT_EQ(alive, 0);
}

TEST(Logger, CallsItsHooksAroundEachRecord)
{
    struct Hooked : RecordingLogger {
        void onBeforeWrite(QVLoggableEvent& event) override { formatter.calls.push_back(L"before " + event.name()); }
        void onAfterWrite(QVLoggableEvent& event) override { formatter.calls.push_back(L"after " + event.name()); }
    } logger;
    logger.log(eventNamed(L"A"));
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, ElementsAre(L"before A", L"begin A", L"end()", L"after A"));
}

TEST(Logger, CallsItsHooksWithoutAFormatter)
{
    struct Hooked : QVLoggerBase {
        Hooked() : QVLoggerBase(nullptr) {}
        void onBeforeWrite(QVLoggableEvent& event) override { calls.push_back(L"before " + event.name()); }
        void onAfterWrite(QVLoggableEvent& event) override { calls.push_back(L"after " + event.name()); }
        std::vector<std::wstring> calls;
    } logger;
    logger.log(eventNamed(L"A"));
    logger.log(eventNamed(L"B"));
    logger.flush();
    EXPECT_THAT(logger.calls, ElementsAre(L"before A", L"after A", L"before B", L"after B"));
}

/// Logs another event when it is destroyed.
struct Parting : QVLoggableEvent {
    explicit Parting(QVLoggerBase& target) : logger(target) {}
    ~Parting() override { logger.log(eventNamed(L"parting")); }
    [[nodiscard]] std::wstring name() const override { return L"A"; }
    void writeTo(IO::QVKeyValueSink&) const override {}

    QVLoggerBase& logger;
};

TEST(Logger, QueuesWhatAnEventLogsFromItsDestructorForTheNextFlush)
{
    RecordingLogger logger;
    logger.log(std::make_unique<Parting>(logger));
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, ElementsAre(L"begin A", L"end()"));
    logger.formatter.calls.clear();
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, ElementsAre(L"begin parting", L"end()"));
}

TEST(Logger, DropsWhatAnEventLogsWhileTheLoggerIsDestroyed)
{
    int alive = 0;
    struct PartingCounted : QVLoggableEvent {
        PartingCounted(QVLoggerBase& target, int& count) : logger(target), alive(count) {}
        ~PartingCounted() override { logger.log(std::make_unique<CountedEvent>(alive)); }
        [[nodiscard]] std::wstring name() const override { return L"parting"; }
        QVLoggerBase& logger;
        int& alive;
    };
    {
        QVLoggerBase logger(nullptr);
        logger.log(std::make_unique<PartingCounted>(logger, alive));
        logger.log(std::make_unique<PartingCounted>(logger, alive));
    }
    EXPECT_EQ(alive, 0);
}

TEST(Logger, WritesToTheTargetThatADerivedLoggerReturns)
{
    struct Redirected : RecordingLogger {
        IO::QVKeyValueFormatter* target() override { return &other; }
        RecordingFormatter other;
    } logger;
    logger.log(eventNamed(L"A"));
    logger.flush();
    EXPECT_THAT(logger.formatter.calls, IsEmpty());
    EXPECT_THAT(logger.other.calls, ElementsAre(L"begin A", L"end()"));
}

struct FailingOnce : RecordingFormatter {
    void endRecord(const std::wstring& name) override
    {
        if (++records == 2)
            throw std::runtime_error("write error");
        RecordingFormatter::endRecord(name);
    }
    int records = 0;
};

TEST(Logger, KeepsItsQueueIfTheFormatterThrows)
{
    auto owned = std::make_unique<FailingOnce>();
    auto& formatter = *owned;
    QVLoggerBase logger(std::move(owned));
    logger.log(eventNamed(L"A"));
    logger.log(eventNamed(L"B"));
    EXPECT_THROW(logger.flush(), std::runtime_error);
    formatter.calls.clear();
    logger.flush();
    EXPECT_THAT(formatter.calls, ElementsAre(L"begin A", L"end()", L"begin B", L"end()"));
}

struct Reentrant : RecordingLogger {
    void onBeforeWrite(QVLoggableEvent&) override
    {
        if (logsFromHook)
            log(eventNamed(L"inner"));
        else
            flush();
    }
    bool logsFromHook = true;
};

TEST(Logger, ReportsADeadlockInsteadOfWaitingForItself)
{
    for (const bool logsFromHook : {true, false}) {
        Reentrant logger;
        logger.logsFromHook = logsFromHook;
        logger.log(eventNamed(L"A"));
        try {
            logger.flush();
            FAIL() << "it returned";
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code(), std::errc::resource_deadlock_would_occur);
        }
        // The lock was released.
        logger.log(eventNamed(L"B"));
    }
}

TEST(Logger, LosesNothingWhileEightThreadsLogAndOneFlushes)
{
    constexpr unsigned Threads = 8;
    constexpr unsigned EventsEach = 5'000;
    RecordingLogger logger;
    std::atomic<unsigned> running{Threads};
    std::vector<std::thread> threads;
    for (unsigned thread = 0; thread < Threads; ++thread) {
        threads.emplace_back([&logger, &running, thread] {
            for (unsigned i = 0; i < EventsEach; ++i)
                logger.log(eventNamed(std::to_wstring(thread) + L":" + std::to_wstring(i)));
            --running;
        });
    }
    while (running > 0)
        logger.flush();
    for (auto& thread : threads)
        thread.join();
    logger.flush();

    std::vector<unsigned> next(Threads, 0);
    for (const auto& call : logger.formatter.calls) {
        if (call.rfind(L"begin ", 0) != 0)
            continue;
        const auto thread = static_cast<unsigned>(std::stoul(call.substr(6)));
        const auto number = static_cast<unsigned>(std::stoul(call.substr(call.find(L':') + 1)));
        ASSERT_EQ(number, next.at(thread)++) << "thread " << thread;
    }
    EXPECT_EQ(next, std::vector<unsigned>(Threads, EventsEach));
}

TEST(SlotOrder, FollowsTheContractInQVLoggableEvent)
{
    static_assert(std::has_virtual_destructor_v<QVLoggableEvent>);
    expectSlots(2, &QVLoggableEvent::name, &QVLoggableEvent::keys, &QVLoggableEvent::writeTo);
}

TEST(SlotOrder, FollowsTheContractInQVLoggerBase)
{
    static_assert(std::has_virtual_destructor_v<QVLoggerBase>);
    expectSlots(2, &QVLoggerBase::log, &QVLoggerBase::flush, &QVLoggerBase::target, &QVLoggerBase::onBeforeWrite,
        &QVLoggerBase::onAfterWrite);
}

TEST(SlotOrder, FollowsTheContractInQVJsonParser)
{
    expectSlots(8, &QVJsonParser::valueAsUInt32, &QVJsonParser::valueAsDouble, &QVJsonParser::valueAsString,
        &QVJsonParser::valueAsBool, &QVJsonParser::valueAsUInt64);
}

TEST(KeyValueEvent, HasEventSinkAndSourceAsBasesInThisOrder)
{
    QVKeyValueEvent event(L"e");
    const auto at = [&event](auto* base) {
        return reinterpret_cast<const char*>(base) - reinterpret_cast<const char*>(&event);
    };
    const auto ofEvent = at(static_cast<QVLoggableEvent*>(&event));
    const auto ofSink = at(static_cast<IO::QVKeyValueSink*>(&event));
    const auto ofSource = at(static_cast<IO::QVKeyValueSource*>(&event));
    EXPECT_EQ(ofEvent, 0);
    EXPECT_LT(ofEvent, ofSink);
    EXPECT_LT(ofSink, ofSource);
}

} // namespace
} // namespace Quorvex::Velmora::Logging
