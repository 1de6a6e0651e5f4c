#include "velmora/api/QVString.h"

#include <cstring>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/api/TextAccess.h>
#include <velmora/text/Unicode.h>

using namespace Quorvex::Velmora::Common;

static_assert(sizeof(QVString) == sizeof(void*), "hosts hold a text by a single handle");
static_assert(std::is_nothrow_copy_constructible_v<QVString> && std::is_nothrow_move_constructible_v<QVString>);
static_assert(std::is_nothrow_copy_assignable_v<QVString> && std::is_nothrow_move_assignable_v<QVString>);
static_assert(std::is_convertible_v<const char*, QVString> && std::is_convertible_v<const wchar_t*, QVString>);

namespace
{

// Latin, Chinese, and an emoji, which is beyond the basic plane.
const std::wstring Sample = L"D\xE9rive \x4E2D " + Unicode::fromUtf8("\xF0\x9F\x98\x80");
const std::string SampleUtf8 = "D\xC3\xA9rive \xE4\xB8\xAD \xF0\x9F\x98\x80";

} // namespace

TEST(QVString, IsEmptyByDefault)
{
    const QVString text;

    EXPECT_TRUE(text.Empty());
    EXPECT_STREQ(text.w_str(), L"");
    EXPECT_STREQ(text.c_str(), "");
}

TEST(QVString, ReadsNullPointersAsTheEmptyString)
{
    QVString assigned(L"text");

    assigned = static_cast<const wchar_t*>(nullptr);

    EXPECT_TRUE(assigned.Empty());
    EXPECT_TRUE(QVString(static_cast<const char*>(nullptr)).Empty());
    EXPECT_STREQ(QVString(static_cast<const wchar_t*>(nullptr)).w_str(), L"");
}

TEST(QVString, ReadsNarrowStringsAsUtf8) { EXPECT_EQ(QVString(SampleUtf8.c_str()).w_str(), Sample); }

TEST(QVString, ReturnsNarrowStringsAsUtf8) { EXPECT_EQ(QVString(Sample.c_str()).c_str(), SampleUtf8); }

TEST(QVString, ReplacesBytesThatAreNotUtf8) { EXPECT_STREQ(QVString("a\xFF\xC3z").w_str(), L"a\xFFFD\xFFFDz"); }

TEST(QVString, KeepsAnUnpairedSurrogateAndConvertsItToAReplacementCharacter)
{
    const std::wstring unpaired{L'a', static_cast<wchar_t>(0xD800), L'b'};
    const QVString text(unpaired.c_str());

    EXPECT_EQ(text.w_str(), unpaired);
    EXPECT_STREQ(text.c_str(), "a\xEF\xBF\xBD"
                               "b");
}

TEST(QVString, CopiesBehaveAsDeepCopies)
{
    QVString original(L"first");
    const QVString copy(original);

    original = L"second";

    EXPECT_STREQ(copy.w_str(), L"first");
    EXPECT_STREQ(original.w_str(), L"second");
}

TEST(QVString, OutlivesTheStringItWasCopiedFrom)
{
    QVString copy;
    {
        const QVString original(L"a text that is too long for any small buffer");
        copy = original;
    }
    EXPECT_STREQ(copy.w_str(), L"a text that is too long for any small buffer");
}

TEST(QVString, AssignmentReturnsItsTarget)
{
    const QVString source(L"source");
    QVString target;

    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(&(target = L"wide"), &target);
    EXPECT_STREQ(target.w_str(), L"wide");
}

TEST(QVString, IsUnchangedBySelfAssignment)
{
    QVString text(L"text");
    QVString& same = text;

    text = same;
    text = text.w_str();
    text = std::move(same);

    EXPECT_STREQ(text.w_str(), L"text");
}

TEST(QVString, IsEmptyAfterAMove)
{
    QVString source(L"text");

    const QVString target(std::move(source));

    EXPECT_STREQ(target.w_str(), L"text");
    EXPECT_TRUE(source.Empty());
}

TEST(QVString, ComparesExactlyAndCaseSensitively)
{
    EXPECT_TRUE(QVString(L"a") == QVString("a"));
    EXPECT_TRUE(QVString() == QVString(L""));
    EXPECT_TRUE(QVString(L"a") != QVString(L"A"));
    EXPECT_TRUE(QVString(L"a") != QVString(L"ab"));
}

TEST(QVString, OrdersByCharacterCode)
{
    EXPECT_TRUE(QVString() < QVString(L"A"));
    EXPECT_TRUE(QVString(L"Z") < QVString(L"a"));
    EXPECT_TRUE(QVString(L"a") < QVString(L"ab"));
    EXPECT_FALSE(QVString(L"a") < QVString(L"a"));
}

TEST(QVString, KeepsBothFormsInPlaceWhileItIsUnchanged)
{
    const QVString text(Sample.c_str());
    const char* const narrow = text.c_str();
    const wchar_t* const wide = text.w_str();

    {
        const QVString copy(text); // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(copy.c_str(), SampleUtf8);
    }

    EXPECT_EQ(text.c_str(), narrow);
    EXPECT_EQ(text.w_str(), wide);
    EXPECT_EQ(narrow, SampleUtf8);
}

TEST(QVString, HoldsALongString)
{
    const std::wstring million(1'000'000, L'x');

    const QVString text(million.c_str());

    EXPECT_EQ(text.w_str(), million);
    EXPECT_EQ(std::strlen(text.c_str()), million.size());
}

TEST(TextAccess, MakesAStringThatEndsAtItsFirstZeroCharacter)
{
    const QVString text = TextAccess::make(std::wstring_view(L"ab\0cd", 5));

    EXPECT_STREQ(text.w_str(), L"ab");
    EXPECT_EQ(TextAccess::view(text).size(), 2U);
    EXPECT_TRUE(TextAccess::make(std::wstring_view(L"\0a", 2)).Empty());
}

TEST(TextAccess, AssignsStringsThatLiveIndependentlyOfEachOther)
{
    QVString first(L"former");
    QVString second;
    QVString third(L"former");
    const TextAssignment assignments[] = {
        {&first, u"one"}, {&second, std::u16string_view(u"two\0cut", 7)}, {&third, u""}};

    TextAccess::assign(assignments, 3);
    const QVString copy(second);
    first = L"other";
    second = QVString();

    EXPECT_STREQ(first.w_str(), L"other");
    EXPECT_STREQ(copy.w_str(), L"two");
    EXPECT_TRUE(third.Empty());
}

TEST(TextAccess, AcceptsAnEmptyListOfAssignments)
{
    QVString target(L"former");
    const TextAssignment assignment{&target, {}};

    TextAccess::assign(&assignment, 1);
    TextAccess::assign(nullptr, 0);

    EXPECT_TRUE(target.Empty());
}
