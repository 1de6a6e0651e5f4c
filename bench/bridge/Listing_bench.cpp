// A folder of 100,000 items: through the bridge, and in every other way that there is.
#include <iterator>
#include <map>
#include <string>

#include <benchmark/benchmark.h>

#include <velmora/api/TextAccess.h>
#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include "bench/bridge/NativeLimit.h"
#include "bench/bridge/PeerListings.h"
#include "bench/bridge/SocketPeer.h"
#include "bench/bridge/SteadyAllocator.h"
#include "bench/support/Ratios.h"
#include "tests/support/ScriptedService.h"

namespace
{

using namespace Quorvex::Velmora;
using Bench::Ids;
using Common::QVBuffer;
using Tessaport::QvManagedTessaportService;
using TessaportAPI::Item;
using TessaportAPI::QvNativeTessaportAPI;

constexpr unsigned Count = 100000;
constexpr unsigned SmallCount = 10000;

class Service
{
public:
    Service()
    {
        scripted.record(false);
        scripted.answer("GetFolderContents", TestSupport::generated(Count));
        scripted.answer("GetChildFolders", TestSupport::generated(SmallCount));
        root = QvManagedTessaportService().getDrives()[0]->root;
        source = Bench::sourceOf(QvManagedTessaportService().getFolderContents(root.id));
    }

    TestSupport::ScriptedService scripted;
    Item root;
    std::vector<Bench::SourceItem> source;
};

Service& service()
{
    static Service service;
    return service;
}

void perItem(benchmark::State& state, unsigned count)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * count);
}

// Only the making is timed: whoever lists, drops what is listed sooner or later.
template <class Make>
void measureMaking(benchmark::State& state, unsigned count, Make make)
{
    for (auto _ : state) {
        auto items = make();
        if (items.GetSize() != count)
            state.SkipWithError("the listing is not complete");
        state.PauseTiming();
        {
            auto dropped = std::move(items);
        }
        QvNativeTessaportAPI::clearCachedItems();
        state.ResumeTiming();
    }
    perItem(state, count);
}

void BridgeListing(benchmark::State& state)
{
    QvManagedTessaportService bridge;
    measureMaking(state, Count, [&] { return bridge.getFolderContents(service().root.id); });
}

void BridgeSmallListing(benchmark::State& state)
{
    QvManagedTessaportService bridge;
    measureMaking(state, SmallCount, [&] { return bridge.getChildFolders(service().root.id); });
}

void NativeListing(benchmark::State& state)
{
    measureMaking(state, Count, [&] { return Bench::listing(service().source, Ids::Own); });
}

void NativeListingWithoutIds(benchmark::State& state)
{
    measureMaking(state, Count, [&] { return Bench::listing(service().source, Ids::None); });
}

void CachedListing(benchmark::State& state)
{
    QvNativeTessaportAPI connection;
    measureMaking(state, Count, [&] { return connection.getFolderContents(service().root); });
}

void NativeListingIntoMap(benchmark::State& state)
{
    std::map<std::wstring, Item> cache;
    for (auto _ : state) {
        auto items = Bench::listing(service().source, Ids::Own);
        auto hint = cache.end();
        for (const Item& item : items)
            hint = std::next(cache.try_emplace(hint, item.workspacePath.w_str(), item));
        state.PauseTiming();
        cache.clear();
        {
            auto dropped = std::move(items);
        }
        state.ResumeTiming();
    }
    perItem(state, Count);
}

void PerPropertyListing(benchmark::State& state)
{
    measureMaking(state, Count, [] { return Bench::perPropertyListing(Count); });
}

void NaiveListing(benchmark::State& state)
{
    measureMaking(state, Count, [] { return Bench::naiveListing(Count); });
}

void JsonListing(benchmark::State& state)
{
    measureMaking(state, Count, [] { return Bench::jsonListing(Count); });
}

void SocketListing(benchmark::State& state)
{
    static Bench::SocketPeer other(service().source);
    measureMaking(state, Count, [] { return other.listing(); });
}

BENCHMARK(BridgeListing)->Unit(benchmark::kMillisecond);
BENCHMARK(NativeListing)->Unit(benchmark::kMillisecond);
BENCHMARK(NativeListingWithoutIds)->Unit(benchmark::kMillisecond);
BENCHMARK(CachedListing)->Unit(benchmark::kMillisecond);
BENCHMARK(NativeListingIntoMap)->Unit(benchmark::kMillisecond);
BENCHMARK(BridgeSmallListing)->Unit(benchmark::kMillisecond);
BENCHMARK(PerPropertyListing)->Unit(benchmark::kMillisecond);
BENCHMARK(NaiveListing)->Unit(benchmark::kMillisecond);
BENCHMARK(JsonListing)->Unit(benchmark::kMillisecond);
BENCHMARK(SocketListing)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (const auto parent = Bench::LocalConnection::ofPeer(argc, argv))
        return Bench::SocketPeer::serve(*parent);
    Quorvex::Velmora::Bench::keepMemory();
    service();
    using Bench::Goal;
    return Bench::runWithRatios(argc, argv,
        {
            {"listing to native limit", "BridgeListing", "NativeListing", Goal::AtMost, 0.7, 1.5},
            {"listing with cache to native limit with map", "CachedListing", "NativeListingIntoMap", Goal::AtMost, 0.6},
            {"100,000 items to 10,000", "BridgeListing", "BridgeSmallListing", Goal::AtMost, 11.0},
            {"faster than a call for each property", "BridgeListing", "PerPropertyListing", Goal::AtLeast, 1.5},
            {"faster than a naive call for each property", "BridgeListing", "NaiveListing", Goal::AtLeast, 5.0},
            {"faster than JSON", "BridgeListing", "JsonListing", Goal::AtLeast, 5.0},
            {"faster than another process over a socket", "BridgeListing", "SocketListing", Goal::AtLeast, 1.0},
        });
}
