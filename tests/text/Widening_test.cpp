#include "velmora/text/Widening.h"

#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <velmora/text/Unicode.h>

using namespace Quorvex::Velmora::Common;

namespace
{

constexpr wchar_t Untouched = 0x7E;

// Returns the plain conversion of the text up to its first zero.
std::wstring expected(std::u16string_view text) { return Unicode::fromUtf16(text.substr(0, text.find(u'\0'))); }

// The source is copied, so that the address sanitizer sees a read beyond its end; a guard follows the target.
std::wstring widened(std::u16string_view text)
{
    const std::unique_ptr<char16_t[]> source(new char16_t[text.size()]);
    text.copy(source.get(), text.size());
    std::wstring target(text.size() + 4, Untouched);
    const std::size_t written = widenToFirstZero({source.get(), text.size()}, target.data());
    EXPECT_LE(written, text.size());
    for (std::size_t i = text.size(); i < target.size(); ++i)
        EXPECT_EQ(target[i], Untouched);
    target.resize(written);
    return target;
}

std::u16string lettersOf(std::size_t length)
{
    std::u16string text;
    for (std::size_t i = 0; i < length; ++i)
        text += static_cast<char16_t>(u'a' + i % 26);
    return text;
}

} // namespace

TEST(Widening, ConvertsStringsOfEveryLength)
{
    for (std::size_t length = 0; length < 70; ++length)
        EXPECT_EQ(widened(lettersOf(length)), expected(lettersOf(length))) << length;
}

TEST(Widening, EndsAtAZeroAtEveryPosition)
{
    for (std::size_t position = 0; position < 40; ++position) {
        std::u16string text = lettersOf(40);
        text[position] = u'\0';

        EXPECT_EQ(widened(text).size(), position);
        EXPECT_EQ(widened(text), expected(text)) << position;
    }
}

TEST(Widening, JoinsASurrogatePairAtEveryPosition)
{
    for (std::size_t position = 0; position < 39; ++position) {
        std::u16string text = lettersOf(40);
        text[position] = 0xD83D;
        text[position + 1] = 0xDE00;

        EXPECT_EQ(widened(text), expected(text)) << position;
    }
}

TEST(Widening, KeepsAnUnpairedSurrogateAtEveryPosition)
{
    for (const char16_t surrogate : {u'\xD800', u'\xDBFF', u'\xDC00', u'\xDFFF'}) {
        for (std::size_t position = 0; position < 40; ++position) {
            std::u16string text = lettersOf(40);
            text[position] = surrogate;

            EXPECT_EQ(widened(text), expected(text)) << std::hex << surrogate << " at " << std::dec << position;
            EXPECT_EQ(widened(text).size(), 40U);
        }
    }
}

TEST(Widening, KeepsEveryUnitOfTheBasicPlane)
{
    for (unsigned first = 8; first < 0x10000; first += 8) {
        std::u16string text;
        for (unsigned unit = first; unit < first + 8; ++unit)
            text += static_cast<char16_t>(unit);

        ASSERT_EQ(widened(text), expected(text)) << std::hex << first;
    }
}

TEST(Widening, EqualsThePlainConversionOnRandomStrings)
{
    std::mt19937 random(1);
    const char16_t kinds[] = {u'a', u'\xE9', u'\x4E2D', 0xD83D, 0xDE00, u'\0'};
    for (int round = 0; round < 20'000; ++round) {
        std::u16string text;
        for (std::size_t length = random() % 40; text.size() < length;)
            text += kinds[random() % (round % 2 == 0 ? 3 : 6)];

        ASSERT_EQ(widened(text), expected(text));
    }
}
