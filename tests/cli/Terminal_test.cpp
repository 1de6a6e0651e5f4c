// What reaches a terminal, and what programs read instead.
#include <regex>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

// A bidirectional override, a zero-width space, a byte order mark, a soft hyphen, an invisible tag and the single
// character for the two with which escape sequences begin.
const std::vector<std::string> Unsafe{
    "\xE2\x80\xAE", "\xE2\x80\x8B", "\xEF\xBB\xBF", "\xC2\xAD", "\xF3\xA0\x81\x81", "\xC2\x9B"};

std::string unsafeName()
{
    std::string name = "gpj";
    for (const std::string& character : Unsafe)
        name += character + '.';
    return name + "exe";
}

class Terminal : public ToolTest
{
protected:
    Terminal()
    {
        makeDemo();
        writeFile(workspace("archive") / toPath(unsafeName()), "x");
    }

    std::string shown(std::vector<std::string> arguments, std::map<std::string, std::string> environment = {})
    {
        ChildProgram program;
        program.arguments = std::move(arguments);
        program.environment = std::move(environment);
        program.environment.try_emplace("TERM", "xterm");
        program.environment.try_emplace("NO_COLOR", "1");
        return runOnTerminal(program).output;
    }

    [[nodiscard]] std::string unsafePath() const { return text(workspace("archive") / toPath(unsafeName())); }
};

TEST_F(Terminal, NeverGetsUnsafeCharactersOfNamesRaw)
{
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"ls", text(workspace("archive"))},
             {"ls", "-1", text(workspace("archive"))}, {"tree", text(workspace("archive"))}, {"stat", unsafePath()},
             {"stat", "--json", unsafePath()}, {"ls", "--json", text(workspace("archive"))}, {"where", unsafePath()},
             {"props", unsafePath()}, {"props", "--json", unsafePath()}, {"full-path", unsafePath()},
             {"in-workspace", unsafePath()}, {"checksum", unsafePath()}, {"checksum", "--json", unsafePath()},
             {"sync", unsafePath()}, {"rm", "-n", unsafePath()}}) {
        const std::string output = shown(arguments);

        EXPECT_THAT(output, HasSubstr("exe")) << testing::PrintToString(arguments);
        for (const std::string& character : Unsafe)
            EXPECT_THAT(output, Not(HasSubstr(character))) << testing::PrintToString(arguments);
    }
}

TEST_F(Terminal, NeverGetsUnsafeCharactersOfArgumentsRaw)
{
    const std::string name = unsafeName();
    writeFile(folder / "app.log", "{\"user\":\"" + name + "\"}\n");
    for (const auto& arguments : std::vector<std::vector<std::string>>{{name}, {"ls", "--" + name}, {"ls", "a", name},
             {"stat", name}, {"stat", "--json", name}, {"props", "--definitions", name}, {"tree", "--depth", name},
             {"service", "set-state", name}, {"linkify", name}, {"linkify", "--json", name},
             {"log", "cat", text(folder / "app.log")}, {"log", "cat", "--json", text(folder / "app.log")},
             {"log", "grep", name, "x"}, {"checksum", name}, {"help", name}, {"--home", name, "drives"}}) {
        const std::string output = shown(arguments);

        EXPECT_THAT(output, HasSubstr("exe")) << testing::PrintToString(arguments);
        for (const std::string& character : Unsafe)
            EXPECT_THAT(output, Not(HasSubstr(character))) << testing::PrintToString(arguments);
    }
}

#ifndef _WIN32 // A console draws with sequences of its own, and file names there hold no such characters.
TEST_F(Terminal, GetsNoEscapeSequencesButThoseOfTheTool)
{
    const std::string name = "red\x1b[31m\x1b]0;title\x07name";
    writeFile(workspace("archive") / name, "x");
    const std::regex ownSequences("\x1b\\[(0|1|2|32|1;31|1;34)?[mK]");
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"ls", text(workspace("archive"))},
             {"tree", text(workspace("archive"))}, {"stat", text(workspace("archive") / name)}, {"stat", name}, {name},
             {"sync", text(workspace("archive"))}}) {
        const std::string output = shown(arguments, {{"NO_COLOR", ""}});

        EXPECT_THAT(output, HasSubstr("title")) << testing::PrintToString(arguments);
        EXPECT_THAT(std::regex_replace(output, ownSequences, ""), Not(HasSubstr("\x1b")));
        EXPECT_THAT(output, Not(HasSubstr("\x1b[31m")));
        EXPECT_THAT(output, Not(HasSubstr("\x07")));
    }
}

TEST_F(Terminal, GetsNoBytesThatAreNotUtf8)
{
    EXPECT_THAT(shown({"stat", "/\x9b"
                               "31m"}),
        HasSubstr("'/?31m'"));
}
#endif

TEST_F(Terminal, IsNoReasonToChangeWhatAPipeGets)
{
    // Only what would break a line or command a terminal is replaced there, too.
    std::string inALine = unsafeName();
    inALine.replace(inALine.find(Unsafe.back()), Unsafe.back().size(), "?");
    EXPECT_THAT(linesOf(expectOk({"ls", "-1", text(workspace("archive"))})), Contains(inALine));
    EXPECT_EQ(expectOk({"linkify", "--html", "a\tb\x7F" + unsafeName()}), "a\tb\x7F" + unsafeName() + '\n');
    const std::string json = expectOk({"--json", "stat", unsafePath()});
    EXPECT_EQ(nlohmann::json::parse(json)[0]["name"], unsafeName());
    for (const std::string& character : Unsafe)
        EXPECT_THAT(json, Not(HasSubstr(character)));
}

TEST_F(Terminal, ShowsAMessageOfSeveralLinesInOne)
{
    const ChildResult finished = run({"stat", "two\nlines\r\nor three"});

    EXPECT_EQ(finished.errors, "tessaport: 'two lines  or three': no such item on any drive\n");
}

TEST_F(Terminal, ShowsMessagesBetweenTheLinesOfJson)
{
    std::string output = shown({"--json", "stat", "/none", readme(), "/nowhere", unsafePath()});
    // Wine's console shows and hides its cursor between lines.
    for (const std::string_view cursor : {"\x1b[?25h", "\x1b[?25l"}) {
        for (std::size_t at = output.find(cursor); at != std::string::npos; at = output.find(cursor, at))
            output.erase(at, cursor.size());
    }

    const auto lines = linesOf(output);
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                  [](const std::string& line) { return line.find("tessaport:") != std::string::npos; }),
        2)
        << output;
    for (const std::string& line : lines)
        EXPECT_TRUE(line.find("tessaport:") == std::string::npos || line.find("tessaport:") == 0) << line;
}

TEST_F(Terminal, ShowsTheProgressAfterEachBatch)
{
    std::vector<std::string> arguments{"add"};
    for (int i = 0; i < 101; ++i) {
        writeFile(folder / "sources" / std::to_string(i), "x");
        arguments.push_back(text(folder / "sources" / std::to_string(i)));
    }
    arguments.push_back(text(workspace("archive")));

    const std::string output = shown(arguments);

    const std::size_t last = output.rfind("Adding [");
    ASSERT_NE(last, std::string::npos) << output;
    EXPECT_THAT(output.substr(last, 60), HasSubstr("100%"));
    EXPECT_THAT(output, HasSubstr("99%")) << "after the first batch";
}

TEST_F(Terminal, ColoursGoIntoAPipeOnlyIfThatIsAsked)
{
    const std::string path = text(workspace("harbour"));

    EXPECT_THAT(expectOk({"ls", path}), Not(HasSubstr("\x1b")));
    EXPECT_THAT(expectOk({"--color=never", "ls", path}), Not(HasSubstr("\x1b")));
    EXPECT_THAT(expectOk({"--color=always", "--no-color", "ls", path}), Not(HasSubstr("\x1b")));
    EXPECT_THAT(expectOk({"--color=always", "ls", path}), HasSubstr("\x1b[1;34mplans/\x1b[0m"));
    EXPECT_THAT(
        run({"--color=always", "ls", text(workspace("none"))}).errors, HasSubstr("\x1b[1;31mtessaport:\x1b[0m"));
    EXPECT_EQ(run({"--color=sometimes", "ls", path}).exitCode, 2);
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
