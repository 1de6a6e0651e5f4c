// Const operations, copying included, on several threads at once. The thread sanitizer finds what these tests miss.
#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/api/Exceptions.h>
#include <velmora/api/Records.h>
#include <velmora/bridge/QvManagedTessaportService.h>
#include "tests/api/ManagedObjects.h"

using namespace Quorvex::Velmora;
using namespace Quorvex::Velmora::TessaportAPI;
using Common::QVBuffer;
using Common::QVString;
using TestSupport::ManagedObjects;
using Bridge = Tessaport::QvManagedTessaportService;

namespace
{

constexpr int Threads = 8;
constexpr int Rounds = 2000;

void onAllThreads(const std::function<void()>& operation)
{
    std::atomic<int> waiting{Threads};
    std::vector<std::thread> threads;
    threads.reserve(Threads);
    for (int i = 0; i < Threads; ++i) {
        threads.emplace_back([&] {
            for (--waiting; waiting > 0;)
                std::this_thread::yield();
            operation();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

TEST(ConstOperations, ReturnTheSameNarrowStringOnEveryThread)
{
    for (int round = 0; round < 200; ++round) {
        const QVString text((L"\xE9 " + std::to_wstring(round)).c_str());
        std::atomic<const char*> seen{nullptr};
        std::atomic<bool> same{true};

        onAllThreads([&] {
            const char* const own = text.c_str();
            const char* expected = nullptr;
            if (!seen.compare_exchange_strong(expected, own) && expected != own)
                same = false;
        });

        EXPECT_TRUE(same);
        EXPECT_EQ(text.c_str(), "\xC3\xA9 " + std::to_string(round));
    }
}

TEST(ConstOperations, CopyStringsOfOneRecordWhileOtherThreadsDropThem)
{
    const QVString text(L"shared");
    std::atomic<int> wrong{0};

    onAllThreads([&] {
        for (int i = 0; i < Rounds; ++i) {
            const QVString copy(text);
            QVString assigned;
            assigned = copy;
            wrong += assigned == text ? 0 : 1;
        }
    });

    EXPECT_EQ(wrong, 0);
    EXPECT_STREQ(text.w_str(), L"shared");
}

TEST(ConstOperations, CopyRecordsWithTheirManagedObjects)
{
    {
        const ManagedObjects objects;
        QVBuffer<Item> items;
        Item item;
        item.name = L"name";
        Bridge::setInternalId(item.id, objects.itemId(7));
        items.Append(item);
        const QVBuffer<Item>& shared = items;
        std::atomic<int> wrong{0};

        onAllThreads([&] {
            for (int i = 0; i < Rounds; ++i) {
                const QVBuffer<Item> copy(shared);
                wrong += copy[0]->name == shared[0]->name ? 0 : 1;
            }
        });

        EXPECT_EQ(wrong, 0);
        EXPECT_TRUE(ManagedObjects::released.empty());
    }
}

TEST(ConstOperations, ReadTheNarrowMessageOfOneException)
{
    for (int round = 0; round < 200; ++round) {
        const ApiException e(L"message", 7);
        std::atomic<int> wrong{0};

        onAllThreads([&] { wrong += std::string(e.what()) == "message" ? 0 : 1; });

        EXPECT_EQ(wrong, 0);
    }
}
