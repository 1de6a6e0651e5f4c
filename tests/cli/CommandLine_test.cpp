#include <map>

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
    /// The headings of the help with the names of the commands under them.
    std::map<std::string, std::vector<std::string>> commandGroups()
    {
        std::map<std::string, std::vector<std::string>> groups;
        std::string heading;
        for (const std::string& line : linesOf(expectOk({"--help"}))) {
            if (line.compare(0, 2, "  ") != 0)
                heading = line;
            else if (line[2] != ' ' && heading != "Examples:" && heading != "Options:" && heading != "Exit codes:")
                groups[heading].push_back(line.substr(2, line.find(' ', 2) - 2));
        }
        return groups;
    }

    std::vector<std::string> commandNames()
    {
        std::vector<std::string> names;
        for (const auto& [heading, inGroup] : commandGroups())
            names.insert(names.end(), inGroup.begin(), inGroup.end());
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

TEST_F(CommandLine, SuggestsNothingForAWordUnlikeAnyCommand)
{
    const ChildResult finished = run({"qqqqqqqq"});

    EXPECT_EQ(finished.exitCode, 2);
    EXPECT_THAT(finished.errors, testing::Not(HasSubstr("did you mean")));
}

TEST_F(CommandLine, IsWrongUsageWithoutACommand)
{
    EXPECT_EQ(run(std::vector<std::string>{}).exitCode, 2);
    EXPECT_EQ(run({"log"}).exitCode, 2);
    EXPECT_EQ(run({""}).exitCode, 2);
}

TEST_F(CommandLine, AloneShowsTheCommands)
{
    const ChildResult finished = run(std::vector<std::string>{});

    EXPECT_EQ(finished.output, expectOk({"--help"}));
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(expectOk({"help"}), finished.output);
}

TEST_F(CommandLine, HelpShowsTheCommandsInSmallGroups)
{
    const auto groups = commandGroups();

    EXPECT_GE(groups.size(), 5U);
    for (const auto& [heading, names] : groups) {
        EXPECT_LE(names.size(), 10U) << heading;
        EXPECT_EQ(heading.back(), ':') << heading;
    }
}

TEST_F(CommandLine, HelpFitsInto100Columns)
{
    std::vector<std::vector<std::string>> commands{{}, {"log", "cat"}, {"log", "grep"}, {"service", "set-state"},
        {"drive", "add"}, {"drive", "set"}, {"drive", "remove"}, {"service", "delay"}, {"service", "fail"},
        {"service", "clear"}};
    for (const std::string& name : commandNames())
        commands.push_back({name});
    for (std::vector<std::string> command : commands) {
        command.emplace_back("--help");
        for (const std::string& line : linesOf(expectOk(command)))
            EXPECT_LE(line.size(), 100U) << line;
    }
}

struct UsageCase {
    std::vector<std::string> arguments;
    std::string message;
};

TEST_F(CommandLine, SaysWhatToType)
{
    for (const auto& [arguments, message] : std::vector<UsageCase>{
             {{"add", "a"}, "FILE... FOLDER is incomplete; for example: tessaport add drawing.dwg notes.txt FOLDER"},
             {{"add"}, "FILE... FOLDER is missing; for example: tessaport add drawing.dwg notes.txt FOLDER"},
             {{"-version"}, "there is no option '-version'; did you mean '--version'?"},
             {{"drives", "-jsn"}, "there is no option '-jsn'; did you mean '--json'?"},
             {{"closed", "x"}, "--process N is missing; for example: tessaport closed --process 4711 PATH"},
             {{"stat"}, "PATH is missing; for example: tessaport stat PATH"},
             {{"props"}, "PATH is missing; for example: tessaport props PATH"},
             {{"log"}, "a command is missing; for example: tessaport log cat app.log"}}) {
        const ChildResult finished = run(arguments);

        EXPECT_EQ(finished.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_THAT(finished.errors, HasSubstr("tessaport: " + message + '\n'));
    }
}

TEST_F(CommandLine, RejectsWhatACommandDoesNotTake)
{
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"stat"}, {"ls", "a", "b"}, {"add", "one"},
             {"tree", "--depth", "0"}, {"tree", "--depth", "deep"}, {"closed", "x"}, {"closed", "--process", "0", "x"},
             {"service", "set-state", "sleeping"}, {"service", "strat"}, {"service", "fail", "sync"},
             {"service", "fail", "sync", "a", "--times", "0"}, {"service", "fail", "sync", "a", "--as", "running"},
             {"service", "delay", "sync"}, {"where"}, {"where", "x", "--id", "y"}, {"props"},
             {"sync", "x", "--one", "y"}, {"completion", "csh"}, {"ls", "--home"}, {"stat", ""}}) {
        const ChildResult finished = run(arguments);

        EXPECT_EQ(finished.exitCode, 2) << testing::PrintToString(arguments) << finished.errors;
        EXPECT_EQ(finished.output, "");
        EXPECT_THAT(finished.errors, StartsWith("tessaport: "));
    }
}

TEST_F(CommandLine, AcceptsItsOptionsBeforeAndAfterTheCommand)
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

TEST_F(CommandLine, ShowsItsVersion)
{
    for (const char* option : {"--version", "-V"})
        EXPECT_EQ(expectOk({option}), "tessaport " TESSAPORT_VERSION "\n");
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
