#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;
using testing::StartsWith;

class CommandLine : public ToolTest
{
protected:
    std::vector<std::string> commandNames()
    {
        std::vector<std::string> names;
        bool inCommands = false;
        for (const std::string& line : linesOf(expectOk({"--help"}))) {
            if (inCommands && line.compare(0, 2, "  ") == 0)
                names.push_back(line.substr(2, line.find(' ', 2) - 2));
            else
                inCommands = line == "Commands:";
        }
        return names;
    }
};

TEST_F(CommandLine, SuggestsTheCommandThatWasMeant)
{
    const ChildResult finished = run({"drvies"});

    EXPECT_EQ(finished.exitCode, 2);
    EXPECT_EQ(finished.output, "");
    EXPECT_THAT(finished.errors, HasSubstr("there is no command 'tessaport drvies'; did you mean 'drives'?"));
}

TEST_F(CommandLine, SuggestsInsideAGroupOfCommands)
{
    const ChildResult finished = run({"service", "sotp"});

    EXPECT_EQ(finished.exitCode, 2);
    EXPECT_THAT(finished.errors, HasSubstr("did you mean 'stop'?"));
}

TEST_F(CommandLine, SuggestsTheOptionThatWasMeant)
{
    const ChildResult finished = run({"ls", "--recursvie"});

    EXPECT_EQ(finished.exitCode, 2);
    EXPECT_THAT(finished.errors, HasSubstr("did you mean '--recursive'?"));
}

TEST_F(CommandLine, SuggestsNothingForAWordLikeNone)
{
    const ChildResult finished = run({"qqqqqqqq"});

    EXPECT_EQ(finished.exitCode, 2);
    EXPECT_THAT(finished.errors, testing::Not(HasSubstr("did you mean")));
}

TEST_F(CommandLine, WantsACommand)
{
    EXPECT_EQ(run(std::vector<std::string>{}).exitCode, 2);
    EXPECT_EQ(run({"service"}).exitCode, 2);
    EXPECT_EQ(run({""}).exitCode, 2);
}

TEST_F(CommandLine, RejectsWhatACommandDoesNotTake)
{
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"stat"}, {"ls", "a", "b"}, {"add", "one"},
             {"tree", "--depth", "0"}, {"tree", "--depth", "deep"}, {"closed", "x"}, {"closed", "--process", "0", "x"},
             {"service", "set-state", "sleeping"}, {"where"}, {"where", "x", "--id", "y"}, {"props"},
             {"sync", "x", "--one", "y"}, {"completion", "csh"}, {"ls", "--home"}, {"stat", ""}}) {
        const ChildResult finished = run(arguments);

        EXPECT_EQ(finished.exitCode, 2) << testing::PrintToString(arguments) << finished.errors;
        EXPECT_EQ(finished.output, "");
        EXPECT_THAT(finished.errors, StartsWith("tessaport: "));
    }
}

TEST_F(CommandLine, TakesItsOptionsBeforeAndBehindTheCommand)
{
    makeDemo();

    const std::string before = expectOk({"--json", "drives"});

    EXPECT_EQ(expectOk({"drives", "--json"}), before);
    EXPECT_EQ(expectOk({"--home", "/nowhere", "drives", "--json", "--home", text(home)}), before);
}

TEST_F(CommandLine, HelpStartsWithExamplesForEveryCommand)
{
    const std::vector<std::string> names = commandNames();
    EXPECT_GT(names.size(), 30U);
    for (const std::string& name : names) {
        const std::string help = expectOk({name, "--help"});

        EXPECT_THAT(help, StartsWith("Examples:\n  ")) << name;
        EXPECT_LT(help.find("tessaport " + name), help.find("Usage: ")) << name;
        EXPECT_THAT(help, HasSubstr("Usage: tessaport " + name));
        EXPECT_EQ(expectOk({"help", name}), help);
    }
}

TEST_F(CommandLine, HelpNamesTheExitCodes)
{
    const std::string help = expectOk({"--help"});

    EXPECT_THAT(help, StartsWith("Examples:\n"));
    EXPECT_THAT(help, HasSubstr("  0  ok\n  1  failure\n  2  wrong usage\n  3  not found\n"));
}

TEST_F(CommandLine, ShowsItsVersion) { EXPECT_EQ(expectOk({"--version"}), "tessaport " TESSAPORT_VERSION "\n"); }

#ifndef _WIN32 // Where there is no bash to try it in.
TEST_F(CommandLine, CompletesCommandsAndOptionsInBash)
{
    writeFile(folder / "completion.bash", expectOk({"completion", "bash"}));
    writeFile(folder / "try.bash", "source " + text(folder / "completion.bash") + R"(
try() { COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=(); _tessaport; echo "${COMPREPLY[*]}"; }
try tessaport dr
try tessaport --json service sta
try tessaport --home sync service set
try tessaport sync --dr
try tessaport drives --js
)");
    const std::string command = "bash " + text(folder / "try.bash") + " > " + text(folder / "out") + " 2>&1";

    ASSERT_EQ(std::system(command.c_str()), 0) << readFile(folder / "out");

    EXPECT_EQ(readFile(folder / "out"), "drives\nstart status\nset-state\n--dry-run\n--json\n");
}
#endif

TEST_F(CommandLine, WritesCompletionsOfEveryCommandForAllShells)
{
    for (const std::string shell : {"bash", "zsh", "fish"}) {
        const std::string script = expectOk({"completion", shell});
        for (const std::string& name : commandNames())
            EXPECT_THAT(script, HasSubstr(name)) << shell;
        EXPECT_THAT(script, HasSubstr("set-state"));
    }
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
