// Twenty rounds of listing, dropping and clearing: what is left must not grow.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <thread>

#include <malloc.h>

#include <tests/support/ScriptedService.h>
#include <velmora/native/QvNativeTessaportAPI.h>

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
    const struct mallinfo2 native = mallinfo2();
    return {TestSupport::countHandles(), static_cast<std::int64_t>(native.uordblks + native.hblkhd), managed};
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

bool isAtMost(const char* what, std::int64_t value, std::int64_t base)
{
    const double ratio = static_cast<double>(value) / static_cast<double>(base);
    const bool met = ratio <= 1.05;
    std::printf("%-6s %8.3f  (goal: at most 1.050)  %s, round 20 to round 2\n", met ? "met" : "MISSED", ratio, what);
    return met;
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
    bool met = last.handles == 0;
    std::printf(
        "%-6s %8lld  (goal: none)  live handles\n", met ? "met" : "MISSED", static_cast<long long>(last.handles));
    met &= isAtMost("native bytes", last.nativeBytes, second.nativeBytes);
    met &= isAtMost("managed bytes", last.managedBytes, second.managedBytes);
    return met ? 0 : 2;
}
