#include "velmora/text/Narrowing.h"

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

constexpr char16_t Untouched = 0x7E;

// The source is copied, so that the address sanitizer sees a read beyond its end; a guard follows the target.
std::u16string narrowed(std::wstring_view text)
{
    const std::unique_ptr<wchar_t[]> source(new wchar_t[text.size()]);
    text.copy(source.get(), text.size());
    std::u16string target(mostUnits(text.size()) + 4, Untouched);
    const std::size_t written = narrow({source.get(), text.size()}, target.data());
    EXPECT_LE(written, mostUnits(text.size()));
    for (std::size_t i = mostUnits(text.size()); i < target.size(); ++i)
        EXPECT_EQ(target[i], Untouched);
    target.resize(written);
    return target;
}

std::wstring lettersOf(std::size_t length)
{
    std::wstring text;
    for (std::size_t i = 0; i < length; ++i)
        text += static_cast<wchar_t>(L'a' + i % 26);
    return text;
}

} // namespace

TEST(Narrowing, ConvertsStringsOfEveryLength)
{
    for (std::size_t length = 0; length < 70; ++length)
        EXPECT_EQ(narrowed(lettersOf(length)), Unicode::toUtf16(lettersOf(length))) << length;
}

TEST(Narrowing, MakesPairsOfCharactersBeyondTheBasicPlaneAtEveryPosition)
{
    for (std::size_t position = 0; position < 40; ++position) {
        std::wstring text = lettersOf(position);
        Unicode::appendWide(text, 0x1F600);
        text += lettersOf(40 - position);

        EXPECT_EQ(narrowed(text), Unicode::toUtf16(text)) << position;
    }
}

TEST(Narrowing, KeepsUnpairedSurrogatesAndZeros)
{
    std::wstring text = lettersOf(20);
    text[3] = static_cast<wchar_t>(0xD800);
    text[11] = static_cast<wchar_t>(0xDFFF);
    text[17] = L'\0';

    EXPECT_EQ(narrowed(text), Unicode::toUtf16(text));
    EXPECT_EQ(narrowed(text)[3], 0xD800);
    EXPECT_EQ(narrowed(text)[11], 0xDFFF);
}

TEST(Narrowing, EqualsThePlainConversionOnRandomCharacters)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::wstring text;
        for (std::size_t length = random() % 40; length > 0; --length)
            Unicode::appendWide(text, static_cast<char32_t>(random() % (random() % 8 == 0 ? 0x110000 : 0x10000)));

        ASSERT_EQ(narrowed(text), Unicode::toUtf16(text));
    }
}
