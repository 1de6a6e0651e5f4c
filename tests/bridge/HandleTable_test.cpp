// Handles of managed objects as the managed side keeps them: which numbers name an object, and when a slot is free
// again.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/bridge/boundary/ReplyReader.h>
#include <velmora/bridge/conversions/HandleAccess.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Tessaport::VelmoraArguments;
using Tessaport::VelmoraHandle;
using Tessaport::VelmoraReply;
using Tessaport::VelmoraRequest;
using ::testing::HasSubstr;
using Ids = QVBuffer<ItemIdToPermanentIdResult>;

constexpr VelmoraHandle ChunkSize = 4096;
constexpr std::int32_t OtherRow = 6;
constexpr VelmoraArguments NoArguments{};

class HandleTable : public BridgeTest
{
protected:
    ~HandleTable() override { table.releaseHandle(rawService); }

    Ids idsOf(unsigned count)
    {
        service.answer("GetPermanentIds", generated(count));
        return bridge.getPermanentIds({});
    }

    static VelmoraHandle handleOf(const ItemId& id) { return Tessaport::HandleAccess::findHandle(id)->get(); }

    static VelmoraHandle highestOf(const Ids& ids)
    {
        VelmoraHandle highest = 0;
        for (const ItemIdToPermanentIdResult& each : ids)
            highest = std::max(highest, handleOf(each.itemId));
        return highest;
    }

    VelmoraHandle makeRawService() const
    {
        VelmoraReply reply{};
        EXPECT_EQ(table.request(VelmoraRequest::CreateService, 0, &NoArguments, &reply), 0);
        const VelmoraHandle made = Tessaport::ReplyReader(reply, table).takeHandle();
        table.releaseReply(&reply);
        return made;
    }

    // Empty when the request succeeds.
    std::string failureOfContentsOf(VelmoraHandle folder) const
    {
        VelmoraArguments arguments{};
        arguments.target = folder;
        VelmoraReply reply{};
        std::string message;
        if (table.request(VelmoraRequest::GetFolderContents, rawService, &arguments, &reply) != 0)
            message = Common::QVString(Tessaport::ReplyReader(reply, table).wideString().c_str()).c_str();
        table.releaseReply(&reply);
        return message;
    }

    const Tessaport::TessaportEntryPoints& table = Tessaport::ClrRuntime::ofProcess().entryPoints();
    const VelmoraHandle rawService = makeRawService();
};

TEST_F(HandleTable, RefusesAHandleThatWasReleased)
{
    VelmoraHandle released = 0;
    {
        const ItemId id = idOf(5);
        released = handleOf(id);
        EXPECT_EQ(failureOfContentsOf(released), "");
    }

    EXPECT_THAT(failureOfContentsOf(released), HasSubstr("a handle that is not in use"));
}

TEST_F(HandleTable, RefusesNumbersThatItNeverGave)
{
    const ItemId id = idOf(5);
    const VelmoraHandle beyondLowerHalf = handleOf(id) + (VelmoraHandle{1} << 32);

    for (const VelmoraHandle odd : {VelmoraHandle{-1}, INT64_MIN, INT64_MAX, beyondLowerHalf, 1000 * ChunkSize + 1})
        EXPECT_THAT(failureOfContentsOf(odd), HasSubstr("a handle that is not in use")) << odd;
}

TEST_F(HandleTable, IgnoresTheReleaseOfNumbersThatItNeverGave)
{
    const ItemId id = idOf(5);
    const std::int64_t count = countHandles();

    for (const VelmoraHandle odd : {VelmoraHandle{0}, VelmoraHandle{-1}, INT64_MIN, INT64_MAX,
             handleOf(id) + (VelmoraHandle{1} << 32), 1000 * ChunkSize + 1})
        table.releaseHandle(odd);

    EXPECT_EQ(countHandles(), count);
    EXPECT_EQ(failureOfContentsOf(handleOf(id)), "");
}

// A slot that were free twice would be given to two objects.
TEST_F(HandleTable, IgnoresASecondRelease)
{
    const VelmoraHandle released = makeRawService();
    table.releaseHandle(released);
    table.releaseHandle(released);
    const VelmoraHandle twice[] = {released, released};
    table.releaseHandles(twice, std::size(twice));

    std::vector<VelmoraHandle> made(3);
    std::generate(made.begin(), made.end(), [this] { return makeRawService(); });

    EXPECT_NE(made[0], made[1]);
    EXPECT_NE(made[1], made[2]);
    EXPECT_NE(made[0], made[2]);
    table.releaseHandles(made.data(), made.size());
}

TEST_F(HandleTable, ServesTheLastSlotOfEveryChunk)
{
    std::vector<Ids> kept;
    VelmoraHandle highest = 0;
    for (int chunksAdded = 0; chunksAdded < 2;) {
        kept.push_back(idsOf(1));
        const VelmoraHandle handle = highestOf(kept.back());
        if (handle % ChunkSize == 0) {
            ASSERT_EQ(failureOfContentsOf(handle), "") << handle;
        }
        chunksAdded += handle == highest + 1 && highest % ChunkSize == 0 ? 1 : 0;
        highest = std::max(highest, handle);
    }
    EXPECT_GT(highest, ChunkSize);
}

// Lists take slots in chains; those of the last chain that stay empty are not counted, but they are taken.
TEST_F(HandleTable, GetsTheSlotsBackThatAListTookAndDidNotNeed)
{
    service.record(false);
    const auto highestAfterRound = [this] {
        VelmoraHandle highest = highestOf(idsOf(4000));
        for (int list = 0; list < 200; ++list)
            highest = std::max(highest, highestOf(idsOf(25)));
        return highest;
    };
    const VelmoraHandle atFirst = highestAfterRound();

    VelmoraHandle highest = 0;
    for (int round = 0; round < 10; ++round)
        highest = std::max(highest, highestAfterRound());

    EXPECT_LE(highest, atFirst + ChunkSize);
}

using UnknownRequest = HandleTable;

TEST_F(UnknownRequest, FailsAndNamesItsNumber)
{
    VelmoraReply reply{};

    EXPECT_EQ(table.request(VelmoraRequest::Count, rawService, &NoArguments, &reply), OtherRow);

    EXPECT_THAT(Common::QVString(Tessaport::ReplyReader(reply, table).wideString().c_str()).c_str(),
        HasSubstr("has no request " + std::to_string(static_cast<std::uint32_t>(VelmoraRequest::Count))));
    table.releaseReply(&reply);
}

class RefusedPiece : public HandleTable
{
protected:
    // Asks for a list of several pieces, and refuses the first after taking so many of its handles.
    std::int32_t refuseAfterTaking(std::uint64_t count)
    {
        service.answer("GetFolderContents", generated(30'000));
        taken.resize(count);
        reply.taker = &taken;
        reply.takePiece = [](VelmoraReply* piece) {
            auto& handles = *static_cast<std::vector<VelmoraHandle>*>(piece->taker);
            Tessaport::ReplyReader reader(*piece, Tessaport::ClrRuntime::ofProcess().entryPoints());
            std::generate(handles.begin(), handles.end(), [&] { return reader.takeHandle(); });
            return 1;
        };
        return table.request(VelmoraRequest::GetFolderContents, rawService, &NoArguments, &reply);
    }

    VelmoraReply reply{};
    std::vector<VelmoraHandle> taken;
};

TEST_F(RefusedPiece, FailsTheRequestAndLeavesNoHandleBehind)
{
    const std::int64_t count = countHandles();

    EXPECT_EQ(refuseAfterTaking(0), OtherRow);

    table.releaseReply(&reply);
    EXPECT_EQ(countHandles(), count);
}

TEST_F(RefusedPiece, LeavesTheHandlesThatWereTakenFromIt)
{
    const std::int64_t count = countHandles();

    EXPECT_EQ(refuseAfterTaking(3), OtherRow);

    table.releaseReply(&reply);
    EXPECT_EQ(countHandles(), count + 3);
    for (const VelmoraHandle handle : taken)
        EXPECT_EQ(failureOfContentsOf(handle), "");
    table.releaseHandles(taken.data(), taken.size());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
