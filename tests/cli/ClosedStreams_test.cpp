// Standard streams that are closed, shared or left by their reader.
#ifndef _WIN32 // Arranged by a POSIX shell.

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

class ClosedStreams : public ToolTest
{
protected:
    ClosedStreams() { makeDemo(); }

    /// Runs the tool with redirections of the shell, such as ">&-".
    ChildResult runWith(const std::string& redirections, std::vector<std::string> arguments)
    {
        return runInShell("exec \"$0\" \"$@\" " + redirections, std::move(arguments));
    }

    ChildResult runInShell(const std::string& script, std::vector<std::string> arguments)
    {
        ChildProgram program;
        program.program = "/bin/sh";
        program.arguments = {"-c", script, fs::absolute(TESSAPORT_TOOL)};
        program.arguments.insert(program.arguments.end(), arguments.begin(), arguments.end());
        program.environment["TESSAPORT_HOME"] = text(home);
        return TestSupport::run(program);
    }
};

TEST_F(ClosedStreams, ClosedOutputIsAFailure)
{
    for (const auto& arguments :
        std::vector<std::vector<std::string>>{{"drives"}, {"--json", "drives"}, {"--version"}, {"help"}, {"tree"}}) {
        const ChildResult finished = runWith(">&-", arguments);

        EXPECT_EQ(finished.exitCode, 1) << testing::PrintToString(arguments);
        EXPECT_THAT(finished.errors, HasSubstr("cannot write to standard output: it is closed"));
    }
}

TEST_F(ClosedStreams, ClosedOutputAndErrorsAreAFailure)
{
    EXPECT_EQ(runWith(">&- 2>&-", {"drives"}).exitCode, 1);
    EXPECT_EQ(runWith("<&- >&- 2>&-", {"drives"}).exitCode, 1);
    EXPECT_EQ(runWith("<&- >&- 2>&-", {"stat", "/none"}).exitCode, 3);
}

TEST_F(ClosedStreams, LostMessagesAreAFailure)
{
    EXPECT_EQ(runWith("2>&-", {"drives"}).exitCode, 0);
    EXPECT_EQ(runWith("2>&-", {"-v", "urn", readme()}).exitCode, 1);
    EXPECT_EQ(runWith("2>/dev/full", {"-v", "urn", readme()}).exitCode, 1);
}

TEST_F(ClosedStreams, ClosedInputIsAFailureWhereItIsNeeded)
{
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"log", "cat", "-"}, {"linkify"}}) {
        const ChildResult finished = runWith("<&-", arguments);

        EXPECT_EQ(finished.exitCode, 1) << arguments[0];
        EXPECT_THAT(finished.errors, HasSubstr("standard input is closed"));
    }
    EXPECT_EQ(runWith("<&-", {"rm", readme()}).exitCode, 2);
    EXPECT_EQ(runWith("<&-", {"drives"}).exitCode, 0);
}

TEST_F(ClosedStreams, SyncIsCompleteWithAllStreamsClosed)
{
    const ChildResult finished = runWith("<&- >&- 2>&-", {"sync"});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(readFile(server("harbour") / "survey/notes.txt"), "Point 2 must be measured again.\n");
    EXPECT_EQ(expectOk({"sync", "-n"}), "");
}

TEST_F(ClosedStreams, OutputAndMessagesKeepTheirOrderOnOnePipe)
{
    writeFile(folder / "one", "123456789");
    writeFile(folder / "two", "");
    const std::string one = text(folder / "one");
    const std::string two = text(folder / "two");

    const ChildResult finished = runWith("2>&1", {"checksum", one, "none", two, "/", one});

    EXPECT_THAT(
        linesOf(finished.output), ElementsAre("0376e6e7  " + one, "tessaport: 'none': no such file", "ffffffff  " + two,
                                      "tessaport: '/': it is a folder", "0376e6e7  " + one));
}

TEST_F(ClosedStreams, LogCatEndsWhenTheReaderHasLeft)
{
    const ChildResult finished =
        runInShell("yes '{\"user\":\"anna\"}' | \"$0\" log cat - | head -n 1", std::vector<std::string>{});

    EXPECT_FALSE(finished.timedOut);
    EXPECT_EQ(finished.output, "user=anna\n");
    EXPECT_EQ(finished.errors, "");
}

TEST_F(ClosedStreams, AddIsCompleteAlthoughTheReaderHasLeft)
{
    // More output than the buffer holds, long before the last batch.
    constexpr int files = 600;
    const fs::path sources = folder / std::string(180, 's');
    ChildProgram program;
    program.arguments = {"add"};
    for (int i = 0; i < files; ++i) {
        writeFile(sources / std::to_string(i), "x");
        program.arguments.push_back(text(sources / std::to_string(i)));
    }
    program.arguments.push_back(text(workspace("harbour") / "plans"));
    program.readAtMost = 1;

    const ChildResult finished = runProgram(program);

    EXPECT_EQ(finished.exitCode, 0);
    EXPECT_EQ(finished.errors, "");
    for (int i = 0; i < files; ++i)
        ASSERT_TRUE(fs::exists(server("harbour") / "plans" / std::to_string(i))) << i;
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest

#endif
