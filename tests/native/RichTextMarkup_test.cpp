// Reads what toRichText makes of any message with an HTML parser.
#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/native/MessageFormatting.h>
#include "tests/support/LinkExpression.h"
#include "tests/support/ParsedHtml.h"

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

using TestSupport::expectedText;
using TestSupport::ParsedHtml;
using TestSupport::withPlainSpaces;

void expectTheMessage(const std::wstring& message)
{
    const ParsedHtml parsed = TestSupport::parseHtml(toRichText(message));
    EXPECT_EQ(parsed.surprises, std::vector<std::string>());
    EXPECT_EQ(withPlainSpaces(parsed.text), expectedText(message));
    std::vector<std::wstring> addresses;
    for (const TestSupport::ParsedLink& link : parsed.links) {
        addresses.push_back(withPlainSpaces(link.address));
        EXPECT_EQ(withPlainSpaces(link.text), addresses.back());
    }
    std::vector<std::wstring> expected = TestSupport::addressesByExpression(message);
    for (std::wstring& address : expected)
        address = expectedText(address);
    EXPECT_EQ(addresses, expected);
    ASSERT_FALSE(testing::Test::HasFailure()) << "for the message " << testing::PrintToString(message);
}

TEST(RichTextMarkup, ShowsEveryCharacterAsItself)
{
    for (unsigned code = 0; code <= 0x10FFFF; code += code < 0x3000 ? 1 : 0x101) {
        const auto character = static_cast<wchar_t>(code);
        ASSERT_NO_FATAL_FAILURE(expectTheMessage({L'x', character, L'y'})) << std::hex << code;
        ASSERT_NO_FATAL_FAILURE(expectTheMessage(std::wstring(L"www.x") + character + L"y z")) << std::hex << code;
    }
}

TEST(RichTextMarkup, ShowsMessagesThatTryToBeMarkup)
{
    for (const wchar_t* const message : {L"http://x\"onclick=\"y", L"www.x'><script>alert(1)</script>",
             L"&lt;b&gt;&#60;&#x3c;&amp", L"</p><p>", L"</a></p></body>", L"<!--", L"<![CDATA[ ]]>", L"<plaintext>",
             L"<textarea>", L"http://x&quot;&gt;", L"http://x<br>www.y&nbsp;www.z", L"\"http://x\"", L"<p>", L"<"})
        ASSERT_NO_FATAL_FAILURE(expectTheMessage(message));
}

TEST(RichTextMarkup, ShowsRandomMessages)
{
    const std::array<std::wstring, 62> parts{L"http://", L"https://", L"www.", L"www", L"w", L"http:/", L"x", L"yz",
        L" ", L"  ", L"\n", L"\r", L"\r\n", L"\t", L"\v", L"\f", std::wstring(1, L'\0'), L"\x01", L"\x1F", L"\x7F",
        L"\x80", L"\x85", L"\xA0", L"\x2028", L"\x2029", L"\x3000", L"\x4E2D", L"\xFEFF", L"\xFFFD", L"\xFFFF",
        L"\U0001F6A2", L"\U0010FFFF", std::wstring(1, wchar_t{0xD800}), std::wstring(1, wchar_t{0xDC00}),
        std::wstring(1, static_cast<wchar_t>(0x110000)), std::wstring(1, static_cast<wchar_t>(0x8000003C)), L"\"", L"'",
        L"`", L"=", L"/", L"&", L"&amp", L"&lt;", L"&nbsp;", L"&#", L"&#x3c;", L"&#0;", L";", L"<", L">", L"</", L"/>",
        L"<br>", L"<p>", L"</p>", L"</a>", L"<!--", L"-->", L"<script>", L"<![CDATA[", L"href=\"x\""};
    std::mt19937 random(14);
    for (int i = 0; i < 100'000; ++i) {
        std::wstring message;
        for (std::size_t count = random() % 16; count > 0; --count)
            message += parts[random() % parts.size()];
        ASSERT_NO_FATAL_FAILURE(expectTheMessage(message));
    }
}

TEST(RichTextMarkup, ShowsRandomCharactersOfEveryKind)
{
    std::mt19937 random(15);
    for (int i = 0; i < 20'000; ++i) {
        std::wstring message = random() % 2 == 0 ? L"www." : L"";
        for (std::size_t count = random() % 32; count > 0; --count)
            message += static_cast<wchar_t>(random() >> (random() % 32));
        ASSERT_NO_FATAL_FAILURE(expectTheMessage(message));
    }
}

} // namespace
} // namespace Quorvex::Velmora::TessaportAPI
