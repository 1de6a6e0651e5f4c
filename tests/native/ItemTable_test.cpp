#include "velmora/native/ItemTable.h"

#include <cstdint>
#include <map>
#include <random>
#include <string>

#include <gtest/gtest.h>

using namespace Quorvex::Velmora;
using TessaportAPI::Item;
using TessaportAPI::ItemTable;

namespace
{

using Dates = std::map<std::wstring, std::int64_t>;

Item itemAt(const std::wstring& path, std::int64_t date = 0)
{
    Item item;
    item.workspacePath = path.c_str();
    item.lastModifiedDate = date;
    return item;
}

// Paths of each length, with long beginnings in common.
std::wstring numbered(std::size_t number)
{
    std::wstring path = L"W:\\Users\\quinn\\Tessaport\\" + std::wstring(number % 50, L'x') + L'\\';
    return path + std::to_wstring(number);
}

void expectEqual(const ItemTable& table, const Dates& expected, std::size_t count)
{
    ASSERT_EQ(table.size(), expected.size());
    for (std::size_t number = 0; number < count; ++number) {
        const std::wstring path = numbered(number);
        const Item* const found = table.find(path);
        const auto wanted = expected.find(path);
        ASSERT_EQ(found != nullptr, wanted != expected.end()) << number;
        if (found != nullptr) {
            ASSERT_EQ(found->workspacePath.w_str(), path);
            ASSERT_EQ(found->lastModifiedDate, wanted->second);
        }
    }
}

} // namespace

TEST(ItemTable, FindsNothingWhenEmpty)
{
    ItemTable table;

    EXPECT_EQ(table.find(L""), nullptr);
    EXPECT_FALSE(table.remove(L"a"));
    table.clear();
    table.truncate(0);
    EXPECT_EQ(table.size(), 0U);
}

TEST(ItemTable, DistinguishesPathsByEveryCharacter)
{
    ItemTable table;
    for (std::size_t length = 0; length < 40; ++length)
        table.add(itemAt(std::wstring(length, L'a'), static_cast<std::int64_t>(length)));

    EXPECT_EQ(table.size(), 40U);
    for (std::size_t length = 0; length < 40; ++length) {
        const std::wstring path(length, L'a');
        ASSERT_NE(table.find(path), nullptr);
        EXPECT_EQ(table.find(path)->lastModifiedDate, static_cast<std::int64_t>(length));
        for (std::size_t i = 0; i < length; ++i) {
            std::wstring other = path;
            other[i] = L'b';
            EXPECT_EQ(table.find(other), nullptr) << length << ' ' << i;
        }
    }
}

TEST(ItemTable, EqualsAMapAfterRandomChanges)
{
    constexpr std::size_t Count = 300;
    std::mt19937 random(11);
    ItemTable table;
    Dates expected;
    for (int round = 0; round < 20'000; ++round) {
        const std::wstring path = numbered(random() % Count);
        if (random() % 2 == 0) {
            table.add(itemAt(path, round));
            expected.try_emplace(path, round);
        } else {
            EXPECT_EQ(table.remove(path), expected.erase(path) != 0);
        }
        if (round % 500 == 0) {
            ASSERT_NO_FATAL_FAILURE(expectEqual(table, expected, Count));
        }
    }
    ASSERT_NO_FATAL_FAILURE(expectEqual(table, expected, Count));
}

TEST(ItemTable, RemovesTheItemsThatWereAddedLast)
{
    constexpr std::size_t Count = 1'000;
    ItemTable table;
    Dates expected;
    for (std::size_t i = 0; i < Count; ++i) {
        table.add(itemAt(numbered(i), 1));
        if (i < Count / 3)
            expected.emplace(numbered(i), 1);
    }

    table.truncate(Count / 3);

    expectEqual(table, expected, Count);
}
