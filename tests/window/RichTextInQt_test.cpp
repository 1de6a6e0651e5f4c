// The rich text of messages, as Qt reads it.
#include <QTextDocument>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include <velmora/native/MessageFormatting.h>

namespace Quorvex::Velmora::WindowTest
{
namespace
{

// Qt decides by the beginning whether a string is rich text.
bool isRichForQt(const std::wstring& message)
{
    return Qt::mightBeRichText(QString::fromStdWString(TessaportAPI::toRichText(message)));
}

std::wstring randomMessage(std::mt19937& random)
{
    static const std::wstring pieces[] = {L"<", L">", L"&", L"\"", L"'", L"/", L"!--", L"<p>", L"</p>", L"<br>",
        L"&lt;", L" ", L"\n", L"\r\n", L"\t", std::wstring(1, L'\0'), L"http://a.b/c?d=1&e", L"www.x", L"é", L"\xD800",
        L"\x10FFFF", L"\xFFFE", L"text", L"]]>", L"<?xml", L"<!DOCTYPE"};
    std::wstring message;
    for (std::size_t length = random() % 12; length > 0; --length)
        message += pieces[random() % std::size(pieces)];
    return message;
}

TEST(RichTextInQt, IsTakenForRichTextWhateverTheMessageHolds)
{
    for (const wchar_t* message :
        {L"", L" ", L"\n", L"plain", L"a < b", L"<", L"</p>", L"see https://example.com", L"&"})
        EXPECT_TRUE(isRichForQt(message)) << testing::PrintToString(message);
    EXPECT_TRUE(isRichForQt(std::wstring(1'000'000, L'<')));
}

TEST(RichTextInQt, IsTakenForRichTextForRandomMessages)
{
    std::mt19937 random(14);
    for (int i = 0; i < 100'000; ++i) {
        const std::wstring message = randomMessage(random);
        ASSERT_TRUE(isRichForQt(message)) << testing::PrintToString(message);
    }
}

TEST(RichTextInQt, ShowsTheMessageAndItsLink)
{
    QTextDocument document;
    document.setHtml(QString::fromStdWString(TessaportAPI::toRichText(L"1 < 2  & <b>\nsee https://example.com/?a&b.")));

    EXPECT_EQ(document.toPlainText(), "1 < 2  & <b>\nsee https://example.com/?a&b.");
    EXPECT_TRUE(document.toHtml().contains("href=\"https://example.com/?a&amp;b\""));
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
