#include <memory>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVJsonParser.h>
#include <velmora/logging/QVKeyValueEvent.h>
#include <velmora/logging/QVLoggerBase.h>
#include <velmora/text/Unicode.h>
#include "tests/support/CapturedErrors.h"
#include "tests/support/CommaLocale.h"

namespace Quorvex::Velmora::Logging
{
namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using TestSupport::CapturedErrors;

template <class Put>
std::wstring recordOf(Put put, bool pretty = false)
{
    std::wostringstream stream;
    QVJsonLogTarget target(stream, pretty);
    target.beginRecord(L"ignored");
    put(target);
    target.endRecord(L"");
    return stream.str();
}

/// What the parser writes on standard error for the text.
std::string errorOf(const std::wstring& text)
{
    const CapturedErrors errors;
    std::wistringstream stream(text);
    const QVJsonParser parser(stream);
    return errors.text();
}

std::wstring valueIn(const std::wstring& document, const std::wstring& key)
{
    std::wistringstream stream(document);
    const QVJsonParser parser(stream);
    std::wstring text = L"(none)";
    parser.getString(key, text);
    return text;
}

std::wstring wide(std::initializer_list<unsigned> codes)
{
    std::wstring text;
    for (const unsigned code : codes)
        Common::Unicode::appendWide(text, code);
    return text;
}

TEST(JsonLogTarget, WritesEveryValueAsAString)
{
    const auto record = recordOf([](auto& target) {
        target.putUInt32(L"n", 7);
        target.putDouble(L"d", 3.14);
        target.putString(L"s", L"x");
        target.putBool(L"b", true);
        target.putUInt64(L"u", 18446744073709551615U);
    });
    EXPECT_EQ(record,
        L"{\"n\":\"7\",\"d\":\"3.1400000000000001\",\"s\":\"x\",\"b\":\"true\",\"u\":\"18446744073709551615\"}\n");
}

TEST(JsonLogTarget, WritesAnEmptyRecordAsAnEmptyObject)
{
    EXPECT_EQ(recordOf([](auto&) {}), L"{}\n");
}

TEST(JsonLogTarget, NestsDottedKeys)
{
    const auto record = recordOf([](auto& target) {
        target.putString(L"a.b", L"1");
        target.putString(L"c", L"2");
        target.putString(L"a.d", L"3");
    });
    EXPECT_EQ(record, L"{\"a\":{\"b\":\"1\",\"d\":\"3\"},\"c\":\"2\"}\n");
}

TEST(JsonLogTarget, KeepsTheLastValueOfAKeyPutTwice)
{
    const auto record = recordOf([](auto& target) {
        target.putString(L"a", L"1");
        target.putString(L"b", L"2");
        target.putString(L"a", L"3");
    });
    EXPECT_EQ(record, L"{\"a\":\"3\",\"b\":\"2\"}\n");
}

TEST(JsonLogTarget, IndentsAPrettyRecordByFourSpacesALevel)
{
    const auto record = recordOf([](auto& target) { target.putString(L"a.b", L"1"); }, true);
    EXPECT_EQ(record, L"{\n    \"a\": {\n        \"b\": \"1\"\n    }\n}\n");
}

TEST(JsonLogTarget, EscapesSpecialCharacters)
{
    const auto record = recordOf([](auto& target) { target.putString(L"k\"", L"\"\\/\b\f\n\r\t\x01\x7F\xE9\x4E2D"); });
    EXPECT_EQ(record, L"{\"k\\\"\":\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u0001\x7F\xE9\\u4E2D\"}\n");
}

TEST(JsonLogTarget, WritesCharactersBeyondTheBasicPlaneAsPairs)
{
    const auto record = recordOf([](auto& target) { target.putString(wide({0x10000}), wide({'a', 0x1F600})); });
    EXPECT_EQ(record, L"{\"\\uD800\\uDC00\":\"a\\uD83D\\uDE00\"}\n");
}

TEST(JsonLogTarget, WritesAKeyBeyondTheBasicPlaneAsAPairWhateverItsValue)
{
    EXPECT_EQ(recordOf([](auto& target) { target.putString(wide({0x1F600}), L"plain"); }),
        L"{\"\\uD83D\\uDE00\":\"plain\"}\n");
    EXPECT_EQ(recordOf([](auto& target) {
        target.putUInt32(wide({'k', 0x1F600}), 7);
    }),
        L"{\"k\\uD83D\\uDE00\":\"7\"}\n");
}

TEST(JsonLogTarget, RefusesARootWithAValueAndKeysAfterARecordWithAnEmptyLevel)
{
    std::wostringstream stream;
    QVJsonLogTarget target(stream, false);
    target.beginRecord(L"");
    target.putString(L".a", L"1");
    target.endRecord(L"");
    EXPECT_EQ(stream.str(), L"{\"\":{\"a\":\"1\"}}\n");
    target.beginRecord(L"");
    target.putString(L"", L"2");
    EXPECT_THROW(target.endRecord(L""), std::runtime_error);
    EXPECT_EQ(stream.str(), L"{\"\":{\"a\":\"1\"}}\n");
}

TEST(JsonLogTarget, WritesTheSameObjectTwiceWhenEndedTwice)
{
    std::wostringstream stream;
    QVJsonLogTarget target(stream, false);
    target.beginRecord(L"");
    target.putUInt32(L"n", 1);
    target.endRecord(L"");
    target.endRecord(L"");
    EXPECT_EQ(stream.str(), L"{\"n\":\"1\"}\n{\"n\":\"1\"}\n");
}

TEST(JsonLogTarget, ForgetsThePreviousRecord)
{
    std::wostringstream stream;
    QVJsonLogTarget target(stream, false);
    target.beginRecord(L"");
    target.putUInt32(L"n", 1);
    target.beginRecord(L"");
    target.endRecord(L"");
    EXPECT_EQ(stream.str(), L"{}\n");
}

TEST(JsonLogTarget, RefusesAKeyWithBothAValueAndKeysBelowIt)
{
    std::wostringstream stream;
    QVJsonLogTarget target(stream, false);
    target.beginRecord(L"");
    target.putString(L"a", L"1");
    target.putString(L"a.b", L"2");
    try {
        target.endRecord(L"");
        FAIL() << "it was written";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), EndsWith("ptree contains data that cannot be represented in JSON format"));
    }
    EXPECT_EQ(stream.str(), L"");
}

TEST(JsonLogTarget, ThrowsIfTheStreamIsNotGood)
{
    std::wostringstream stream;
    QVJsonLogTarget target(stream, false);
    target.beginRecord(L"");
    stream.setstate(std::ios::badbit);
    try {
        target.endRecord(L"");
        FAIL() << "it was written";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), EndsWith("write error"));
    }
}

TEST(JsonLogTarget, LeavesTheStreamOpenAndUntouched)
{
    std::wostringstream stream;
    {
        QVJsonLogTarget target(stream, false);
        target.prepare();
        target.finish();
    }
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.str(), L"");
}

TEST(JsonLogTarget, WritesTheSameUnderAForeignLocale)
{
    const TestSupport::CommaLocale locale;
    const auto record = recordOf([](auto& target) {
        target.putUInt32(L"n", 1234567);
        target.putDouble(L"d", 1234.5);
        target.putBool(L"b", false);
    });
    EXPECT_EQ(record, L"{\"n\":\"1234567\",\"d\":\"1234.5\",\"b\":\"false\"}\n");
}

TEST(JsonLog, HasTheTwoMembersOfAnEventWithoutValues)
{
    struct PlainEvent : QVLoggableEvent {
        [[nodiscard]] std::wstring name() const override { return L"plain"; }
    };
    std::wostringstream stream;
    QVLoggerBase logger(std::make_unique<QVJsonLogTarget>(stream, false));
    logger.log(std::make_unique<PlainEvent>());
    logger.flush();
    EXPECT_TRUE(std::regex_match(stream.str(),
        std::wregex(
            L"\\{\"timestamp\":\"\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(\\.\\d{6})?\",\"threadId\":\"0\"\\}\n")))
        << "the record has another form";
}

TEST(JsonLog, ReadsBackEveryStringThatItWrote)
{
    for (const auto& text : {std::wstring(L"plain"), std::wstring(L"\"\\/\b\f\n\r\t\x01 \xE9\xFF\x100\xFFFF"),
             wide({0x10000, 0x1F600, 0x10FFFF}), std::wstring(L"a\0b", 3)}) {
        QVKeyValueEvent event(L"e");
        event.putString(L"k", text);
        std::wostringstream stream;
        QVJsonLogTarget target(stream, false);
        target.beginRecord(L"");
        event.writeTo(target);
        target.endRecord(L"");
        EXPECT_EQ(valueIn(stream.str(), L"k"), text);
    }
}

TEST(JsonLog, ReadsBackAKeyOfMoreThanAThousandLevels)
{
    std::wstring key = L"k";
    for (int i = 1; i < 1005; ++i)
        key += L".k";
    const auto record = recordOf([&key](auto& target) { target.putString(key, L"deep"); });
    EXPECT_EQ(errorOf(record), "");
    EXPECT_EQ(valueIn(record, key), L"deep");
}

TEST(JsonParser, StoresNumbersAsTheirText)
{
    for (const wchar_t* const document : {L"{\"n\":\"7\"}", L"{\"n\":7}"}) {
        std::wistringstream stream(document);
        const QVJsonParser parser(stream);
        std::uint32_t number = 0;
        std::uint64_t large = 0;
        double fraction = 0;
        EXPECT_TRUE(parser.getUInt32(L"n", number));
        EXPECT_TRUE(parser.getUInt64(L"n", large));
        EXPECT_TRUE(parser.getDouble(L"n", fraction));
        EXPECT_EQ(number, 7U);
        EXPECT_EQ(large, 7U);
        EXPECT_EQ(fraction, 7.0);
        EXPECT_EQ(valueIn(document, L"n"), L"7");
    }
}

TEST(JsonParser, FollowsKeyPaths)
{
    EXPECT_EQ(valueIn(L"{\"a\":{\"b\":\"x\"}}", L"a.b"), L"x");
    EXPECT_EQ(valueIn(L"{\"a\":{\"b\":\"x\"}}", L"a.c"), L"(none)");
    EXPECT_EQ(valueIn(L"{\"a\":{\"b\":\"x\"}}", L"a"), L"");
}

TEST(JsonParser, ReadsBoolsFromWordsAndDigits)
{
    std::wistringstream stream(L"{\"a\":\"true\",\"b\":\"false\",\"c\":\"1\",\"d\":\"0\",\"e\":true,\"f\":\"yes\"}");
    const QVJsonParser parser(stream);
    bool flag = false;
    EXPECT_TRUE(parser.getBool(L"a", flag) && flag);
    EXPECT_TRUE(parser.getBool(L"b", flag) && !flag);
    EXPECT_TRUE(parser.getBool(L"c", flag) && flag);
    EXPECT_TRUE(parser.getBool(L"d", flag) && !flag);
    EXPECT_TRUE(parser.getBool(L"e", flag) && flag);
    EXPECT_FALSE(parser.getBool(L"f", flag));
    EXPECT_TRUE(flag);
    EXPECT_FALSE(parser.queryFlag());
}

TEST(JsonParser, ReturnsTheValueOfADocumentThatIsASingleValue)
{
    std::wistringstream stream(L"12");
    const QVJsonParser parser(stream);
    std::uint32_t number = 0;
    std::uint64_t large = 0;
    double fraction = 0;
    bool flag = true;
    std::wstring text;
    EXPECT_TRUE(parser.valueAsUInt32(number));
    EXPECT_TRUE(parser.valueAsUInt64(large));
    EXPECT_TRUE(parser.valueAsDouble(fraction));
    EXPECT_FALSE(parser.valueAsBool(flag));
    EXPECT_TRUE(parser.valueAsString(text));
    EXPECT_EQ(number, 12U);
    EXPECT_EQ(large, 12U);
    EXPECT_EQ(fraction, 12.0);
    EXPECT_TRUE(flag);
    EXPECT_EQ(text, L"12");
}

TEST(JsonParser, ReturnsFalseForTheOwnValueOfAnObject)
{
    std::wistringstream stream(L"{\"a\":\"1\"}");
    const QVJsonParser parser(stream);
    std::uint32_t number = 5;
    std::wstring text = L"previous";
    EXPECT_FALSE(parser.valueAsUInt32(number));
    EXPECT_TRUE(parser.valueAsString(text));
    EXPECT_EQ(number, 5U);
    EXPECT_EQ(text, L"");
}

TEST(JsonParser, ReportsAnEmptyStream)
{
    EXPECT_EQ(errorOf(L""),
        "QVJsonParser: json_parser_error while reading given input stream (input is empty): expected value\n");
}

TEST(JsonParser, ReportsWhatIsWrongInOneLine)
{
    EXPECT_EQ(errorOf(L"x{}"), "QVJsonParser: json_parser_error while reading given input stream: expected value\n");
}

TEST(JsonParser, SaysThatTheInputIsEmptyIfNothingIsLeft)
{
    EXPECT_EQ(errorOf(L"{\"a\":"),
        "QVJsonParser: json_parser_error while reading given input stream (input is empty): expected value\n");
}

TEST(JsonParser, KeepsNothingOfTwoRecords)
{
    const std::wstring twoLines = L"{\"n\":\"1\"}\n{\"n\":\"2\"}\n";
    EXPECT_EQ(
        errorOf(twoLines), "QVJsonParser: json_parser_error while reading given input stream: garbage after data\n");
    const CapturedErrors quiet;
    EXPECT_EQ(valueIn(twoLines, L"n"), L"(none)");
}

TEST(JsonParser, IsEmptyAfterAnError)
{
    const CapturedErrors quiet;
    std::wistringstream stream(L"{\"n\":\"7\"");
    const QVJsonParser parser(stream);
    std::uint32_t number = 5;
    std::wstring text = L"previous";
    EXPECT_FALSE(parser.getUInt32(L"n", number));
    EXPECT_FALSE(parser.valueAsUInt32(number));
    EXPECT_TRUE(parser.valueAsString(text));
    EXPECT_EQ(number, 5U);
    EXPECT_EQ(text, L"");
}

TEST(JsonParser, TreatsAStreamWithoutABufferAsEmpty)
{
    const CapturedErrors errors;
    std::wistream stream(nullptr);
    const QVJsonParser parser(stream);
    EXPECT_THAT(errors.text(), HasSubstr(" (input is empty): "));
}

std::wstring nested(const std::wstring& open, const std::wstring& close, int depth)
{
    std::wstring text;
    for (int i = 0; i < depth; ++i)
        text += open;
    text += L"\"x\"";
    for (int i = 0; i < depth; ++i)
        text += close;
    return text;
}

TEST(JsonParser, ReadsAThousandLevelsAndNoMore)
{
    EXPECT_EQ(errorOf(nested(L"[", L"]", 1000)), "");
    EXPECT_EQ(errorOf(nested(L"{\"k\":", L"}", 1000)), "");
    EXPECT_THAT(errorOf(nested(L"[", L"]", 1001)), EndsWith(": nesting too deep\n"));
    EXPECT_THAT(errorOf(nested(L"{\"k\":", L"}", 1001)), EndsWith(": nesting too deep\n"));
}

TEST(JsonParser, ReportsAMillionLevels)
{
    EXPECT_EQ(errorOf(nested(L"[", L"]", 1'000'000)),
        "QVJsonParser: json_parser_error while reading given input stream: nesting too deep\n");
    EXPECT_THAT(errorOf(nested(L"{\"k\":", L"}", 1'000'000)), EndsWith(": nesting too deep\n"));
}

TEST(JsonParser, IgnoresBracketsInStrings)
{
    const std::wstring brackets(5000, L'[');
    EXPECT_EQ(valueIn(L"{\"k\":\"\\\"" + brackets + L"\\\\\"}", L"k"), L"\"" + brackets + L"\\");
    EXPECT_EQ(errorOf(L"[" + nested(L"[", L"]", 999) + L"," + nested(L"[", L"]", 999) + L"]"), "");
}

// "\\" is a string of one backslash: its last quotation mark is not escaped, so the brackets after it count.
TEST(JsonParser, ReportsNestingAfterAStringThatEndsWithABackslash)
{
    EXPECT_THAT(errorOf(L"[\"\\\\\", " + nested(L"[", L"]", 1000) + L"]"), EndsWith(": nesting too deep\n"));
    EXPECT_THAT(errorOf(L"[\"\\\\\", " + std::wstring(1'000'000, L'[')), EndsWith(": nesting too deep\n"));
}

TEST(JsonParser, LetsOtherExceptionsPropagate)
{
    struct Broken : std::wstreambuf {
        int_type underflow() override { throw std::domain_error("broken"); }
    } buffer;
    std::wistream stream(&buffer);
    EXPECT_THROW(QVJsonParser parser(stream), std::domain_error);
}

} // namespace
} // namespace Quorvex::Velmora::Logging
