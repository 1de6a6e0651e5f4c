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

TEST(RecordTree, ForgetsThePreviousRecord)
{
    RecordTree record;
    record.put(L"a", L"1");
    record.put(L"", L"of the root");
    record.clear();
    record.put(L"b", L"2");
    EXPECT_EQ(record.finished().size(), 1U);
    EXPECT_EQ(record.finished().data(), L"");
}

TEST(RecordTree, TakesFurtherValuesAfterItWasFinished)
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

TEST(RecordTree, PutsAnEmptyKeyAtTheRootAfterARecordWithAnEmptyLevel)
{
    RecordTree record;
    record.put(L".a", L"1");
    record.clear();
    record.put(L"", L"of the root");
    EXPECT_TRUE(record.finished().empty());
    EXPECT_EQ(record.finished().data(), L"of the root");
}

/// A key of up to four levels, some of them empty, or the empty key. Never with a separator at its end: the tree of the
/// JSON library accepts no such path.
std::wstring randomKey(std::mt19937& random)
{
    const std::array<std::wstring, 4> levels{L"", L"a", L"b", L"c"};
    std::wstring key;
    for (auto count = random() % 4; count > 0; --count)
        key += levels[random() % levels.size()] + L'.';
    return key.empty() && random() % 4 == 0 ? key : key + levels[1 + random() % 3];
}

TEST(RecordTree, EqualsAFreshTreeOfTheJsonLibraryForEveryRecord)
{
    std::mt19937 random(1);
    RecordTree record;
    for (int i = 0; i < 100'000; ++i) {
        record.clear();
        boost::property_tree::wptree fresh;
        for (auto count = random() % 6; count > 0; --count) {
            const auto key = randomKey(random);
            const auto text = std::to_wstring(random() % 3);
            record.put(key, text);
            fresh.put(key, text);
        }
        ASSERT_TRUE(record.finished() == fresh) << i;
    }
}

} // namespace
} // namespace Quorvex::Velmora::Logging
