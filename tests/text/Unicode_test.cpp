#include "velmora/text/Unicode.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace Quorvex::Velmora::Common::Unicode
{
namespace
{

constexpr char32_t Smile = 0x1F600;

std::wstring wide(std::initializer_list<char32_t> codes)
{
    std::wstring text;
    for (const char32_t code : codes)
        appendWide(text, code);
    return text;
}

std::u16string utf16Of(char32_t code)
{
    std::u16string text;
    appendUtf16(text, code);
    return text;
}

std::string utf8Of(char32_t code)
{
    std::string text;
    appendUtf8(text, code);
    return text;
}

template <class Char>
std::u32string codesOf(std::basic_string_view<Char> text)
{
    std::u32string codes;
    for (std::size_t i = 0; i < text.size();)
        codes += nextCodePoint(text, i);
    return codes;
}

TEST(Unicode, DistinguishesHighAndLowSurrogates)
{
    EXPECT_FALSE(isSurrogate(0xD7FF));
    EXPECT_TRUE(isSurrogate(0xD800) && isHighSurrogate(0xD800) && !isLowSurrogate(0xD800));
    EXPECT_TRUE(isSurrogate(0xDBFF) && isHighSurrogate(0xDBFF) && !isLowSurrogate(0xDBFF));
    EXPECT_TRUE(isSurrogate(0xDC00) && !isHighSurrogate(0xDC00) && isLowSurrogate(0xDC00));
    EXPECT_TRUE(isSurrogate(0xDFFF) && !isHighSurrogate(0xDFFF) && isLowSurrogate(0xDFFF));
    EXPECT_FALSE(isSurrogate(0xE000));
}

TEST(Unicode, CombinesSurrogates)
{
    EXPECT_EQ(combineSurrogates(0xD800, 0xDC00), char32_t{0x10000});
    EXPECT_EQ(combineSurrogates(0xD83D, 0xDE00), Smile);
    EXPECT_EQ(combineSurrogates(0xDBFF, 0xDFFF), char32_t{0x10FFFF});
}

TEST(NextCodePoint, JoinsPairsOf16BitUnits)
{
    EXPECT_EQ(codesOf(std::u16string_view(u"a\U0001F600b")), (std::u32string{U'a', Smile, U'b'}));
}

TEST(NextCodePoint, ReturnsUnpairedSurrogatesAsTheyAre)
{
    const std::u16string units{0xD800, u'x', 0xDC00, 0xD800, 0xD83D, 0xDE00, 0xDBFF};
    EXPECT_EQ(codesOf(std::u16string_view(units)), (std::u32string{0xD800, U'x', 0xDC00, 0xD800, Smile, 0xDBFF}));
}

// The unit after the end of the view would complete the pair.
TEST(NextCodePoint, ReadsNothingBeyondTheView)
{
    const std::u16string units{u'a', 0xD83D, 0xDE00};

    EXPECT_EQ(codesOf(std::u16string_view(units).substr(0, 2)), (std::u32string{U'a', 0xD83D}));
}

TEST(NextCodePoint, Takes32BitUnitsOneByOne)
{
    const std::u32string units{0xD83D, 0xDE00, Smile};
    EXPECT_EQ(codesOf(std::u32string_view(units)), units);
}

TEST(AppendUtf16, MakesPairsBeyondTheBasicPlane)
{
    EXPECT_EQ(utf16Of(U'a'), u"a");
    EXPECT_EQ(utf16Of(0xFFFF), (std::u16string{0xFFFF}));
    EXPECT_EQ(utf16Of(0x10000), (std::u16string{0xD800, 0xDC00}));
    EXPECT_EQ(utf16Of(Smile), (std::u16string{0xD83D, 0xDE00}));
    EXPECT_EQ(utf16Of(0x10FFFF), (std::u16string{0xDBFF, 0xDFFF}));
}

TEST(AppendUtf16, KeepsSurrogatesAndReplacesInvalidCodePoints)
{
    EXPECT_EQ(utf16Of(0xD800), (std::u16string{0xD800}));
    EXPECT_EQ(utf16Of(0x110000), (std::u16string{0xFFFD}));
    EXPECT_EQ(utf16Of(0xFFFFFFFF), (std::u16string{0xFFFD}));
}

TEST(AppendWide, AppendsOneCharacterWhereWcharIsWideEnough)
{
    EXPECT_EQ(wide({'a'}), L"a");
    EXPECT_EQ(wide({Smile}).size(), sizeof(wchar_t) == 2 ? 2U : 1U);
    EXPECT_EQ(codesOf(std::wstring_view(wide({Smile, 0xD800}))), (std::u32string{Smile, 0xD800}));
}

TEST(AppendUtf8, AppendsOneToFourBytes)
{
    EXPECT_EQ(utf8Of(0), std::string(1, '\0'));
    EXPECT_EQ(utf8Of(0x7F), "\x7F");
    EXPECT_EQ(utf8Of(0x80), "\xC2\x80");
    EXPECT_EQ(utf8Of(0x7FF), "\xDF\xBF");
    EXPECT_EQ(utf8Of(0x800), "\xE0\xA0\x80");
    EXPECT_EQ(utf8Of(0xFFFF), "\xEF\xBF\xBF");
    EXPECT_EQ(utf8Of(0x10000), "\xF0\x90\x80\x80");
    EXPECT_EQ(utf8Of(0x10FFFF), "\xF4\x8F\xBF\xBF");
}

TEST(ToUtf8, EncodesEveryPlane)
{
    const std::wstring text = wide({'a', 0xE9, 0x4E2D, Smile});
    EXPECT_EQ(toUtf8(text), "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80");
    EXPECT_EQ(toUtf8Strict(text), toUtf8(text));
    EXPECT_EQ(toUtf8(L""), "");
    EXPECT_EQ(toUtf8(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(ToUtf8, ReplacesUnpairedSurrogates)
{
    EXPECT_EQ(toUtf8(wide({'a', 0xD800, 'b', 0xDC00})), "a\xEF\xBF\xBD"
                                                        "b\xEF\xBF\xBD");
    EXPECT_EQ(toUtf8(wide({0xD800})), "\xEF\xBF\xBD");
}

TEST(ToUtf8, ReplacesInvalidCodePoints)
{
    if constexpr (sizeof(wchar_t) == 4) {
        EXPECT_EQ(toUtf8(std::wstring{static_cast<wchar_t>(0x110000)}), "\xEF\xBF\xBD");
        EXPECT_EQ(toUtf8Strict(std::wstring{static_cast<wchar_t>(0x110000)}), std::nullopt);
        EXPECT_EQ(toUtf8(std::wstring{static_cast<wchar_t>(-1)}), "\xEF\xBF\xBD");
    }
}

TEST(ToUtf8Strict, RefusesUnpairedSurrogates)
{
    EXPECT_EQ(toUtf8Strict(wide({'a', 0xD800})), std::nullopt);
    EXPECT_EQ(toUtf8Strict(wide({0xDC00, 'a'})), std::nullopt);
    EXPECT_EQ(toUtf8Strict(wide({Smile})), "\xF0\x9F\x98\x80");
}

TEST(ToUtf8Strict, AcceptsTheLastCodePoint) { EXPECT_EQ(toUtf8Strict(wide({0x10FFFF})), "\xF4\x8F\xBF\xBF"); }

TEST(FromUtf8, DecodesEveryPlane)
{
    EXPECT_EQ(fromUtf8("a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80"), wide({'a', 0xE9, 0x4E2D, Smile}));
    EXPECT_EQ(fromUtf8(""), L"");
    EXPECT_EQ(fromUtf8(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(FromUtf8, ReversesToUtf8)
{
    for (char32_t code = 0; code <= 0x10FFFF; code += code < 0x1000 ? 1 : 97) {
        if (!isSurrogate(code)) {
            ASSERT_EQ(fromUtf8(utf8Of(code)), wide({code})) << std::hex << static_cast<unsigned>(code);
        }
    }
}

std::wstring replacements(std::size_t count)
{
    std::wstring text;
    while (count-- > 0)
        appendWide(text, ReplacementCharacter);
    return text;
}

TEST(FromUtf8, ReplacesEachByteOfATruncatedSequence)
{
    EXPECT_EQ(fromUtf8("\xC3"), replacements(1));
    EXPECT_EQ(fromUtf8("\xE4\xB8"), replacements(2));
    EXPECT_EQ(fromUtf8("\xF0\x9F\x98"), replacements(3));
    EXPECT_EQ(fromUtf8("\xE4\xB8x"), replacements(2) + L"x");
}

// The bytes after the end of the view would complete the sequence.
TEST(FromUtf8, ReadsNothingBeyondTheView)
{
    for (const std::string_view sequence : {"\xC3\xA9", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80"}) {
        const std::string after = "four" + std::string(sequence);
        for (std::size_t length = 1; length < sequence.size(); ++length) {
            EXPECT_EQ(fromUtf8(sequence.substr(0, length)), replacements(length)) << sequence << ' ' << length;
            EXPECT_EQ(fromUtf8(std::string_view(after).substr(0, 4 + length)), L"four" + replacements(length));
        }
    }
}

TEST(FromUtf8, ReplacesEachByteOfAnOverlongSequence)
{
    EXPECT_EQ(fromUtf8("\xC0\x80"), replacements(2));
    EXPECT_EQ(fromUtf8("\xC1\xBF"), replacements(2));
    EXPECT_EQ(fromUtf8("\xE0\x9F\xBF"), replacements(3));
    EXPECT_EQ(fromUtf8("\xF0\x8F\xBF\xBF"), replacements(4));
}

TEST(FromUtf8, ReplacesSurrogatesAndValuesBeyondTheLastCharacter)
{
    EXPECT_EQ(fromUtf8("\xED\xA0\x80"), replacements(3));
    EXPECT_EQ(fromUtf8("\xF4\x90\x80\x80"), replacements(4));
    EXPECT_EQ(fromUtf8("\xF5\x80\x80\x80"), replacements(4));
    EXPECT_EQ(fromUtf8("\xFF\xFE"), replacements(2));
}

TEST(FromUtf8, ReplacesStrayContinuations)
{
    EXPECT_EQ(fromUtf8("\x80"
                       "a\xBF"),
        replacements(1) + L"a" + replacements(1));
}

TEST(Utf16, RoundTripKeepsPairsAndUnpairedSurrogates)
{
    const std::u16string units{u'a', 0xD83D, 0xDE00, 0xD800, u'b', 0xDC00, 0xFFFF};
    EXPECT_EQ(toUtf16(fromUtf16(units)), units);
    EXPECT_EQ(
        codesOf(std::wstring_view(fromUtf16(units))), (std::u32string{U'a', Smile, 0xD800, U'b', 0xDC00, 0xFFFF}));
    EXPECT_EQ(toUtf16(wide({Smile})), (std::u16string{0xD83D, 0xDE00}));
    EXPECT_EQ(toUtf16(L""), u"");
    EXPECT_EQ(fromUtf16(u""), L"");
}

} // namespace
} // namespace Quorvex::Velmora::Common::Unicode
