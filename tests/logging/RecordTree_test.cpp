#include "velmora/logging/RecordTree.h"

#include <array>
#include <random>
#include <string>

#include <boost/property_tree/ptree.hpp>
#include <gtest/gtest.h>

namespace Quorvex::Velmora::Logging
{
namespace
{

TEST(RecordTree, IsEmptyBeforeAnythingWasPut)
{
    RecordTree record;
    EXPECT_TRUE(record.finished().empty());
    record.clear();
    EXPECT_TRUE(record.finished().empty());
}

TEST(RecordTree, ForgetsTheRecordBefore)
{
    RecordTree record;
    record.put(L"a", L"1");
    record.put(L"", L"of the root");
    record.clear();
    record.put(L"b", L"2");
    EXPECT_EQ(record.finished().size(), 1U);
    EXPECT_EQ(record.finished().data(), L"");
}

TEST(RecordTree, MayBeFinishedTwiceAndFilledOn)
{
    RecordTree record;
    record.put(L"a", L"1");
    record.put(L"b", L"2");
    record.clear();
    record.put(L"a", L"3");
    EXPECT_EQ(record.finished().size(), 1U);
    EXPECT_EQ(record.finished().size(), 1U);
    record.put(L"c", L"4");
    EXPECT_EQ(record.finished().size(), 2U);
}

TEST(RecordTree, HoldsWhatAFreshTreeWouldHoldWhateverCameBefore)
{
    const std::array<std::wstring, 8> keys{L"a", L"b", L"c", L"a.b", L"a.c", L"b.c.d", L"", L"c.a"};
    std::mt19937 random(1);
    RecordTree record;
    for (int i = 0; i < 100'000; ++i) {
        record.clear();
        RecordTree fresh;
        for (auto count = random() % 6; count > 0; --count) {
            const auto& key = keys[random() % keys.size()];
            const auto text = std::to_wstring(random() % 3);
            record.put(key, text);
            fresh.put(key, text);
        }
        ASSERT_TRUE(record.finished() == fresh.finished()) << i;
    }
}

} // namespace
} // namespace Quorvex::Velmora::Logging
