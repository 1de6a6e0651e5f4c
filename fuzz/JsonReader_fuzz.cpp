// Reads any text as a JSON document, then writes it as a value and reads that back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVJsonParser.h>
#include <velmora/text/Unicode.h>
#include "tests/support/CapturedErrors.h"

namespace
{

using namespace Quorvex::Velmora;

void readAsDocument(const std::wstring& text)
{
    const TestSupport::CapturedErrors errors;
    std::wistringstream stream(text);
    const Logging::QVJsonParser parser(stream);
    std::wstring value;
    std::uint32_t number = 0;
    double fraction = 0;
    bool flag = false;
    std::uint64_t large = 0;
    for (const wchar_t* const key : {L"a", L"a.b", L"", L"n"}) {
        parser.getString(key, value);
        parser.getUInt32(key, number);
        parser.getDouble(key, fraction);
        parser.getBool(key, flag);
        parser.getUInt64(key, large);
    }
    value = L"previous";
    if (!parser.valueAsString(value) || (!errors.text().empty() && !value.empty()))
        std::abort();
}

void writeAndReadBack(const std::wstring& text)
{
    std::wstringstream stream;
    Logging::QVJsonLogTarget target(stream, text.size() % 2 == 0);
    target.beginRecord(L"");
    target.putString(L"k", text);
    target.endRecord(L"");
    const Logging::QVJsonParser parser(stream);
    std::wstring value;
    if (!parser.getString(L"k", value) || value != text)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = Common::Unicode::fromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
    readAsDocument(text);
    writeAndReadBack(text);
    return 0;
}
