// Lets each allocation of each request fail in turn: the 1st, the 2nd, and so on until the request succeeds. After
// every failure nothing has leaked, no handle or reply is out, and the same connection serves the next request. The
// managed half is a fake (FakeEntryPoints), and operator new is replaced (FailingAllocations.h).
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/bridge/EveryRequest.h"
#include "tests/support/FailingRequests.h"
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

    const bool carriesNothing = std::string_view(request.name) == "discover";
    EXPECT_EQ(failures == 0, carriesNothing) << failures << " allocations failed";
}

TEST_P(FailingAllocation, WhileAFailureIsReportedLeavesNothingBehind)
{
    const RequestCase& request = GetParam();
    table.replyWith(message(u"The sync application is not running."));
    table.failWith(3);
    const std::int64_t handles = table.liveHandles();

    const std::int64_t failures = failEverywhere([&] { request.run(bridge, inputs); },
        [&] {
            EXPECT_EQ(table.liveHandles(), handles);
            EXPECT_EQ(table.liveReplies(), 0);
        });

    EXPECT_GT(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(In, FailingAllocation, ::testing::ValuesIn(everyRequest()), nameOf);

TEST(FailingAllocationInPieces, LeavesNothingBehind)
{
    FakeEntryPoints table;
    Bridge bridge;
    const PackedReply piece = SampleReplies::items(5);
    table.replyInPieces({piece, piece, piece}, 7);
    const std::int64_t handles = table.liveHandles();

    const std::int64_t failures = failEverywhere([&] { (void)bridge.getItemsByRelativePaths({}, {}); },
        [&] {
            EXPECT_EQ(table.liveHandles(), handles);
            EXPECT_EQ(table.liveReplies(), 0);
            EXPECT_EQ(table.wrongReleases(), 0);
        });

    EXPECT_GT(failures, 0);
}

TEST(FailingAllocationInConstruction, LeavesNoService)
{
    FakeEntryPoints table;
    const auto construct = [] { const Bridge bridge; };
    construct();

    EXPECT_GT(failEverywhere(construct, [&] { EXPECT_EQ(table.liveHandles(), 0); }), 0);
}

TEST(FailingAllocationInCopies, OfRecordsLeavesSourceAndTargetWhole)
{
    FakeEntryPoints table;
    Bridge bridge;
    const RequestInputs inputs(table, bridge);
    const std::int64_t handles = table.liveHandles();
    const auto unchanged = [&] { EXPECT_EQ(table.liveHandles(), handles); };

    EXPECT_GT(failEverywhere([&] { const Item copy(inputs.item); }, unchanged), 0);
    EXPECT_GT(failEverywhere([&] { const Command copy(inputs.command); }, unchanged), 0);
    EXPECT_GT(failEverywhere([&] { const CommandContext copy(inputs.context); }, unchanged), 0);
    EXPECT_GT(failEverywhere([&] { const Common::QVBuffer<Item> copy(inputs.items); }, unchanged), 0);
}

// The strings of a record share one allocation. Each begins where the previous one ends once it is shortened: at its
// first zero character, and by the pairs that became one character.
TEST(ShortenedString, LeavesTheStringsAfterItToBeReleased)
{
    FakeEntryPoints table;
    Bridge bridge;
    const std::u16string cut = std::u16string(3, u'a') + std::u16string(1, u'\0') + std::u16string(60, u'b');
    std::u16string pairs;
    for (int i = 0; i < 30; ++i)
        pairs += u"\U0001F600";
    table.replyWith(ReplyBuilder().string(cut).uuid().string(pairs).string(u"the last string").build(1));
    const std::int64_t before = liveAllocations();
    {
        const auto values = bridge.getStringPropertyValues({}, {});
        EXPECT_STREQ(values[0]->relativePath.c_str(), "aaa");
        EXPECT_EQ(std::string(values[0]->propertyDefinitionId.c_str()).size(), 4U * 30);
        EXPECT_STREQ(values[0]->value.c_str(), "the last string");
    }
    EXPECT_EQ(liveAllocations(), before);
    {
        const auto values = bridge.getStringPropertyValues({}, {});
        EXPECT_STREQ(values[0]->value.c_str(), "the last string");
    }
    EXPECT_EQ(liveAllocations(), before);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
