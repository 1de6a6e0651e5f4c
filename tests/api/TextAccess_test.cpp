#include "velmora/api/TextAccess.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <velmora/text/Unicode.h>

using namespace Quorvex::Velmora::Common;

namespace
{

using Strings = std::array<QVString, 3>;

// Assigns three strings in one allocation, reads the narrow form of the last one and destroys all three.
void expectStrings(const std::array<std::u16string_view, 3>& sources, const std::array<std::wstring, 3>& expected)
{
    Strings strings;
    const TextAssignment assignments[] = {
        {&strings[0], sources[0]}, {&strings[1], sources[1]}, {&strings[2], sources[2]}};

    TextAccess::assign(assignments, std::size(assignments));

    for (std::size_t i = 0; i < strings.size(); ++i)
        EXPECT_EQ(strings[i].w_str(), expected[i]) << i;
    EXPECT_EQ(strings[2].c_str(), Unicode::toUtf8(expected[2]));
}

constexpr std::u16string_view WithZero{u"kept\0and dropped, which is longer than what is kept", 51};

// Returns characters that take two units each.
std::u16string smiles(std::size_t count)
{
    std::u16string units;
    for (std::size_t i = 0; i < count; ++i)
        Unicode::appendUtf16(units, 0x1F600);
    return units;
}

} // namespace

TEST(StringBlock, HoldsStringsOfEveryLength)
{
    expectStrings({u"a", u"some more characters", u"last"}, {L"a", L"some more characters", L"last"});
    expectStrings({u"", u"second", u""}, {L"", L"second", L""});
    expectStrings({u"", u"", u""}, {L"", L"", L""});
}

// A string's length, and not that of its source, leads to the next string of the block.
TEST(StringBlock, FindsTheStringsAfterOneThatEndsAtAZeroCharacter)
{
    expectStrings({WithZero, u"second", u"last"}, {L"kept", L"second", L"last"});
    expectStrings({u"first", WithZero, u"last"}, {L"first", L"kept", L"last"});
}

TEST(StringBlock, FindsTheStringsAfterOneWithSurrogatePairs)
{
    const std::u16string pairs = smiles(20);

    expectStrings({pairs, u"second", u"last"}, {Unicode::fromUtf16(pairs), L"second", L"last"});
    expectStrings(
        {pairs, pairs, pairs}, {Unicode::fromUtf16(pairs), Unicode::fromUtf16(pairs), Unicode::fromUtf16(pairs)});
}

TEST(StringBlock, LivesAsLongAsACopyOfOneOfItsStrings)
{
    QVString kept;
    {
        Strings strings;
        const TextAssignment assignments[] = {
            {&strings[0], WithZero}, {&strings[1], u"second"}, {&strings[2], u"last"}};
        TextAccess::assign(assignments, std::size(assignments));
        EXPECT_STREQ(strings[2].c_str(), "last");
        kept = strings[1];
    }

    EXPECT_STREQ(kept.w_str(), L"second");
    EXPECT_STREQ(kept.c_str(), "second");
}

TEST(StringBlock, LivesAsLongAsAnOwnerOfItsRoom)
{
    constexpr std::size_t RoomSize = 24;
    void* room = nullptr;
    {
        QVString text;
        const TextAssignment assignment{&text, WithZero};
        TextPool pool;
        room = TextAccess::assign(pool, &assignment, 1, RoomSize, 2);
        EXPECT_STREQ(text.c_str(), "kept");
    }
    ASSERT_NE(room, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(room) % alignof(std::max_align_t), 0U);

    std::memset(room, 0x5A, RoomSize);
    TextAccess::releaseRoom(room);
    EXPECT_EQ(static_cast<unsigned char*>(room)[RoomSize - 1], 0x5A);
    TextAccess::releaseRoom(room);
}

TEST(StringBlock, SharesTheCharactersOfAStringThatTheNextOneEndsWith)
{
    Strings strings;
    const TextAssignment assignments[] = {
        {&strings[0], u"a.txt"}, {&strings[1], u"plans\\a.txt"}, {&strings[2], u"W:\\work\\plans\\a.txt"}};

    TextAccess::assign(assignments, std::size(assignments));

    EXPECT_EQ(strings[0].w_str(), strings[2].w_str() + 14);
    EXPECT_EQ(strings[1].w_str(), strings[2].w_str() + 8);
    EXPECT_STREQ(strings[0].c_str(), "a.txt");
    EXPECT_STREQ(strings[1].c_str(), "plans\\a.txt");
    EXPECT_STREQ(strings[2].c_str(), "W:\\work\\plans\\a.txt");
}

TEST(StringBlock, HoldsStringsThatEndLikeTheNextOne)
{
    expectStrings({u"a", u"a", u"a"}, {L"a", L"a", L"a"});
    expectStrings({u"b", u"", u"ab"}, {L"b", L"", L"ab"});
    expectStrings({u"longer", u"er", u"er"}, {L"longer", L"er", L"er"});
    expectStrings({u"c", u"bc", u"Abc"}, {L"c", L"bc", L"Abc"});
}

TEST(StringBlock, HoldsStringsThatEndLikeTheNextOneWithAZeroCharacter)
{
    constexpr std::u16string_view zeroInside{u"a\0b", 3};
    constexpr std::u16string_view zeroFirst{u"\0b", 2};
    expectStrings({u"b", zeroInside, u"last"}, {L"b", L"a", L"last"});
    expectStrings({u"b", zeroFirst, u"ab"}, {L"b", L"", L"ab"});
    expectStrings({zeroFirst, zeroInside, u"last"}, {L"", L"a", L"last"});
    expectStrings({zeroInside, zeroInside, zeroInside}, {L"a", L"a", L"a"});
}

TEST(StringBlock, HoldsStringsThatEndLikeTheNextOneWithASurrogatePair)
{
    const std::u16string pair = smiles(1);
    const std::wstring wide = Unicode::fromUtf16(pair);
    const std::u16string low = pair.substr(1);
    expectStrings({pair, u"a" + pair, u"ba" + pair}, {wide, L"a" + wide, L"ba" + wide});
    expectStrings({u"a", pair + u"a", pair + pair + u"a"}, {L"a", wide + L"a", wide + wide + L"a"});
    expectStrings({low, pair, u"a" + pair}, {Unicode::fromUtf16(low), wide, L"a" + wide});
    expectStrings({low, u"a" + low, u"ba" + low},
        {Unicode::fromUtf16(low), Unicode::fromUtf16(u"a" + low), Unicode::fromUtf16(u"ba" + low)});
}
