#include "velmora/native/MessageFormatting.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/LinkExpression.h"
#include "tests/support/RepeatedString.h"

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

struct Replacement {
    std::wstring text;
    int count;
};

Replacement replaced(std::wstring text, const std::wstring& from, const std::wstring& to)
{
    const int count = replaceAll(text, from, to);
    return {text, count};
}

std::wstring linkTo(const std::wstring& address) { return L"<a href=\"" + address + L"\">" + address + L"</a>"; }

TEST(ReplaceAll, CountsItsReplacements)
{
    const auto result = replaced(L"a-b-c", L"-", L"+");
    EXPECT_EQ(result.text, L"a+b+c");
    EXPECT_EQ(result.count, 2);
}

TEST(ReplaceAll, LeavesATextWithoutAHitUnchanged)
{
    const auto result = replaced(L"abc", L"x", L"y");
    EXPECT_EQ(result.text, L"abc");
    EXPECT_EQ(result.count, 0);
}

TEST(ReplaceAll, DoesNotSearchItsReplacements)
{
    EXPECT_EQ(replaced(L"aa", L"a", L"aa").text, L"aaaa");
    EXPECT_EQ(replaced(L"aab", L"ab", L"b").text, L"ab");
}

TEST(ReplaceAll, FindsHitsFromTheLeft)
{
    const auto result = replaced(L"aaaaa", L"aa", L"x");
    EXPECT_EQ(result.text, L"xxa");
    EXPECT_EQ(result.count, 2);
}

TEST(ReplaceAll, ReplacesNothingForAnEmptyPattern)
{
    const auto result = replaced(L"abc", L"", L"y");
    EXPECT_EQ(result.text, L"abc");
    EXPECT_EQ(result.count, 0);
}

TEST(ReplaceAll, AcceptsTheTextItselfAsAnArgument)
{
    std::wstring text = L"ab";
    EXPECT_EQ(replaceAll(text, text, text), 1);
    EXPECT_EQ(text, L"ab");
    EXPECT_EQ(replaceAll(text, L"b", text), 1);
    EXPECT_EQ(text, L"aab");
}

TEST(ReplaceAll, RemovesHitsForAnEmptyReplacement) { EXPECT_EQ(replaced(L"a--b-", L"-", L"").text, L"ab"); }

std::wstring randomText(std::mt19937& random, const std::wstring& alphabet, std::size_t maximum)
{
    std::wstring text(random() % (maximum + 1), L' ');
    for (auto& c : text)
        c = alphabet[random() % alphabet.size()];
    return text;
}

TEST(ReplaceAll, EqualsAPlainSearchOnManyTexts)
{
    std::mt19937 random(1);
    for (int i = 0; i < 100'000; ++i) {
        const std::wstring text = randomText(random, L"ab", 20);
        const std::wstring from = randomText(random, L"ab", 5);
        const std::wstring to = randomText(random, L"abc", 3);
        std::wstring expected = text;
        int count = 0;
        for (std::size_t at = 0; !from.empty() && (at = expected.find(from, at)) != std::wstring::npos; ++count) {
            expected.replace(at, from.size(), to);
            at += to.size();
        }
        const auto result = replaced(text, from, to);
        ASSERT_EQ(result.text, expected);
        ASSERT_EQ(result.count, count);
    }
}

// A linear search takes milliseconds here, a quadratic one hours.
TEST(ReplaceAll, IsLinearForRepetitiveTexts)
{
    constexpr std::size_t Half = 2'000'000;
    const auto result = replaced(std::wstring(2 * Half, L'a'), std::wstring(Half, L'a') + L'b', L"x");
    EXPECT_EQ(result.count, 0);
}

TEST(ToHtml, EscapesBracketsSpacesAndLineFeeds)
{
    EXPECT_EQ(toHtml(L"a <"), L"a&nbsp;&lt;");
    EXPECT_EQ(toHtml(L"<b>\n x"), L"&lt;b&gt;<br>&nbsp;x");
    EXPECT_EQ(toHtml(L""), L"");
}

TEST(ToHtml, DoesNotEscapeTheAmpersand) { EXPECT_EQ(toHtml(L"&lt; & \"'\t"), L"&lt;&nbsp;&&nbsp;\"'\t"); }

TEST(Linkify, LeavesTheFullStopOutsideTheLink)
{
    EXPECT_EQ(linkify(L"see www.example.test."), L"see " + linkTo(L"www.example.test") + L".");
}

TEST(Linkify, LinksAddressesAfterEscapedSpacesAndLineBreaks)
{
    const std::wstring link = linkTo(L"http://x");
    EXPECT_EQ(linkify(L"a&nbsp;http://x&nbsp;b"), L"a&nbsp;" + link + L"&nbsp;b");
    EXPECT_EQ(linkify(L"a<br>http://x<br />b"), L"a<br>" + link + L"<br />b");
    EXPECT_EQ(linkify(L"a<br  />http://x"), L"a<br  />" + link);
    EXPECT_EQ(linkify(L"a<br/ >http://x"), L"a<br/ >http://x");
}

TEST(Linkify, LinksNoAddressRightAfterALetter)
{
    EXPECT_EQ(linkify(L"ahttp://x"), L"ahttp://x");
    EXPECT_EQ(linkify(L"(www.x"), L"(www.x");
}

TEST(Linkify, LinksAddressesAtTheStartAndAfterQuotes)
{
    EXPECT_EQ(linkify(L"https://x"), linkTo(L"https://x"));
    EXPECT_EQ(linkify(L"\"'http://x'\", y"), L"\"'" + linkTo(L"http://x") + L"'\", y");
}

TEST(Linkify, IsCaseSensitive) { EXPECT_EQ(linkify(L"HTTP://x"), L"HTTP://x"); }

TEST(Linkify, AcceptsAnyCharacterAfterWwwButALineTerminator)
{
    EXPECT_EQ(linkify(L"wwwxy"), linkTo(L"wwwxy"));
    EXPECT_EQ(linkify(L"www x"), linkTo(L"www x"));
    EXPECT_EQ(linkify(L"www\x4E2Dx"), linkTo(L"www\x4E2Dx"));
    for (const wchar_t terminator : {L'\n', L'\r', wchar_t{0x2028}, wchar_t{0x2029}}) {
        const std::wstring text = std::wstring(L"www") + terminator + L"x";
        EXPECT_EQ(linkify(text), text);
    }
}

TEST(Linkify, NeedsACharacterAfterTheOpening)
{
    for (const wchar_t* const text : {L"http://", L"www.", L"www", L"http:// x", L"www. x", L""})
        EXPECT_EQ(linkify(text), text);
    EXPECT_EQ(linkify(L"http://."), linkTo(L"http://."));
}

TEST(Linkify, TreatsOnlyAsciiCharactersAsWhiteSpace)
{
    EXPECT_EQ(linkify(L"a\xA0http://x"), L"a\xA0http://x");
    EXPECT_EQ(linkify(L"\vhttp://x\x2003y"), L"\v" + linkTo(L"http://x\x2003y"));
}

TEST(Linkify, LinksEachOfSeveralAddresses)
{
    EXPECT_EQ(linkify(L"www.a www.b, www.c"), linkTo(L"www.a") + L" " + linkTo(L"www.b") + L", " + linkTo(L"www.c"));
}

template <class MakeText>
void expectTheExpression(unsigned seed, int count, MakeText makeText)
{
    std::mt19937 random(seed);
    for (int i = 0; i < count; ++i) {
        const std::wstring text = makeText(random);
        ASSERT_EQ(linkify(text), TestSupport::linkifiedByExpression(text))
            << "in the text " << testing::PrintToString(text);
    }
}

TEST(Linkify, LinksAddressesOfEachLength)
{
    std::wstring text;
    std::wstring expected;
    for (std::size_t length = 1; length < 3'000; length += 1 + length / 20) {
        const std::wstring address = L"http://" + std::wstring(length, L'a');
        const std::wstring between = L" " + std::wstring(3'000 - length, L'b') + L" ";
        text += address + between;
        expected += L"<a href=\"" + address + L"\">" + address + L"</a>" + between;
    }
    EXPECT_TRUE(linkify(text) == expected);
}

TEST(Linkify, EqualsTheExpressionOnTextsOfRandomCharacters)
{
    const std::wstring alphabet = L"w.http:s/ <br>&nbsp;\"',?\n\r\t\x0B\x0C\x01\xA0\x2028\x4E2Dxy";
    expectTheExpression(2, 100'000, [&](auto& random) { return randomText(random, alphabet, 24); });
}

TEST(Linkify, EqualsTheExpressionOnTextsOfRandomParts)
{
    const std::array<std::wstring, 36> parts{L"http://", L"https://", L"www.", L"www", L"ww", L"w", L"h", L"http:/",
        L"&nbsp;", L"&nbsp", L"nbsp;", L"&", L"<br>", L"<br/>", L"<br />", L"<br", L"<br  ", L"<", L">", L"/", L"/>",
        L" ", L"  ", L"\n", L"\r", L"\t", L"\"", L"'", L".", L",", L":", L";", L"?", L"\x2029", L"x", L"yz"};
    expectTheExpression(3, 200'000, [&](auto& random) {
        std::wstring text;
        for (std::size_t count = random() % 13; count > 0; --count)
            text += parts[random() % parts.size()];
        return text;
    });
}

TEST(Linkify, EqualsTheExpressionOnEveryShortTextAfterAnOpening)
{
    const std::wstring alphabet = L" .\"<b>&w";
    for (unsigned code = 0; code < 8 * 8 * 8 * 8 * 8; ++code) {
        std::wstring text = L"www";
        for (unsigned rest = code, i = 0; i < 5; ++i, rest /= 8)
            text += alphabet[rest % 8];
        ASSERT_EQ(linkify(text), TestSupport::linkifiedByExpression(text)) << testing::PrintToString(text);
    }
}

// An implementation that backtracks would take hours for each of these, or overflow the stack.
TEST(Linkify, HandlesMessagesOfTenMegabytes)
{
    constexpr std::size_t Length = 10'000'000;
    for (const wchar_t* const part : {L"x", L" ", L"http://", L"www.x ", L"www.&nbsp", L"\"", L".", L"<br ", L"<br  ",
             L"&nbsp;", L" \"'", L"http://x.?.", L"w", L"<"}) {
        const std::wstring text = TestSupport::repeated(part, Length);
        const std::wstring linked = linkify(text);
        EXPECT_GE(linked.size(), text.size()) << part;
    }
    const std::wstring spaces = TestSupport::repeated(L" ", Length);
    EXPECT_EQ(linkify(L"http://" + TestSupport::repeated(L"x.", Length)).size(), 2 * (Length + 6) + 16);
    EXPECT_TRUE(linkify(L"<br" + spaces + L"www.x") == L"<br" + spaces + linkTo(L"www.x"));
    EXPECT_TRUE(linkify(L"www.x" + TestSupport::repeated(L"?", Length) + L"y ").size() > 2 * Length);
}

} // namespace
} // namespace Quorvex::Velmora::TessaportAPI
