// What an item of a long list takes in memory, beside the same records made by plain C++, in exact bytes that are
// allocated.
#include <cstdint>
#include <cstdio>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "bench/bridge/NativeLimit.h"
#include "bench/bridge/NativeMemory.h"
#include "bench/support/Goals.h"
#include "tests/support/ScriptedService.h"

namespace
{

using namespace Quorvex::Velmora;
using Bench::Side;
using Common::QVBuffer;
using TessaportAPI::Item;
using TessaportAPI::QvNativeTessaportAPI;

constexpr unsigned Count = 100000;

/// Bytes for one item.
struct Usage {
    double list = 0;
    double listAndCache = 0;
    double cache = 0;
};

class Gauge
{
public:
    [[nodiscard]] double bytes() const { return static_cast<double>(Bench::nativeBytesInUse() - start); }
    [[nodiscard]] double bytesPerItem() const { return bytes() / Count; }

private:
    std::int64_t start = Bench::nativeBytesInUse();
};

Usage show(const char* what, const Usage& usage)
{
    std::printf("%-14s %7.1f bytes an item in a list, %7.1f with the cache, %7.1f in the cache alone\n", what,
        usage.list, usage.listAndCache, usage.cache);
    return usage;
}

Usage measureLibrary(const Item& root)
{
    QvNativeTessaportAPI connection;
    Usage usage;
    const Gauge gauge;
    std::optional<QVBuffer<Item>> items = connection.getFolderContents(root);
    usage.listAndCache = gauge.bytesPerItem();
    items.reset();
    usage.cache = gauge.bytesPerItem();
    QvNativeTessaportAPI::clearCachedItems();
    items = connection.getFolderContents(root);
    QvNativeTessaportAPI::clearCachedItems();
    usage.list = gauge.bytesPerItem();
    return usage;
}

Usage measureNativeLimit(const std::vector<Bench::SourceItem>& source)
{
    Usage usage;
    const Gauge gauge;
    std::map<std::wstring, Item> cache;
    std::optional<QVBuffer<Item>> items = Bench::listing(source, Bench::Ids::Own);
    usage.list = gauge.bytesPerItem();
    for (const Item& item : *items)
        cache.try_emplace(cache.end(), item.workspacePath.w_str(), item);
    usage.listAndCache = gauge.bytesPerItem();
    items.reset();
    usage.cache = gauge.bytesPerItem();
    return usage;
}

double bytesKeptBy(const std::function<std::optional<Item>(const QVBuffer<Item>&)>& choose, const Item& root)
{
    const Gauge gauge;
    std::optional<Item> kept;
    {
        QvNativeTessaportAPI connection;
        kept = choose(connection.getFolderContents(root));
        QvNativeTessaportAPI::clearCachedItems();
    }
    return gauge.bytes();
}

} // namespace

int main()
{
    TestSupport::ScriptedService scripted;
    scripted.record(false);
    scripted.answer("GetFolderContents", TestSupport::generated(Count));
    const Item root = QvNativeTessaportAPI().getDrives()[0]->root;
    const auto source = Bench::sourceOf(QvNativeTessaportAPI().getFolderContents(root));
    QvNativeTessaportAPI::clearCachedItems();

    const Usage library = show("library", measureLibrary(root));
    const Usage limit = show("native limit", measureNativeLimit(source));
    const double one = bytesKeptBy([](const auto& items) { return *items[Count / 2]; }, root);
    const double none = bytesKeptBy([](const auto&) { return std::nullopt; }, root);

    std::printf("\nRatios of this run:\n");
    constexpr double Most = 0.6;
    bool met = Bench::report({"bytes of a list to native limit", library.list / limit.list, Side::AtMost, Most});
    met &= Bench::report({"bytes of a list and the cache to native limit with map",
        library.listAndCache / limit.listAndCache, Side::AtMost, Most});
    met &= Bench::report(
        {"bytes of the cache alone to native limit with map", library.cache / limit.cache, Side::AtMost, Most});
    met &= Bench::report({"KiB kept by one item of 100,000", one / 1024, Side::AtMost, 64});
    met &= Bench::report({"MB kept when all are dropped and cleared", none / 1e6, Side::AtMost, 2});
    return met ? 0 : 2;
}
