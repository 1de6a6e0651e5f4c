#include <regex>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;
using testing::Not;

bool isColoured(const std::string& shown) { return std::regex_search(shown, std::regex("\x1b\\[[0-9;]+m")); }

bool isPlain(const std::string& shown)
{
#ifdef _WIN32 // A console draws with sequences of its own whatever it is given.
    return !isColoured(shown);
#else
    return shown.find('\x1b') == std::string::npos;
#endif
}

class Streams : public ToolTest
{
protected:
    Streams() { makeDemo(); }

    /// More than any pipe holds.
    std::string makeManyFiles()
    {
        for (int i = 0; i < 5000; ++i)
            writeFile(
                workspace("archive") / "many" / ("a rather long name, so that it counts " + std::to_string(i)), "");
        return text(workspace("archive") / "many");
    }

    ChildResult onTerminal(std::vector<std::string> arguments, std::map<std::string, std::string> environment = {})
    {
        ChildProgram program;
        program.arguments = std::move(arguments);
        program.environment = std::move(environment);
        program.environment.try_emplace("TERM", "xterm");
        program.environment.try_emplace("NO_COLOR", "");
        return runOnTerminal(program);
    }
};

TEST_F(Streams, AreLeftQuietlyWhenTheReaderCloses)
{
    ChildProgram program;
    program.readAtMost = 100;
    const std::string many = makeManyFiles();
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"ls", many}, {"ls", "--json", many}, {"tree", many}, {"tree", "--json"}}) {
        program.arguments = arguments;

        const ChildResult finished = runProgram(program);

        EXPECT_EQ(finished.exitCode, 0) << testing::PrintToString(arguments);
        EXPECT_EQ(finished.signal, 0);
        EXPECT_EQ(finished.errors, "");
    }
}

TEST_F(Streams, UnwritableOutputIsAFailure)
{
    ChildProgram program;
    program.arguments = {"drives"};
    program.unwritableOutput = true;

    const ChildResult finished = runProgram(program);

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("cannot write to standard output"));
}

TEST_F(Streams, AreColouredOnATerminalOnly)
{
    EXPECT_TRUE(isColoured(onTerminal({"drives"}).output));
    EXPECT_THAT(expectOk({"drives"}), Not(HasSubstr("\x1b")));
}

TEST_F(Streams, AreNotColouredWhenTheUserWantsNone)
{
    EXPECT_TRUE(isPlain(onTerminal({"drives"}, {{"NO_COLOR", "1"}}).output));
    EXPECT_TRUE(isPlain(onTerminal({"drives", "--no-color"}).output));
    EXPECT_TRUE(isPlain(onTerminal({"drives"}, {{"TERM", "dumb"}}).output));
    EXPECT_TRUE(isPlain(onTerminal({"nonsense"}, {{"NO_COLOR", "1"}}).output));
}

TEST_F(Streams, ShowProgressOnATerminalOnly)
{
    EXPECT_THAT(onTerminal({"sync"}).output, HasSubstr("Syncing ["));
    const ChildResult finished = run({"sync"});
    EXPECT_EQ(finished.errors, "");
}

TEST_F(Streams, CarryEveryNameInTheCLocale)
{
    const std::string name = text(workspace("documents") / toPath("letters/2024/Київ – відповідь.txt"));
    const std::string source = text(folder / toPath("Ж𝄞.txt"));
    writeFile(toPath(source), "x");
    ChildProgram program;
    program.environment = CLocale;
    const auto inCLocale = [&](std::vector<std::string> arguments) {
        program.arguments = std::move(arguments);
        const ChildResult finished = runProgram(program);
        EXPECT_EQ(finished.exitCode, 0) << finished.errors;
        return finished.output;
    };

    EXPECT_THAT(inCLocale({"tree"}), HasSubstr("└── Київ – відповідь.txt"));
    EXPECT_THAT(inCLocale({"where", name}), HasSubstr(name));
    EXPECT_EQ(nlohmann::json::parse(inCLocale({"--json", "stat", name}))[0]["name"], "Київ – відповідь.txt");
    EXPECT_EQ(inCLocale({"add", source, text(workspace("documents"))}), "added  " + source + '\n');
    EXPECT_EQ(nlohmann::json::parse(inCLocale({"--json", "exists", text(workspace("documents") / toPath("Ж𝄞.txt"))})),
        nlohmann::json::parse(R"({"exists": true})"));
}

TEST_F(Streams, KeepDataAndMessagesApart)
{
    const ChildResult finished = run({"stat", readme(), "/none"});

    EXPECT_THAT(finished.output, Not(HasSubstr("tessaport:")));
    EXPECT_EQ(finished.errors, "tessaport: '/none': no such item on any drive\n");
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
