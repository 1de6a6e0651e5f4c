// linkify against its definition, and the other formatting functions over any text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <velmora/native/MessageFormatting.h>
#include "tests/support/LinkExpression.h"

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

// One character a byte, so that every mutation of the input is a text; 0xFE and 0xFF stand for two line terminators.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::wstring text;
    for (std::size_t i = 0; i < size; ++i)
        text += data[i] < 0xFE ? static_cast<wchar_t>(data[i]) : static_cast<wchar_t>(0x2028 + (data[i] & 1));

    const std::wstring linked = TessaportAPI::linkify(text);
    if (text.size() <= LongestForTheExpression)
        expect(linked == TestSupport::linkifiedByExpression(text));
    expect(linked.size() >= text.size());

    const std::wstring html = TessaportAPI::toHtml(text);
    expect(html.find_first_of(L" \n") == std::wstring::npos);
    std::wstring copy = text;
    const auto half = text.substr(0, text.size() / 2);
    const int count = TessaportAPI::replaceAll(copy, half, half);
    expect(copy == text && (count > 0) == !half.empty());
    return 0;
}
