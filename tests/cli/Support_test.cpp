// Commands for logs, checksums and messages.
#include <fstream>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

class Log : public ToolTest
{
protected:
    std::string log(const std::string& content)
    {
        writeFile(folder / "app.log", content);
        return text(folder / "app.log");
    }
};

constexpr const char* Records = R"({"timestamp":"2024-05-06T07:08:09.123456","threadId":"0","user":"anna","size":"7"}
{"timestamp":"2024-05-06T07:08:10.000000","request":{"path":"\/drives","took":"1.5"},"text":"two words"}
{"user":"\u041e\u043b\u0435\u043d\u0430","note":"\ud834\udd1e"}
)";

TEST_F(Log, IsShownAsReadableText)
{
    EXPECT_THAT(linesOf(expectOk({"log", "cat", log(Records)})),
        ElementsAre("2024-05-06T07:08:09.123456 threadId=0 user=anna size=7",
            "2024-05-06T07:08:10.000000 request.path=/drives request.took=1.5 text=\"two words\"",
            "user=Олена note=𝄞"));
}

TEST_F(Log, IsShownAsAnArray)
{
    const auto records = expectJson({"log", "cat", log(Records)});

    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[1]["request"]["path"], "/drives");
}

TEST_F(Log, IsSearchedForAValueOfAKey)
{
    const std::string file = log(Records);

    EXPECT_THAT(linesOf(expectOk({"log", "grep", "user=anna", file})), testing::SizeIs(1));
    EXPECT_THAT(expectOk({"log", "grep", "request.path=/drives", file}), HasSubstr("two words"));
    EXPECT_THAT(expectOk({"log", "grep", "user=Олена", file}), HasSubstr("𝄞"));
    EXPECT_EQ(expectJson({"log", "grep", "note=𝄞", file}).size(), 1U);
    EXPECT_EQ(run({"log", "grep", "user=ann", file}).exitCode, 3);
    EXPECT_EQ(run({"log", "grep", "size=anna", file}).exitCode, 3);
    EXPECT_EQ(run({"log", "grep", "anna", file}).exitCode, 2);
    EXPECT_EQ(run({"log", "grep", "=anna", file}).exitCode, 2);
}

TEST_F(Log, IsSearchedForDecodedValues)
{
    const std::string file = log("{\"user\":\"\\u0061nna\"}\n{\"\\u0075ser\":\"a\\u006E\\u006ea\"}\n"
                                 "{\"user\":\"\\u0062en\"}\n{\"path\":\"\\/a\\u002fb\"}\n");

    EXPECT_EQ(linesOf(expectOk({"log", "grep", "user=anna", file})).size(), 2U);
    EXPECT_EQ(linesOf(expectOk({"log", "grep", "path=/a/b", file})).size(), 1U);
}

TEST_F(Log, WithADamagedLineShowsTheOthers)
{
    const std::string text(Records);
    const ChildResult finished = run({"log", "cat", log(text.substr(0, text.size() - 10))});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(linesOf(finished.output).size(), 2U);
    EXPECT_THAT(finished.errors, HasSubstr("line 3: no log record"));
}

TEST_F(Log, AnyOtherKindOfFileIsRejectedBriefly)
{
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "no json\n";

    const ChildResult finished = run({"log", "cat", "--json", log(text)});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(finished.output), nlohmann::json::array());
    EXPECT_LT(linesOf(finished.errors).size(), 15U);
    EXPECT_THAT(finished.errors, HasSubstr("1000 lines left out"));
}

TEST_F(Log, LineThatIsNestedTooDeeplyIsRejected)
{
    const std::string deep = "{\"a\":" + std::string(1000000, '[') + std::string(1000000, ']') + "}\n";

    for (const auto& arguments :
        std::vector<std::vector<std::string>>{{"log", "cat", log(deep)}, {"log", "grep", "a=", log(deep)}}) {
        const ChildResult finished = run(arguments);

        EXPECT_EQ(finished.exitCode, 1);
        EXPECT_EQ(finished.signal, 0);
        EXPECT_THAT(finished.errors, HasSubstr("line 1: no log record"));
    }
}

TEST_F(Log, IsReadFromStandardInput)
{
    ChildProgram program;
    program.arguments = {"log", "cat", "-"};
    program.input = Records;

    EXPECT_EQ(linesOf(runProgram(program).output).size(), 3U);
}

TEST_F(Log, MissingFileIsNotFound)
{
    EXPECT_EQ(run({"log", "cat", text(folder / "none")}).exitCode, 3);
    EXPECT_EQ(run({"log", "cat", text(folder)}).exitCode, 1);
}

TEST_F(Log, MillionsOfLinesAreReadInConstantMemory)
{
    constexpr int lines = 2000000;
    {
        std::ofstream stream(folder / "long.log", std::ios::binary);
        for (int i = 0; i < lines; ++i)
            stream << R"({"timestamp":"2024-05-06T07:08:09.123456","threadId":"0","number":")" << i << "\"}\n";
    }

    const ChildResult finished = run({"log", "grep", "number=1999999", text(folder / "long.log")});

    EXPECT_EQ(linesOf(finished.output).size(), 1U) << finished.errors;
    EXPECT_GT(finished.peakMemory, 0U);
    EXPECT_LT(finished.peakMemory, 64U * 1024 * 1024) << "the log has 150 MB";
}

class Checksum : public ToolTest
{
};

TEST_F(Checksum, IsThatOfTheLibrary)
{
    writeFile(folder / "digits", "123456789");
    writeFile(folder / toPath("leer – порожній"), "");

    EXPECT_EQ(expectOk({"checksum", text(folder / "digits"), text(folder / toPath("leer – порожній"))}),
        "0376e6e7  " + text(folder / "digits") + "\nffffffff  " + text(folder / toPath("leer – порожній")) + '\n');
    EXPECT_EQ(expectJson({"checksum", text(folder / "digits")})[0]["size"], 9);
}

TEST_F(Checksum, OfALongFileIsThatOfItsPieces)
{
    std::string content(3000000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * i % 251);
    writeFile(folder / "long", content);
    // Bit by bit, as the polynomial is defined.
    std::uint32_t expected = 0xFFFFFFFFU;
    for (const char c : content) {
        expected ^= static_cast<std::uint32_t>(static_cast<unsigned char>(c)) << 24U;
        for (int bit = 0; bit < 8; ++bit)
            expected = (expected & 0x80000000U) != 0 ? (expected << 1U) ^ 0x04C11DB7U : expected << 1U;
    }
    char expectedText[9];
    std::snprintf(expectedText, sizeof expectedText, "%08x", expected);

    EXPECT_EQ(expectJson({"checksum", text(folder / "long")})[0]["checksum"], expectedText);
}

TEST_F(Checksum, IsShownForTheGoodFilesWhenOthersAreBad)
{
    writeFile(folder / "digits", "123456789");

    const ChildResult finished = run({"checksum", text(folder / "none"), text(folder / "digits"), text(folder)});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.output, HasSubstr("0376e6e7"));
    EXPECT_EQ(linesOf(finished.errors).size(), 2U);
}

TEST_F(Checksum, FailureIsInTheJsonList)
{
    writeFile(folder / "digits", "123456789");

    const ChildResult finished = run({"--json", "checksum", "none", text(folder / "digits")});

    EXPECT_EQ(finished.exitCode, 3);
    const auto answers = nlohmann::json::parse(finished.output);
    EXPECT_EQ(answers[0], (nlohmann::json{{"path", "none"}, {"outcome", "failed"}, {"reason", "no such file"}}));
    EXPECT_EQ(answers[1]["checksum"], "0376e6e7");
}

TEST_F(Checksum, ShowsProgressOnATerminal)
{
    writeFile(folder / "digits", "123456789");
    ChildProgram program;
    program.arguments = {"checksum", text(folder / "digits")};

    EXPECT_THAT(runOnTerminal(program).output, HasSubstr("100%"));
}

class Linkify : public ToolTest
{
};

TEST_F(Linkify, LinksTheAddressesOfAMessage)
{
    const std::string expected = "See&nbsp;<a href=\"www.example.test\">www.example.test</a>.\n";
    ChildProgram program;
    program.arguments = {"linkify"};
    program.input = "See www.example.test.";

    EXPECT_EQ(expectOk({"linkify", "See www.example.test."}), expected);
    EXPECT_EQ(runProgram(program).output, expected);
    EXPECT_EQ(
        expectOk({"linkify", "--html", "<b> http://ü.test"}), "<b> <a href=\"http://ü.test\">http://ü.test</a>\n");
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
