// One path, one item: from the cache, and by a connection of its own.
#include <map>
#include <string>

#include <benchmark/benchmark.h>

#include <velmora/native/ItemCache.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>
#include "bench/bridge/SteadyAllocator.h"
#include "bench/support/Ratios.h"
#include "tests/support/ScriptedService.h"

namespace
{

using namespace Quorvex::Velmora;
using Common::QVString;
using TessaportAPI::Item;
using TessaportAPI::QvNativeTessaportAPI;

TestSupport::ScriptedService& scripted()
{
    static TestSupport::ScriptedService service;
    return service;
}

// Fills the item cache and a plain map with the same items.
class Cached
{
public:
    explicit Cached(unsigned count)
    {
        scripted().record(false);
        scripted().answer("GetFolderContents", TestSupport::generated(count));
        QvNativeTessaportAPI connection;
        const auto items = connection.getFolderContents(connection.getDrives()[0]->root);
        for (const Item& item : items)
            map.emplace(item.workspacePath.w_str(), item);
        // A thousand paths, spread over all of them.
        for (unsigned i = 0; i < 1000; ++i)
            paths.push_back(items[static_cast<std::uint32_t>((std::uint64_t{i} * 7919) % count)]->workspacePath);
    }
    Cached(const Cached&) = delete;
    Cached& operator=(const Cached&) = delete;
    ~Cached() { QvNativeTessaportAPI::clearCachedItems(); }

    std::map<std::wstring, Item> map;
    std::vector<QVString> paths;
};

template <class Resolve>
void measure(benchmark::State& state, Resolve resolve)
{
    const Cached cached(static_cast<unsigned>(state.range(0)));
    std::size_t next = 0;
    Item item;
    for (auto _ : state) {
        resolve(cached, cached.paths[next], item);
        next = (next + 1) % cached.paths.size();
    }
    if (item.workspacePath.Empty())
        state.SkipWithError("no item was found");
}

void CachedPath(benchmark::State& state)
{
    measure(state, [](const Cached&, const QVString& path, Item& item) {
        QvNativeTessaportAPI::getItemByWorkspacePath(nullptr, path, item);
    });
}

// What the library cannot avoid: the canonical key, and then a bare look-up in a map of the same kind.
void CanonicalAndBareMap(benchmark::State& state)
{
    measure(state, [](const Cached& cached, const QVString& path, Item& item) {
        const auto found = cached.map.find(TessaportAPI::cacheKey(path));
        item = found->second;
    });
}

void InstanceRequest(benchmark::State& state)
{
    QvNativeTessaportAPI connection;
    for (auto _ : state)
        benchmark::DoNotOptimize(connection.getVersion());
}

void StaticRequest(benchmark::State& state)
{
    QVString version;
    for (auto _ : state)
        benchmark::DoNotOptimize(QvNativeTessaportAPI::getVersion(nullptr, version));
}

BENCHMARK(CachedPath)->Name("CachedPath1000")->Arg(1000);
BENCHMARK(CanonicalAndBareMap)->Name("CanonicalAndBareMap1000")->Arg(1000);
BENCHMARK(CachedPath)->Name("CachedPath100000")->Arg(100000);
BENCHMARK(CanonicalAndBareMap)->Name("CanonicalAndBareMap100000")->Arg(100000);
BENCHMARK(CachedPath)->Name("CachedPath1000000")->Arg(1000000)->Iterations(20000);
BENCHMARK(CanonicalAndBareMap)->Name("CanonicalAndBareMap1000000")->Arg(1000000)->Iterations(20000);
BENCHMARK(InstanceRequest);
BENCHMARK(StaticRequest);

} // namespace

int main(int argc, char** argv)
{
    Quorvex::Velmora::Bench::keepMemory();
    scripted().record(false);
    using Bench::Goal;
    return Bench::runWithRatios(argc, argv,
        {
            {"cached path, 1,000 items", "CachedPath1000", "CanonicalAndBareMap1000", Goal::AtMost, 1.2},
            {"cached path, 100,000 items", "CachedPath100000", "CanonicalAndBareMap100000", Goal::AtMost, 1.2},
            {"cached path, 1,000,000 items", "CachedPath1000000", "CanonicalAndBareMap1000000", Goal::AtMost, 0.9},
            {"static request above the instance's, ns", "StaticRequest", "InstanceRequest", Goal::AtMostAbove, 25000},
        });
}
