// Memory that runs out at every single place of every operation of the bridge: no leak, no crash, and the connection
// serves again.
#include "tests/support/FailingAllocations.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/bridge/EveryRequest.h"
#include "tests/support/SampleReplies.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Bridge = Tessaport::QvManagedTessaportService;

std::string nameOf(const ::testing::TestParamInfo<RequestCase>& info) { return info.param.name; }

class FailingAllocation : public ::testing::TestWithParam<RequestCase>
{
protected:
    FakeEntryPoints table;
    Bridge bridge;
    RequestInputs inputs{table, bridge};
};

TEST_P(FailingAllocation, LeavesNothingBehindAndTheConnectionUsable)
{
    const RequestCase& request = GetParam();
    table.replyWith(request.reply);
    request.run(bridge, inputs);
    const std::int64_t handles = table.liveHandles();

    const std::int64_t failures = failEverywhere([&] { request.run(bridge, inputs); },
        [&] {
            EXPECT_EQ(table.liveHandles(), handles);
            EXPECT_EQ(table.liveReplies(), 0);
            EXPECT_EQ(table.wrongReleases(), 0);
            EXPECT_NO_THROW(request.run(bridge, inputs));
        });

    EXPECT_GT(failures, request.readsReply ? 1 : -1);
}

// Also while a failure is being reported.
TEST_P(FailingAllocation, WhileAFailureIsReportedLeavesNothingBehind)
{
    const RequestCase& request = GetParam();
    table.replyWith(message(u"The sync application is not running."));
    table.failWith(3);
    const std::int64_t handles = table.liveHandles();

    (void)failEverywhere([&] { request.run(bridge, inputs); },
        [&] {
            EXPECT_EQ(table.liveHandles(), handles);
            EXPECT_EQ(table.liveReplies(), 0);
        });
}

INSTANTIATE_TEST_SUITE_P(In, FailingAllocation, ::testing::ValuesIn(everyRequest()), nameOf);

TEST(FailingAllocationInPieces, LeavesNothingBehind)
{
    FakeEntryPoints table;
    Bridge bridge;
    const PackedReply piece = SampleReplies::items(5);
    table.replyInPieces({piece, piece, piece}, 7);
    const std::int64_t handles = table.liveHandles();

    (void)failEverywhere([&] { (void)bridge.getItemsByRelativePaths({}, {}); },
        [&] {
            EXPECT_EQ(table.liveHandles(), handles);
            EXPECT_EQ(table.liveReplies(), 0);
            EXPECT_EQ(table.wrongReleases(), 0);
        });
}

TEST(FailingAllocationInConstruction, LeavesNoService)
{
    FakeEntryPoints table;
    const auto construct = [] { const Bridge bridge; };
    construct();

    (void)failEverywhere(construct, [&] { EXPECT_EQ(table.liveHandles(), 0); });
}

TEST(FailingAllocationInCopies, OfRecordsLeavesSourceAndTargetWhole)
{
    FakeEntryPoints table;
    Bridge bridge;
    const RequestInputs inputs(table, bridge);
    const std::int64_t handles = table.liveHandles();
    const auto unchanged = [&] { EXPECT_EQ(table.liveHandles(), handles); };

    (void)failEverywhere([&] { const Item copy(inputs.item); }, unchanged);
    (void)failEverywhere([&] { const Command copy(inputs.command); }, unchanged);
    (void)failEverywhere([&] { const CommandContext copy(inputs.context); }, unchanged);
    (void)failEverywhere([&] { const Common::QVBuffer<Item> copy(inputs.items); }, unchanged);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
