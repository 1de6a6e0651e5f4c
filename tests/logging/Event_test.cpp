#include <cstdint>
#include <limits>
#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/logging/QVKeyValueEvent.h>
#include "tests/logging/RecordingFormatter.h"
#include "tests/support/CommaLocale.h"

namespace Quorvex::Velmora::Logging
{
namespace
{

using testing::ElementsAre;
using TestSupport::CommaLocale;

struct PlainEvent : QVLoggableEvent {
    [[nodiscard]] std::wstring name() const override { return L"plain"; }
};

std::wstring textOf(const QVKeyValueEvent& event, const std::wstring& key)
{
    std::wstring text = L"(none)";
    event.getString(key, text);
    return text;
}

std::wstring textOfDouble(double value)
{
    QVKeyValueEvent event(L"e");
    event.putDouble(L"d", value);
    return textOf(event, L"d");
}

QVKeyValueEvent eventWith(const std::wstring& text)
{
    QVKeyValueEvent event(L"e");
    event.putString(L"v", text);
    return event;
}

/// "k.k.k" for three levels.
std::wstring keyOfLevels(int count)
{
    std::wstring key = L"k";
    for (int i = 1; i < count; ++i)
        key += L".k";
    return key;
}

TEST(LoggableEvent, WritesItsTimeAndTheThreadIdZero)
{
    RecordingFormatter formatter;
    const PlainEvent event;
    event.writeTo(formatter);
    ASSERT_EQ(formatter.calls.size(), 2U);
    EXPECT_TRUE(std::regex_match(
        formatter.calls[0], std::wregex(L"timestamp=\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(\\.\\d{6})?")));
    EXPECT_EQ(formatter.calls[1], L"threadId=0");
    EXPECT_THAT(event.keys(), ElementsAre(L"timestamp", L"threadId"));
}

TEST(LoggableEvent, KeepsItsTimeWhenCopied)
{
    RecordingFormatter ofOriginal;
    RecordingFormatter ofCopy;
    const PlainEvent original;
    PlainEvent assigned;
    const PlainEvent copy(original);
    assigned = copy;
    original.writeTo(ofOriginal);
    assigned.writeTo(ofCopy);
    EXPECT_EQ(ofOriginal.calls, ofCopy.calls);
}

TEST(LoggableEvent, KeepsItsFormatUnderAForeignLocale)
{
    const CommaLocale locale;
    RecordingFormatter formatter;
    PlainEvent().writeTo(formatter);
    EXPECT_TRUE(std::regex_match(
        formatter.calls[0], std::wregex(L"timestamp=\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(\\.\\d{6})?",
                                std::regex_constants::ECMAScript)));
}

TEST(KeyValueEvent, ReturnsItsNameAndItsKeysInOrder)
{
    QVKeyValueEvent event(L"name");
    event.putUInt32(L"z", 1);
    event.putString(L"a", L"x");
    event.putBool(L"m.n", true);
    event.putUInt32(L"z", 2);
    EXPECT_EQ(event.name(), L"name");
    EXPECT_THAT(event.keys(), ElementsAre(L"z", L"a", L"m"));
}

TEST(KeyValueEvent, WritesItsOwnValuesOnly)
{
    QVKeyValueEvent event(L"e");
    event.putUInt32(L"n", 7);
    event.putString(L"s", L"x");
    RecordingFormatter formatter;
    event.writeTo(formatter);
    EXPECT_THAT(formatter.calls, ElementsAre(L"n=7", L"s=x"));
}

TEST(KeyValueEvent, WritesTheTopLevelKeyOfANestedValueWithAnEmptyString)
{
    QVKeyValueEvent event(L"e");
    event.putString(L"a.b", L"x");
    RecordingFormatter formatter;
    event.writeTo(formatter);
    EXPECT_THAT(formatter.calls, ElementsAre(L"a="));
    EXPECT_EQ(textOf(event, L"a.b"), L"x");
    EXPECT_EQ(textOf(event, L"a"), L"");
}

TEST(KeyValueEvent, ReturnsANumberAsAString)
{
    QVKeyValueEvent event(L"e");
    event.putUInt32(L"n", 7);
    EXPECT_EQ(textOf(event, L"n"), L"7");
}

TEST(KeyValueEvent, ReturnsFalseForTextThatDoesNotConvert)
{
    const auto event = eventWith(L"abc");
    std::uint32_t number = 5;
    std::uint64_t large = 6;
    double fraction = 7;
    bool flag = true;
    EXPECT_FALSE(event.getUInt32(L"v", number));
    EXPECT_FALSE(event.getUInt64(L"v", large));
    EXPECT_FALSE(event.getDouble(L"v", fraction));
    EXPECT_FALSE(event.getBool(L"v", flag));
    EXPECT_EQ(number, 5U);
    EXPECT_EQ(large, 6U);
    EXPECT_EQ(fraction, 7.0);
    EXPECT_TRUE(flag);
}

TEST(KeyValueEvent, ConvertsTheCompleteTextOrNothing)
{
    std::uint32_t number = 5;
    EXPECT_FALSE(eventWith(L"7x").getUInt32(L"v", number));
    EXPECT_FALSE(eventWith(L"").getUInt32(L"v", number));
    EXPECT_FALSE(eventWith(L"7.5").getUInt32(L"v", number));
    EXPECT_FALSE(eventWith(L"4294967296").getUInt32(L"v", number));
    EXPECT_EQ(number, 5U);
    EXPECT_TRUE(eventWith(L"4294967295").getUInt32(L"v", number));
    EXPECT_EQ(number, 4294967295U);
}

TEST(KeyValueEvent, ReturnsFalseForAMissingKey)
{
    const auto event = eventWith(L"x");
    std::wstring text = L"previous";
    std::uint32_t number = 5;
    EXPECT_FALSE(event.getString(L"other", text));
    EXPECT_FALSE(event.getString(L"v.below", text));
    EXPECT_FALSE(event.getUInt32(L"other", number));
    EXPECT_EQ(text, L"previous");
    EXPECT_EQ(number, 5U);
}

TEST(KeyValueEvent, StoresBoolsAsWordsAndReadsDigitsToo)
{
    QVKeyValueEvent event(L"e");
    event.putBool(L"f", true);
    event.putBool(L"g", false);
    EXPECT_EQ(textOf(event, L"f"), L"true");
    EXPECT_EQ(textOf(event, L"g"), L"false");
    bool flag = false;
    EXPECT_TRUE(event.getBool(L"f", flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(event.getBool(L"g", flag));
    EXPECT_FALSE(flag);
    EXPECT_TRUE(eventWith(L"1").getBool(L"v", flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(eventWith(L"0").getBool(L"v", flag));
    EXPECT_FALSE(flag);
    EXPECT_FALSE(eventWith(L"2").getBool(L"v", flag));
    EXPECT_FALSE(eventWith(L"TRUE").getBool(L"v", flag));
}

TEST(KeyValueEvent, StoresDoublesWithSeventeenDigits)
{
    EXPECT_EQ(textOfDouble(3.14), L"3.1400000000000001");
    EXPECT_EQ(textOfDouble(2.0), L"2");
    EXPECT_EQ(textOfDouble(1e300), L"1.0000000000000001e+300");
    for (const double value : {3.14, -0.1, 1e-308, std::numeric_limits<double>::max()}) {
        QVKeyValueEvent event(L"e");
        event.putDouble(L"d", value);
        double read = 0;
        EXPECT_TRUE(event.getDouble(L"d", read));
        EXPECT_EQ(read, value);
    }
}

TEST(KeyValueEvent, StoresTheLargestNumber)
{
    QVKeyValueEvent event(L"e");
    event.putUInt64(L"n", std::numeric_limits<std::uint64_t>::max());
    std::uint64_t read = 0;
    EXPECT_EQ(textOf(event, L"n"), L"18446744073709551615");
    EXPECT_TRUE(event.getUInt64(L"n", read));
    EXPECT_EQ(read, std::numeric_limits<std::uint64_t>::max());
}

TEST(KeyValueEvent, ConvertsTheSameWayUnderAForeignLocale)
{
    const CommaLocale locale;
    QVKeyValueEvent event(L"e");
    event.putUInt32(L"n", 1234567);
    event.putDouble(L"d", 1234.5);
    event.putBool(L"b", true);
    EXPECT_EQ(textOf(event, L"n"), L"1234567");
    EXPECT_EQ(textOf(event, L"d"), L"1234.5");
    EXPECT_EQ(textOf(event, L"b"), L"true");
    std::uint32_t number = 0;
    double fraction = 0;
    bool flag = false;
    EXPECT_TRUE(event.getUInt32(L"n", number));
    EXPECT_TRUE(event.getDouble(L"d", fraction));
    EXPECT_TRUE(event.getBool(L"b", flag));
    EXPECT_EQ(number, 1234567U);
    EXPECT_EQ(fraction, 1234.5);
    EXPECT_TRUE(flag);
}

TEST(KeyValueEvent, ReplacesTheValueOfAKeyPutAgain)
{
    QVKeyValueEvent event(L"e");
    event.putString(L"a.b", L"one");
    event.putUInt32(L"a.b", 2);
    event.putString(L"a.c", L"three");
    EXPECT_EQ(textOf(event, L"a.b"), L"2");
    EXPECT_EQ(textOf(event, L"a.c"), L"three");
    EXPECT_THAT(event.keys(), ElementsAre(L"a"));
}

TEST(KeyValueEvent, FindsValuesUnderUnusualKeys)
{
    for (const wchar_t* const key : {L".", L"a.", L".a", L"a..b", L"..", L"\x4E2D \"/"}) {
        QVKeyValueEvent event(L"e");
        event.putString(key, L"x");
        EXPECT_EQ(textOf(event, key), L"x") << key;
    }
}

TEST(KeyValueEvent, FindsTheValueOfAKeyWithAThousandLevels)
{
    QVKeyValueEvent event(L"e");
    const std::wstring key = keyOfLevels(1000);
    event.putString(key, L"deep");
    EXPECT_EQ(textOf(event, key), L"deep");
    EXPECT_EQ(textOf(event, keyOfLevels(999)), L"");
}

TEST(KeyValueEvent, TreatsSeparatorsAfterTheThousandthLevelAsPartOfItsName)
{
    QVKeyValueEvent event(L"e");
    const std::wstring key = keyOfLevels(1000);
    event.putString(key, L"of the thousandth level");
    event.putUInt32(key + L".k", 1);
    event.putUInt32(key + L".k.k", 2);
    EXPECT_EQ(textOf(event, key), L"of the thousandth level");
    EXPECT_EQ(textOf(event, key + L".k"), L"1");
    EXPECT_EQ(textOf(event, key + L".k.k"), L"2");

    const std::wstring million(1'000'000, L'.');
    event.putUInt32(million, 3);
    EXPECT_EQ(textOf(event, million), L"3");
    EXPECT_THAT(event.keys(), ElementsAre(L"k", L""));
}

TEST(KeyValueEvent, CountsNoLevelForASeparatorAtTheEndOfAKey)
{
    QVKeyValueEvent event(L"e");
    event.putUInt32(L"a.", 1);
    EXPECT_EQ(textOf(event, L"a"), L"1");
    event.putUInt32(keyOfLevels(1000) + L".", 2);
    EXPECT_EQ(textOf(event, keyOfLevels(1000)), L"2");
}

TEST(KeyValueEvent, FindsValuesAmongManyKeys)
{
    constexpr std::uint32_t Count = 20'000;
    QVKeyValueEvent event(L"e");
    for (std::uint32_t i = 0; i < Count; ++i)
        event.putUInt32(std::to_wstring((i * 7919) % Count), i);
    for (std::uint32_t i = 0; i < Count; ++i)
        event.putUInt32(L"nested." + std::to_wstring(i), i + 1);

    const QVKeyValueEvent copy(event);
    for (std::uint32_t i = 0; i < Count; ++i) {
        ASSERT_EQ(textOf(copy, std::to_wstring((i * 7919) % Count)), std::to_wstring(i));
        ASSERT_EQ(textOf(copy, L"nested." + std::to_wstring(i)), std::to_wstring(i + 1));
    }
    const auto keys = copy.keys();
    ASSERT_EQ(keys.size(), Count + 1U);
    EXPECT_EQ(keys[1], L"7919");
    EXPECT_EQ(keys.back(), L"nested");
    EXPECT_EQ(textOf(copy, std::to_wstring(Count)), L"(none)");
}

TEST(KeyValueEvent, CopiesItsValues)
{
    QVKeyValueEvent original(L"e");
    original.putUInt32(L"n", 1);
    QVKeyValueEvent copy(original);
    QVKeyValueEvent assigned(L"other");
    assigned = original;
    original.putUInt32(L"n", 2);
    EXPECT_EQ(textOf(copy, L"n"), L"1");
    EXPECT_EQ(textOf(assigned, L"n"), L"1");
    EXPECT_EQ(assigned.name(), L"e");
}

TEST(KeyValueEvent, IsUnchangedByPrepareAndFinish)
{
    QVKeyValueEvent event(L"e");
    event.prepare();
    event.finish();
    EXPECT_FALSE(event.queryFlag());
    EXPECT_TRUE(event.keys().empty());
}

} // namespace
} // namespace Quorvex::Velmora::Logging
