// Conversions of strings, and strings made safe to show.
#include <random>
#include <string>

#include <gtest/gtest.h>

#include <velmora/api/Interop.h>
#include "examples/window/Text.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

using TessaportAPI::toUtf8;

TEST(StringConversion, KeepsEveryStringBothWays)
{
    for (const wchar_t* text : {L"", L"plain", L"Übersicht", L"図面", L"\x1F600"}) {
        const Common::QVString string(text);
        EXPECT_EQ(DriveWindow::fromQString(DriveWindow::toQString(string)), string);
    }
}

TEST(StringConversion, MakesAnUnpairedSurrogateOfQtAReplacementCharacter)
{
    EXPECT_EQ(toUtf8(DriveWindow::fromQString(QString(QChar(0xD800)))), u8"\uFFFD");
}

TEST(ShownText, KeepsVisibleCharactersOfAllPlanes)
{
    const QString text = QString::fromUtf8("a Ü 図 \xF0\x9F\x98\x80");

    EXPECT_EQ(DriveWindow::shown(text), text);
}

TEST(ShownText, IsCutWithAnEllipsis)
{
    EXPECT_EQ(DriveWindow::shown(QString("abcdef"), 3), QString::fromUtf8("abc…"));
    EXPECT_EQ(DriveWindow::shown(QString("abc"), 3), "abc");
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
