#include "velmora/api/Interop.h"

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include <gtest/gtest.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

using Common::QVString;
using Common::QVUUID;
using std::filesystem::path;

constexpr const char* IdText = "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01";

path nativePath([[maybe_unused]] const char* posix, [[maybe_unused]] const wchar_t* windows)
{
#ifdef _WIN32
    return windows;
#else
    return posix;
#endif
}

TEST(LocalPath, ExchangesTheSeparatorsOfAWorkspacePath)
{
    EXPECT_EQ(localPath(QVString(L"\\home\\u\\ws\\a.txt")).native(),
        nativePath("/home/u/ws/a.txt", L"\\home\\u\\ws\\a.txt").native());
    EXPECT_EQ(localPath(QVString(L"/home/u\\ws/a.txt")).native(),
        nativePath("/home/u/ws/a.txt", L"\\home\\u\\ws\\a.txt").native());
}

TEST(LocalPath, NormalisesNothing)
{
    EXPECT_EQ(localPath(QVString(L"D:\\x\\..\\.\\y\\\\z\\")).native(),
        nativePath("D:/x/.././y//z/", L"D:\\x\\..\\.\\y\\\\z\\").native());
}

TEST(LocalPath, KeepsNonAsciiNames)
{
    const path local = localPath(QVString(L"\\ws\\\u00dcbersicht.txt"));
    EXPECT_EQ(local.filename().u8string(), "\xC3\x9C"
                                           "bersicht.txt");
}

TEST(LocalPath, OfAnItemIsThatOfItsWorkspacePath)
{
    Item item;
    item.workspacePath = L"\\ws\\a.txt";
    EXPECT_EQ(localPath(item), localPath(item.workspacePath));
}

TEST(LocalPath, OfTheEmptyStringIsEmpty) { EXPECT_TRUE(localPath(QVString()).empty()); }

#ifndef _WIN32
TEST(LocalPath, ReplacesAnUnpairedSurrogate)
{
    const wchar_t unpaired[] = {L'a', static_cast<wchar_t>(0xD800), L'b', 0};
    EXPECT_EQ(localPath(QVString(unpaired)).native(), "a\xEF\xBF\xBD"
                                                      "b");
}
#endif

TEST(LocalPath, GivesBackThePathThatAStringWasMadeOf)
{
    const path original = std::filesystem::u8path("/ws/\xC3\x9C"
                                                  "bersicht/\xF0\x9F\x9A\xA2.txt");
    EXPECT_EQ(localPath(toQVString(original)), original);
}

TEST(ToQVString, TakesEveryStringWithoutACast)
{
    EXPECT_TRUE(toQVString("\xC3\x9C") == QVString(L"\u00dc"));
    EXPECT_TRUE(toQVString(L"\u00dc") == QVString(L"\u00dc"));
    EXPECT_TRUE(toQVString(std::string("a")) == QVString(L"a"));
    EXPECT_TRUE(toQVString(std::wstring(L"a")) == QVString(L"a"));
    EXPECT_TRUE(toQVString(std::string_view("ab").substr(0, 1)) == QVString(L"a"));
    EXPECT_TRUE(toQVString(std::wstring_view(L"ab").substr(0, 1)) == QVString(L"a"));
    EXPECT_TRUE(toQVString(path("a")) == QVString(L"a"));
}

TEST(ToQVString, OfANullPointerIsEmpty)
{
    EXPECT_TRUE(toQVString(static_cast<const char*>(nullptr)).Empty());
    EXPECT_TRUE(toQVString(static_cast<const wchar_t*>(nullptr)).Empty());
}

TEST(ToQVString, EndsAtTheFirstZeroCharacter)
{
    EXPECT_TRUE(toQVString(std::string_view("a\0b", 3)) == QVString(L"a"));
    EXPECT_TRUE(toQVString(std::wstring_view(L"a\0b", 3)) == QVString(L"a"));
}

TEST(ToQVString, ReplacesInvalidUtf8AsTheConstructorDoes)
{
    EXPECT_TRUE(toQVString(std::string("a\xFF"
                                       "b")) == QVString(L"a\uFFFDb"));
}

TEST(ToUtf8, CopiesTheString)
{
    EXPECT_EQ(toUtf8(QVString(L"\u00dc")), "\xC3\x9C");
    EXPECT_EQ(toUtf8(QVString()), "");
}

TEST(ToWide, CopiesTheString)
{
    EXPECT_EQ(toWide(QVString(L"\u00dc")), L"\u00dc");
    EXPECT_EQ(toWide(QVString()), L"");
}

TEST(StringOutput, IsUtf8OnANarrowStreamAndUnchangedOnAWideOne)
{
    std::ostringstream narrow;
    std::wostringstream wide;
    narrow << QVString(L"\u00dc");
    wide << QVString(L"\u00dc");
    EXPECT_EQ(narrow.str(), "\xC3\x9C");
    EXPECT_EQ(wide.str(), L"\u00dc");
}

TEST(IdentifierOutput, IsTheTextForm)
{
    std::ostringstream narrow;
    std::wostringstream wide;
    narrow << QVUUID(IdText);
    wide << QVUUID(IdText);
    EXPECT_EQ(narrow.str(), IdText);
    EXPECT_EQ(wide.str(), L"5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01");
}

TEST(StringHash, FindsEqualStrings)
{
    std::unordered_map<QVString, int> numbers{{QVString(L"a"), 1}, {QVString(), 2}};
    EXPECT_EQ(numbers.at(QVString("a")), 1);
    EXPECT_EQ(numbers.at(QVString("")), 2);
    EXPECT_EQ(numbers.count(QVString("b")), 0U);
}

TEST(IdentifierHash, FindsEqualIdentifiers)
{
    const std::unordered_set<QVUUID> ids{QVUUID(IdText)};
    EXPECT_EQ(ids.count(QVUUID("{5B1F7F0E-6C0E-4A53-9A39-0F6A3C1D2B01}")), 1U);
    EXPECT_EQ(ids.count(QVUUID()), 0U);
}

TEST(IdentifierHash, IsTheSameForAllNilIdentifiers)
{
    const QVUUID zero("00000000-0000-0000-0000-000000000000");
    const QVUUID unreadable("no identifier");
    ASSERT_TRUE(zero == unreadable);
    EXPECT_EQ(std::hash<QVUUID>()(zero), std::hash<QVUUID>()(unreadable));
}

} // namespace
} // namespace Quorvex::Velmora::TessaportAPI
