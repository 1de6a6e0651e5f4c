// What one call costs beside what it carries: connections, requests without data, requests with one small record, ids.
#include <cstdint>
#include <cstdio>

#include <benchmark/benchmark.h>

#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/bridge/boundary/ReplyReader.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include "bench/bridge/SteadyAllocator.h"
#include "bench/support/Ratios.h"
#include "tests/support/ScriptedService.h"

namespace
{

using namespace Quorvex::Velmora;
using Tessaport::ClrRuntime;
using Tessaport::QvManagedTessaportService;
using Tessaport::TessaportEntryPoints;
using TessaportAPI::QvNativeTessaportAPI;

constexpr unsigned IdCount = 1000000;
constexpr Tessaport::VelmoraArguments NoArguments{};

const TessaportEntryPoints& table() { return ClrRuntime::ofProcess().entryPoints(); }

Tessaport::VelmoraHandle rawService()
{
    static const Tessaport::VelmoraHandle handle = [] {
        Tessaport::VelmoraReply reply{};
        table().request(Tessaport::VelmoraRequest::CreateService, 0, &NoArguments, &reply);
        const Tessaport::VelmoraHandle made = Tessaport::ReplyReader(reply, table()).takeHandle();
        table().releaseReply(&reply);
        return made;
    }();
    return handle;
}

void BareCall(benchmark::State& state)
{
    const auto request = table().request;
    const Tessaport::VelmoraHandle service = rawService();
    Tessaport::VelmoraReply reply{};
    for (auto _ : state)
        benchmark::DoNotOptimize(request(Tessaport::VelmoraRequest::Discover, service, &NoArguments, &reply));
}

void RequestWithoutData(benchmark::State& state)
{
    QvNativeTessaportAPI connection;
    for (auto _ : state)
        connection.discover();
}

void RequestForOneRecord(benchmark::State& state)
{
    QvManagedTessaportService bridge;
    const auto root = bridge.getDrives()[0]->root;
    const Common::QVString name = L"Drawings";
    for (auto _ : state)
        benchmark::DoNotOptimize(bridge.getOrCreateFolder(root.id, name));
}

void Nothing(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::ClobberMemory();
}

void SecondConnection(benchmark::State& state)
{
    for (auto _ : state)
        QvNativeTessaportAPI connection;
}

void MakeAndDropIds(benchmark::State& state)
{
    QvManagedTessaportService bridge;
    for (auto _ : state) {
        const auto ids = bridge.getPermanentIds({});
        if (ids.GetSize() != IdCount)
            state.SkipWithError("not all ids were made");
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * IdCount);
}

BENCHMARK(Nothing);
BENCHMARK(BareCall);
BENCHMARK(RequestWithoutData);
BENCHMARK(RequestForOneRecord);
BENCHMARK(SecondConnection);
BENCHMARK(MakeAndDropIds);

} // namespace

int main(int argc, char** argv)
{
    Quorvex::Velmora::Bench::keepMemory();
    TestSupport::ScriptedService scripted;
    scripted.record(false);
    scripted.answer("GetPermanentIds", TestSupport::generated(IdCount));
    scripted.answer("GetOrCreateFolder", TestSupport::item(1));
    using Bench::Goal;
    const int code = Bench::runWithRatios(argc, argv,
        {
            {"request without data above the bare call, ns", "RequestWithoutData", "BareCall", Goal::AtMostAbove, 100},
            {"request with one record, ns, the managed call included", "RequestForOneRecord", "Nothing",
                Goal::AtMostAbove, 2000},
            {"second connection, ns", "SecondConnection", "Nothing", Goal::AtMostAbove, 20000},
            {"making and dropping 1,000,000 ids, ns", "MakeAndDropIds", "Nothing", Goal::AtMostAbove, 50.0 * IdCount},
        });
    const std::int64_t left = TestSupport::countHandles();
    std::printf("handles left: %lld (the raw service is one)\n", static_cast<long long>(left));
    return left > 1 ? 2 : code;
}
