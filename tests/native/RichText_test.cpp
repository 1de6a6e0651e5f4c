#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include <velmora/native/MessageFormatting.h>
#include "tests/support/RepeatedString.h"

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

std::wstring paragraph(const std::wstring& content) { return L"<p>" + content + L"</p>"; }

std::wstring linkTo(const std::wstring& address) { return L"<a href=\"" + address + L"\">" + address + L"</a>"; }

TEST(ToRichText, MakesOneParagraph)
{
    EXPECT_EQ(toRichText(L""), paragraph(L""));
    EXPECT_EQ(toRichText(L"The drive is offline."), paragraph(L"The drive is offline."));
}

TEST(ToRichText, EscapesWhatWouldBeMarkup)
{
    EXPECT_EQ(toRichText(L"<b>&amp;\"'"), paragraph(L"&lt;b&gt;&amp;amp;&quot;&#39;"));
}

TEST(ToRichText, KeepsASpaceBetweenVisibleCharacters)
{
    EXPECT_EQ(toRichText(L"a b & c"), paragraph(L"a b &amp; c"));
    EXPECT_EQ(toRichText(L"a \xA0 b"), paragraph(L"a \xA0 b"));
}

TEST(ToRichText, KeepsSpacesThatAViewWouldDrop)
{
    EXPECT_EQ(toRichText(L"a  b"), paragraph(L"a&nbsp;&nbsp;b"));
    EXPECT_EQ(toRichText(L" "), paragraph(L"&nbsp;"));
    EXPECT_EQ(toRichText(L" a "), paragraph(L"&nbsp;a&nbsp;"));
    EXPECT_EQ(toRichText(L"a \n b"), paragraph(L"a&nbsp;<br>&nbsp;b"));
    EXPECT_EQ(toRichText(L"a \r\n b"), paragraph(L"a&nbsp;<br>&nbsp;b"));
    EXPECT_EQ(toRichText(L"a\t b"), paragraph(L"a\t&nbsp;b"));
}

TEST(ToRichText, BreaksLinesAtLineFeeds)
{
    EXPECT_EQ(toRichText(L"a\nb\n\nc\n"), paragraph(L"a<br>b<br><br>c<br>"));
    EXPECT_EQ(toRichText(L"a\r\nb\r\r\n"), paragraph(L"a<br>b&#13;<br>"));
    EXPECT_EQ(toRichText(L"a\rb\r"), paragraph(L"a&#13;b&#13;"));
}

TEST(ToRichText, ReplacesWhatIsNoCharacter)
{
    EXPECT_EQ(toRichText({L'a', L'\0', L'b'}), paragraph(L"a\xFFFD"
                                                         L"b"));
    if constexpr (sizeof(wchar_t) > 2) {
        EXPECT_EQ(toRichText(std::wstring(1, static_cast<wchar_t>(0x110000))), paragraph(L"\xFFFD"));
        EXPECT_EQ(toRichText(std::wstring(1, static_cast<wchar_t>(-1))), paragraph(L"\xFFFD"));
    }
}

TEST(ToRichText, KeepsControlCharactersAndUnpairedSurrogates)
{
    for (const unsigned code :
        {0x01U, 0x08U, 0x0BU, 0x0CU, 0x1FU, 0x7FU, 0x85U, 0xA0U, 0x2028U, 0xD800U, 0xDC00U, 0xFFFFU}) {
        const std::wstring character(1, static_cast<wchar_t>(code));
        EXPECT_EQ(toRichText(character), paragraph(character));
    }
}

TEST(ToRichText, KeepsCharactersBeyondTheBasicPlane)
{
    EXPECT_EQ(toRichText(L"\U0001F6A2 \U0010FFFF"), paragraph(L"\U0001F6A2 \U0010FFFF"));
}

TEST(ToRichText, LinksWebAddresses)
{
    EXPECT_EQ(toRichText(L"see www.example.test."), paragraph(L"see " + linkTo(L"www.example.test") + L"."));
    EXPECT_EQ(toRichText(L"\"https://x\",\nhttp://y"),
        paragraph(L"&quot;" + linkTo(L"https://x") + L"&quot;,<br>" + linkTo(L"http://y")));
    EXPECT_EQ(toRichText(L"  http://x  "), paragraph(L"&nbsp;&nbsp;" + linkTo(L"http://x") + L"&nbsp;&nbsp;"));
}

TEST(ToRichText, LinksAnAddressWithCharactersThatAreEscaped)
{
    EXPECT_EQ(toRichText(L"http://x?a=1&b=<2>"), paragraph(linkTo(L"http://x?a=1&amp;b=&lt;2&gt;")));
    EXPECT_EQ(toRichText(L"http://x\"'y"), paragraph(linkTo(L"http://x&quot;&#39;y")));
    EXPECT_EQ(toRichText({L'w', L'w', L'w', L'.', L'\0', L'x'}), paragraph(linkTo(L"www.\xFFFDx")));
}

TEST(ToRichText, SearchesAddressesBeforeItEscapes)
{
    EXPECT_EQ(toRichText(L"http://x&nbsp;y"), paragraph(linkTo(L"http://x&amp;nbsp;y")));
    EXPECT_EQ(toRichText(L"http://x<br>y"), paragraph(linkTo(L"http://x&lt;br&gt;y")));
    EXPECT_EQ(toRichText(L"<br>www.x &nbsp;www.y"), paragraph(L"&lt;br&gt;www.x &amp;nbsp;www.y"));
    EXPECT_EQ(toRichText(L"http://x&"), paragraph(linkTo(L"http://x&amp;")));
}

// An implementation that backtracks or inserts into the result would take hours for each of these.
TEST(ToRichText, HandlesMessagesOfTenMegabytes)
{
    constexpr std::size_t Length = 2'500'000; // 10 MB where wchar_t has 32 bits
    for (const wchar_t* const part : {L"x", L" ", L"&", L"\"", L"\r", L"\r\n", L"http://", L"www.x ", L"www.&\"",
             L" \"'", L"http://x.?.", L"w", L"<", L"\"www.", L"\"'www.x\" "}) {
        const std::wstring message = TestSupport::repeated(part, Length);
        const std::wstring html = toRichText(message);
        EXPECT_GE(html.size(), message.size() / 2) << part;
        EXPECT_LE(html.size(), 12 * message.size() + 7) << part;
    }
    EXPECT_EQ(toRichText(L"www." + TestSupport::repeated(L"\"", Length) + L"x").size(), 12 * Length + 2 * 5 + 15 + 7);
}

} // namespace
} // namespace Quorvex::Velmora::TessaportAPI
