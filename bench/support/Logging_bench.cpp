#include <array>
#include <memory>
#include <optional>
#include <ostream>
#include <streambuf>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>
#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVKeyValueEvent.h>
#include <velmora/logging/QVLoggerBase.h>
#include "bench/support/Ratios.h"

namespace
{

using namespace Quorvex::Velmora;

constexpr int EventCount = 100'000;

using Leaf = std::pair<std::wstring, std::wstring>;
const std::array<Leaf, 7> Leaves{
    Leaf{L"operation", L"getFolderContents"},
    Leaf{L"path", L"C:\\Drive\\Project\\Folder"},
    Leaf{L"count", L"1234"},
    Leaf{L"bytes", L"18446744073709"},
    Leaf{L"seconds", L"0.12345678901234568"},
    Leaf{L"offline", L"false"},
    Leaf{L"message", L"a text of usual length"},
};

/// Discards all characters.
class Discarding : public std::wstreambuf
{
public:
    Discarding() { setp(buffer.data(), buffer.data() + buffer.size()); }

protected:
    int_type overflow(int_type c) override
    {
        setp(buffer.data(), buffer.data() + buffer.size());
        return traits_type::not_eof(c);
    }

private:
    std::array<wchar_t, 4096> buffer{};
};

void logEvent(Logging::QVLoggerBase& logger)
{
    auto event = std::make_unique<Logging::QVKeyValueEvent>(L"event");
    for (const auto& [key, value] : Leaves)
        event->putString(key, value);
    logger.log(std::move(event));
}

void logEvents(Logging::QVLoggerBase& logger)
{
    for (int i = 0; i < EventCount; ++i)
        logEvent(logger);
}

// What logging costs the thread that logs. The events are dropped aside: flush() does that, on any thread. A thousand
// wait at most, so that fresh memory of the system is not measured.
void LogEvent(benchmark::State& state)
{
    std::optional<Logging::QVLoggerBase> logger(std::in_place, nullptr);
    int waiting = 0;
    for (auto _ : state) {
        logEvent(*logger);
        if (++waiting == 1'000) {
            state.PauseTiming();
            logger.emplace(nullptr);
            waiting = 0;
            state.ResumeTiming();
        }
    }
}

void Nothing(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::ClobberMemory();
}

void Flush(benchmark::State& state)
{
    Discarding buffer;
    std::wostream stream(&buffer);
    for (auto _ : state) {
        state.PauseTiming();
        Logging::QVLoggerBase logger(std::make_unique<Logging::QVJsonLogTarget>(stream, false));
        logEvents(logger);
        state.ResumeTiming();
        logger.flush();
    }
}

void FillAndWriteJson(benchmark::State& state)
{
    Discarding buffer;
    std::wostream stream(&buffer);
    for (auto _ : state) {
        for (int i = 0; i < EventCount; ++i) {
            boost::property_tree::wptree tree;
            for (const auto& [key, value] : Leaves)
                tree.put(key, value);
            boost::property_tree::write_json(stream, tree, false);
        }
    }
}

BENCHMARK(Nothing);
BENCHMARK(LogEvent);
BENCHMARK(Flush)->Unit(benchmark::kMillisecond);
BENCHMARK(FillAndWriteJson)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    return Bench::runWithRatios(argc, argv,
        {{"flush of 100,000 events against filling a tree and write_json", "Flush", "FillAndWriteJson",
             Bench::Goal::AtMost, 0.8},
            {"logging an event of 7 values, ns", "LogEvent", "Nothing", Bench::Goal::AtMostAbove, 400}});
}
