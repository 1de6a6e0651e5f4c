// The conversions and the formatting of messages with each of their allocations failing: the text is as before or as
// after, and nothing is left behind.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <velmora/api/Interop.h>
#include <velmora/native/MessageFormatting.h>
#include "tests/support/FailingAllocations.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Common::QVString;

struct Conversion {
    const char* name;
    std::function<void(std::wstring& text)> run;
};

void PrintTo(const Conversion& conversion, std::ostream* stream) { *stream << conversion.name; }

std::string nameOf(const ::testing::TestParamInfo<Conversion>& info) { return info.param.name; }

// Longer than what a string keeps without memory of its own.
const std::wstring Before = L"D:\\Drive\\Plans <2026> see www.example.org/a?b=c&d";

class FailingText : public ::testing::TestWithParam<Conversion>
{
};

TEST_P(FailingText, IsAsBeforeOrAsAfter)
{
    std::wstring text = Before;
    GetParam().run(text);
    const std::wstring after = text;
    text = Before;

    const std::int64_t failures = failEachAllocation([&] { GetParam().run(text); },
        [&] {
            EXPECT_TRUE(text == Before || text == after) << QVString(text.c_str());
            text = Before;
        });

    EXPECT_GT(failures, 0);
    EXPECT_NE(after, Before) << "the conversion changes nothing";
}

INSTANTIATE_TEST_SUITE_P(Of, FailingText,
    ::testing::Values(
        Conversion{"localPath",
            [](std::wstring& text) { text = localPath(QVString(text.c_str())).wstring() + L", a local path"; }},
        Conversion{"localPathOfAnItem",
            [](std::wstring& text) {
                Item item;
                item.workspacePath = text.c_str();
                text = localPath(item).wstring() + L", a local path";
            }},
        Conversion{"toUtf8",
            [](std::wstring& text) {
                const std::string utf8 = toUtf8(QVString(text.c_str()));
                text.assign(utf8.rbegin(), utf8.rend());
            }},
        Conversion{"toWide", [](std::wstring& text) { text = toWide(QVString(text.c_str())) + L", wide"; }},
        Conversion{"toQVStringOfAView",
            [](std::wstring& text) { text = toQVString(std::wstring_view(text).substr(1)).w_str(); }},
        Conversion{"toQVStringOfAPath",
            [](std::wstring& text) {
                text = toQVString(std::filesystem::path("folder") / "a file with a name").w_str();
            }},
        Conversion{"output",
            [](std::wstring& text) {
                std::wostringstream stream;
                stream.exceptions(std::ios::badbit);
                stream << QVString(text.c_str()) << L", written";
                text = stream.str();
            }},
        Conversion{"toHtml", [](std::wstring& text) { text = toHtml(text); }},
        Conversion{"linkify", [](std::wstring& text) { text = linkify(text); }},
        Conversion{"toRichText", [](std::wstring& text) { text = toRichText(text); }},
        Conversion{"replaceAll", [](std::wstring& text) { (void)replaceAll(text, L"a", L"something longer"); }}),
    nameOf);

} // namespace
} // namespace Quorvex::Velmora::TestSupport
