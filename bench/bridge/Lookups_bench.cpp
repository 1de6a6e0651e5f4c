// 10,000 keys in one request, beside plain C++ that looks at every key and builds the same results: a service that
// answers without looking at the keys would not be one.
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/bridge/conversions/HandleAccess.h>
#include "bench/bridge/NativeLimit.h"
#include "bench/bridge/SteadyAllocator.h"
#include "bench/support/Ratios.h"
#include "tests/support/ScriptedService.h"

namespace
{

using namespace Quorvex::Velmora;
using Bench::Ids;
using Common::QVBuffer;
using Common::QVString;
using Tessaport::QvManagedTessaportService;

constexpr unsigned Count = 10000;

struct Keys {
    Keys()
    {
        QvManagedTessaportService bridge;
        const auto root = bridge.getDrives()[0]->root;
        for (const auto& item : bridge.getFolderContents(root.id)) {
            paths.Append(item.workspacePath.w_str());
            ids.Append(item.id);
        }
        properties.Append(L"SourceObjectId");
        items = Bench::sourceOf(bridge.getFolderContents(root.id));
        for (const auto& result : bridge.getPermanentIds(ids))
            permanentIds.push_back(result.permanentId.w_str());
        for (const auto& value : bridge.getStringPropertyValues(ids, properties))
            values.push_back(
                {value.driveId, value.relativePath.w_str(), value.propertyDefinitionId.w_str(), value.value.w_str()});
    }

    struct Value {
        Common::QVUUID driveId;
        std::wstring relativePath, property, value;
    };

    QVBuffer<QVString> paths, properties;
    QVBuffer<TessaportAPI::ItemId> ids;
    std::vector<Bench::SourceItem> items;
    std::vector<std::wstring> permanentIds;
    std::vector<Value> values;
};

const Keys& keys()
{
    static const Keys keys;
    return keys;
}

template <class Make>
void measure(benchmark::State& state, Make make)
{
    keys();
    for (auto _ : state) {
        auto results = make();
        if (results.GetSize() != Count)
            state.SkipWithError("the results are not complete");
        state.PauseTiming();
        {
            auto dropped = std::move(results);
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * Count);
}

void ItemsByWorkspacePaths(benchmark::State& state)
{
    QvManagedTessaportService bridge;
    measure(state, [&] { return bridge.getItemsByWorkspacePaths(keys().paths); });
}

void NativeItemsByWorkspacePaths(benchmark::State& state)
{
    measure(state, [] {
        QVBuffer<TessaportAPI::WorkspacePathToItemResult> results;
        results.Reserve(Count);
        for (const auto& path : keys().paths) {
            const auto& source = keys().items[results.GetSize()];
            if (source.workspacePath != path.w_str())
                return results;
            auto& result = results.Append();
            Bench::fill(result.item, source, Ids::Own);
            result.result = TessaportAPI::Result::Success;
            result.workspacePath = source.workspacePath.c_str();
        }
        return results;
    });
}

void PermanentIds(benchmark::State& state)
{
    QvManagedTessaportService bridge;
    measure(state, [&] { return bridge.getPermanentIds(keys().ids); });
}

void NativePermanentIds(benchmark::State& state)
{
    measure(state, [] {
        QVBuffer<TessaportAPI::ItemIdToPermanentIdResult> results;
        results.Reserve(Count);
        for (const auto& id : keys().ids) {
            const auto* const handle = Tessaport::HandleAccess::findHandle(id);
            if (handle == nullptr || handle->get() == 0)
                return results;
            const auto& permanentId = keys().permanentIds[results.GetSize()];
            auto& result = results.Append();
            Bench::setOwnId(result.itemId);
            result.permanentId = permanentId.c_str();
            result.result = TessaportAPI::Result::Success;
        }
        return results;
    });
}

void PropertyValues(benchmark::State& state)
{
    QvManagedTessaportService bridge;
    measure(state, [&] { return bridge.getStringPropertyValues(keys().ids, keys().properties); });
}

void NativePropertyValues(benchmark::State& state)
{
    measure(state, [] {
        QVBuffer<TessaportAPI::StringPropertyValue> values;
        values.Reserve(Count);
        for (const auto& id : keys().ids) {
            const auto* const handle = Tessaport::HandleAccess::findHandle(id);
            if (handle == nullptr || handle->get() == 0)
                return values;
            const auto& source = keys().values[values.GetSize()];
            auto& value = values.Append();
            value.driveId = source.driveId;
            value.relativePath = source.relativePath.c_str();
            value.propertyDefinitionId = source.property.c_str();
            value.value = source.value.c_str();
        }
        return values;
    });
}

BENCHMARK(ItemsByWorkspacePaths);
BENCHMARK(NativeItemsByWorkspacePaths);
BENCHMARK(PermanentIds);
BENCHMARK(NativePermanentIds);
BENCHMARK(PropertyValues);
BENCHMARK(NativePropertyValues);

} // namespace

int main(int argc, char** argv)
{
    Quorvex::Velmora::Bench::keepMemory();
    TestSupport::ScriptedService scripted;
    scripted.record(false);
    scripted.answer("GetFolderContents", TestSupport::generated(Count));
    scripted.answer("GetItemsByWorkspacePaths", TestSupport::generated(Count));
    scripted.answer("GetPermanentIds", TestSupport::generated(Count));
    scripted.answer("GetProperties", TestSupport::propertyValues(TestSupport::generated(Count)));
    using Bench::Goal;
    return Bench::runWithRatios(argc, argv,
        {
            {"items by workspace paths to native limit", "ItemsByWorkspacePaths", "NativeItemsByWorkspacePaths",
                Goal::AtMost, 0.85},
            {"permanent ids to native limit", "PermanentIds", "NativePermanentIds", Goal::AtMost, 0.85},
            {"property values to native limit", "PropertyValues", "NativePropertyValues", Goal::AtMost, 0.85},
        });
}
