// Compares linkify with its definition for any text, reads what toRichText returns with an HTML parser, and checks the
// other formatting functions.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <velmora/native/MessageFormatting.h>
#include "tests/support/LinkExpression.h"
#include "tests/support/ParsedHtml.h"

namespace
{

using namespace Quorvex::Velmora;

// The expression recurses for every character.
constexpr std::size_t LongestForTheExpression = 256;

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

// Each byte is one character, so that every mutation of the input is a string. 0xFE and 0xFF are the line terminators
// U+2028 and U+2029.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::wstring text;
    for (std::size_t i = 0; i < size; ++i)
        text += data[i] < 0xFE ? static_cast<wchar_t>(data[i]) : static_cast<wchar_t>(0x2028 + (data[i] & 1));

    const std::wstring linked = TessaportAPI::linkify(text);
    if (text.size() <= LongestForTheExpression)
        expect(linked == TestSupport::linkifiedByExpression(text));
    expect(linked.size() >= text.size());

    const TestSupport::ParsedHtml parsed = TestSupport::parseHtml(TessaportAPI::toRichText(text));
    expect(parsed.surprises.empty());
    expect(TestSupport::withPlainSpaces(parsed.text) == TestSupport::expectedText(text));

    const std::wstring html = TessaportAPI::toHtml(text);
    expect(html.find_first_of(L" \n") == std::wstring::npos);
    std::wstring copy = text;
    const auto half = text.substr(0, text.size() / 2);
    const int count = TessaportAPI::replaceAll(copy, half, half);
    expect(copy == text && (count > 0) == !half.empty());
    return 0;
}
