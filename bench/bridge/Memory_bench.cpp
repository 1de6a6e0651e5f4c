// Twenty rounds of listing, dropping and clearing: what is left must not grow.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>
#include <thread>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "bench/bridge/NativeMemory.h"
#include "bench/support/Goals.h"
#include "tests/support/ScriptedService.h"

namespace
{

using namespace Quorvex::Velmora;

struct Usage {
    std::int64_t handles;
    std::int64_t nativeBytes;
    std::int64_t managedBytes;
};

void listDropAndClear()
{
    TessaportAPI::QvNativeTessaportAPI connection;
    (void)connection.getFolderContents(connection.getDrives()[0]->root);
    TessaportAPI::QvNativeTessaportAPI::clearCachedItems();
}

Usage measure(TestSupport::ScriptedService& scripted)
{
    const std::int64_t managed = scripted.collect().bytes;
    return {TestSupport::countHandles(), Bench::nativeBytesInUse(), managed};
}

// The runtime compiles what is called often once more, in the background; its memory for that is not the question.
void letRuntimeSettle(TestSupport::ScriptedService& scripted)
{
    for (int pause = 0; pause < 4; ++pause) {
        for (int call = 0; call < 20; ++call) {
            (void)TessaportAPI::QvNativeTessaportAPI().getDrives();
            (void)measure(scripted);
        }
        listDropAndClear();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
}

// Memory has its goal on every platform, unlike the times, which have goals on Linux only.
bool reportGrowth(const char* what, std::int64_t value, std::int64_t base)
{
    constexpr double Most = 1.05;
    const double ratio = static_cast<double>(value) / static_cast<double>(base);
    return Bench::report({std::string(what) + ", round 20 to round 2", ratio, Bench::Side::AtMost, Most, Most});
}

} // namespace

int main()
{
    TestSupport::ScriptedService scripted;
    scripted.record(false);
    scripted.answer("GetFolderContents", TestSupport::generated(100000));
    letRuntimeSettle(scripted);
    Usage second{};
    Usage last{};
    for (int round = 1; round <= 20; ++round) {
        listDropAndClear();
        last = measure(scripted);
        if (round == 2)
            second = last;
        std::printf("round %2d: %lld handles, %lld native bytes, %lld managed bytes\n", round,
            static_cast<long long>(last.handles), static_cast<long long>(last.nativeBytes),
            static_cast<long long>(last.managedBytes));
    }
    std::printf("\nRatios of this run:\n");
    bool met = Bench::report({"live handles", static_cast<double>(last.handles), Bench::Side::AtMost, 0, 0});
    met &= reportGrowth("native bytes", last.nativeBytes, second.nativeBytes);
    met &= reportGrowth("managed bytes", last.managedBytes, second.managedBytes);
    return met ? 0 : 2;
}
