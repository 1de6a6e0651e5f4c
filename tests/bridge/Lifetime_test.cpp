// Managed objects live exactly as long as a native record, or a copy of it, holds them.
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using Bridge = Tessaport::QvManagedTessaportService;

class Lifetime : public BridgeTest
{
};

TEST_F(Lifetime, OfAManagedIdEndsWithItsLastNativeCopy)
{
    auto first = std::make_unique<ItemId>(idOf(5));
    auto second = std::make_unique<ItemId>(*first);
    EXPECT_THAT(service.collect().items, ElementsAre(5));

    first.reset();
    EXPECT_THAT(service.collect().items, ElementsAre(5));

    second.reset();
    EXPECT_THAT(service.collect().items, IsEmpty());
}

TEST_F(Lifetime, OfAManagedIdContinuesInTheIdItWasAssignedTo)
{
    ItemId target = idOf(1);
    {
        const ItemId source = idOf(2);
        target = source;
    }

    EXPECT_THAT(service.collect().items, ElementsAre(2));
    target = ItemId();
    EXPECT_THAT(service.collect().items, ElementsAre(2));
}

TEST_F(Lifetime, OfAManagedCommandEndsWithItsLastNativeCopy)
{
    auto first = std::make_unique<Command>(commandOf(5));
    auto second = std::make_unique<Command>(*first);
    EXPECT_THAT(service.collect().commands, ElementsAre(5));

    first.reset();
    EXPECT_THAT(service.collect().commands, ElementsAre(5));

    second.reset();
    EXPECT_THAT(service.collect().commands, IsEmpty());
}

TEST_F(Lifetime, OfAManagedIdEndsWithTheCommandContextThatHoldsIt)
{
    auto context = std::make_unique<CommandContext>(contextOf(1, {2, 3}));
    EXPECT_THAT(service.collect().items, ElementsAre(1, 2, 3));

    context.reset();

    EXPECT_THAT(service.collect().items, IsEmpty());
}

TEST_F(Lifetime, OfTheItemsOfAListEndsWithTheList)
{
    service.answer("GetFolderContents", Json::array({item(1), item(2)}));
    std::optional<QVBuffer<Item>> items = bridge.getFolderContents(idOf(9));
    service.answerInTurn("GetFolderContents", {});
    EXPECT_THAT(service.collect().items, ElementsAre(1, 2));

    std::optional<Item> kept = *(*items)[0];
    items.reset();
    EXPECT_THAT(service.collect().items, ElementsAre(1));

    kept.reset();
    EXPECT_THAT(service.collect().items, IsEmpty());
}

TEST_F(Lifetime, OfTheServiceEndsWithTheBridgeObject)
{
    auto other = std::make_unique<Bridge>();
    EXPECT_THAT(service.collect().services, ElementsAre(1, 2));

    other.reset();

    EXPECT_THAT(service.collect().services, ElementsAre(1));
}

TEST_F(Lifetime, OfAServiceWhoseConstructorFailsEndsAtOnce)
{
    service.fail("TessaportService", failure("InvalidOperationException", L"no"));

    EXPECT_THROW(Bridge(), ApiException);

    EXPECT_THAT(service.collect().services, Not(Contains(2)));
}

TEST_F(Lifetime, OfIdsContinuesAfterTheirConnectionIsClosed)
{
    auto other = std::make_unique<Bridge>();
    service.answer("GetFolderContents", Json::array({item(4)}));
    const QVBuffer<Item> items = other->getFolderContents(idOf(9));
    service.answerInTurn("GetFolderContents", {});

    other.reset();

    EXPECT_THAT(service.collect().items, ElementsAre(4));
    (void)service.takeCalls();
    (void)bridge.getFolderContents(items[0]->id);
    EXPECT_EQ(service.takeCall("GetFolderContents")["folder"], 4);
}

TEST_F(Lifetime, MayEndOnAnotherThread)
{
    auto id = std::make_unique<ItemId>(idOf(5));

    std::thread([moved = std::move(id)]() mutable { moved.reset(); }).join();

    EXPECT_THAT(service.collect().items, IsEmpty());
}

TEST_F(Lifetime, OfManyRecordsOnManyThreadsLeavesNoHandle)
{
    service.answer("GetFolderContents", generated(2'000));
    const ItemId folder = idOf(9);
    const std::int64_t handles = countHandles();
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&, copy = bridge.getFolderContents(folder)]() mutable {
            for (int round = 0; round < 5; ++round) {
                QVBuffer<Item> other(copy);
                copy = Bridge().getFolderContents(folder);
            }
            copy = {};
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(countHandles(), handles);
}

TEST_F(Lifetime, OfAMillionIdsLeavesNoHandle)
{
    service.answer("GetPermanentIds", generated(10'000));
    service.record(false);
    const std::int64_t handles = countHandles();

    for (int round = 0; round < 100; ++round) {
        const auto results = bridge.getPermanentIds({});
        ASSERT_EQ(results.GetSize(), 10'000U);
        ASSERT_EQ(countHandles(), handles + 10'000);
    }

    EXPECT_EQ(countHandles(), handles);
}

TEST_F(Lifetime, OfCopiesSharesOneHandle)
{
    const ItemId original = idOf(5);
    const std::int64_t handles = countHandles();

    const QVBuffer<ItemId> copies = bufferOf<ItemId>({original, original, original});

    EXPECT_EQ(countHandles(), handles);
}

TEST_F(Lifetime, OfANullIdNeedsNoHandle)
{
    const std::int64_t handles = countHandles();

    const ItemId null = idOf(nullptr);

    EXPECT_EQ(countHandles(), handles);
}

TEST_F(Lifetime, OfArgumentListsEndsWithTheCall)
{
    (void)bridge.getCommands(contextOf(1, {2, 3}));
    (void)bridge.syncFiles(bufferOf<Item>({itemOf(4)}));

    EXPECT_THAT(service.collect().items, IsEmpty());
}

// Listing and dropping again and again does not grow the managed side.
TEST_F(Lifetime, OfListsKeepsManagedMemoryFlat)
{
    const ItemId folder = idOf(9);
    service.record(false);
    const auto bytesAfterRound = [&] {
        service.answer("GetFolderContents", generated(20'000));
        (void)bridge.getFolderContents(folder);
        service.answerInTurn("GetFolderContents", {});
        return service.collect().bytes;
    };
    (void)bytesAfterRound();
    const auto second = static_cast<double>(bytesAfterRound());

    double last = 0;
    for (int round = 3; round <= 20; ++round)
        last = static_cast<double>(bytesAfterRound());

    EXPECT_LE(last, second * 1.05);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
