#include <gmock/gmock.h>

#include "ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;
using testing::Not;

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
        return (workspace("archive") / "many").string();
    }

    Finished onTerminal(std::vector<std::string> arguments, std::map<std::string, std::string> environment = {})
    {
        Start start;
        start.arguments = std::move(arguments);
        start.environment = std::move(environment);
        start.environment["TESSAPORT_HOME"] = home.string();
        start.environment.try_emplace("TERM", "xterm");
        start.environment.try_emplace("NO_COLOR", "");
        return runToolOnTerminal(start);
    }
};

TEST_F(Streams, ClosedByTheReaderEndTheToolQuietly)
{
    Start start;
    start.readAtMost = 100;
    const std::string many = makeManyFiles();
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"ls", many}, {"ls", "--json", many}, {"tree", many}, {"tree", "--json"}}) {
        start.arguments = arguments;

        const Finished finished = run(start);

        EXPECT_EQ(finished.exitCode, 0) << testing::PrintToString(arguments);
        EXPECT_EQ(finished.signal, 0);
        EXPECT_EQ(finished.errors, "");
    }
}

TEST_F(Streams, ThatCannotBeWrittenAreAFailure)
{
    Start start;
    start.arguments = {"drives"};
    start.outputFile = "/dev/full";

    const Finished finished = run(start);

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("cannot write to standard output"));
}

TEST_F(Streams, AreColouredOnATerminalOnly)
{
    EXPECT_THAT(onTerminal({"drives"}).output, HasSubstr("\x1b["));
    EXPECT_THAT(expectOk({"drives"}), Not(HasSubstr("\x1b[")));
}

TEST_F(Streams, AreNotColouredWhenTheUserWantsNone)
{
    EXPECT_THAT(onTerminal({"drives"}, {{"NO_COLOR", "1"}}).output, Not(HasSubstr("\x1b[")));
    EXPECT_THAT(onTerminal({"drives", "--no-color"}).output, Not(HasSubstr("\x1b[")));
    EXPECT_THAT(onTerminal({"drives"}, {{"TERM", "dumb"}}).output, Not(HasSubstr("\x1b[")));
    EXPECT_THAT(onTerminal({"nonsense"}, {{"NO_COLOR", "1"}}).output, Not(HasSubstr("\x1b[")));
}

TEST_F(Streams, ShowProgressOnATerminalOnly)
{
    EXPECT_THAT(onTerminal({"sync"}).output, HasSubstr("Syncing ["));
    const Finished finished = run({"sync"});
    EXPECT_EQ(finished.errors, "");
}

TEST_F(Streams, CarryEveryNameInTheCLocale)
{
    const std::string name = (workspace("documents") / "letters/2024/Київ – відповідь.txt").string();
    const std::string source = (folder / "Ж𝄞.txt").string();
    writeFile(source, "x");
    Start start;
    start.environment = {{"LC_ALL", "C"}, {"LANG", ""}};
    const auto inCLocale = [&](std::vector<std::string> arguments) {
        start.arguments = std::move(arguments);
        const Finished finished = run(start);
        EXPECT_EQ(finished.exitCode, 0) << finished.errors;
        return finished.output;
    };

    EXPECT_THAT(inCLocale({"tree"}), HasSubstr("└── Київ – відповідь.txt"));
    EXPECT_THAT(inCLocale({"where", name}), HasSubstr(name));
    EXPECT_EQ(nlohmann::json::parse(inCLocale({"--json", "stat", name}))[0]["name"], "Київ – відповідь.txt");
    EXPECT_EQ(inCLocale({"add", source, workspace("documents").string()}), "added  " + source + '\n');
    EXPECT_EQ(nlohmann::json::parse(inCLocale({"--json", "exists", (workspace("documents") / "Ж𝄞.txt").string()})),
        nlohmann::json::parse(R"({"exists": true})"));
}

TEST_F(Streams, KeepDataAndMessagesApart)
{
    const Finished finished = run({"stat", readme(), "/none"});

    EXPECT_THAT(finished.output, Not(HasSubstr("tessaport:")));
    EXPECT_EQ(finished.errors, "tessaport: '/none': no such item on any drive\n");
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
