// The day's work with which the documentation of the tool begins, as a shell runs it.
#ifndef _WIN32

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

class Guide : public ToolTest
{
protected:
    /// The lines of the first example of the documentation.
    static std::string firstExample()
    {
        const std::string guide = readFile(VELMORA_TOOL_GUIDE);
        const std::string begin = "```sh\n";
        const std::size_t from = guide.find(begin) + begin.size();
        return guide.substr(from, guide.find("```", from) - from);
    }

    /// Runs lines with folders of the test in the place of the user's.
    ChildResult runInShell(std::string lines)
    {
        const std::string remote = "/mnt/nas";
        for (std::size_t at = 0; (at = lines.find(remote, at)) != std::string::npos;)
            lines.replace(at, remote.size(), "~/nas");
        writeFile(folder / "lines", lines);
        ChildProgram program;
        program.program = "/bin/sh";
        program.arguments = {"-x", text(folder / "lines")};
        program.currentFolder = folder;
        program.environment = {{"HOME", text(folder)}, {"TESSAPORT_HOME", text(home)},
            {"PATH", fs::path(fs::absolute(TESSAPORT_TOOL)).parent_path().string() + ":/usr/bin:/bin"}};
        return TestSupport::run(program);
    }
};

TEST_F(Guide, ADaysWorkIsDoneWithTheLinesThatAreShown)
{
    fs::create_directories(folder / "Plans");
    fs::create_directories(folder / "nas/plans");

    const ChildResult finished = runInShell(firstExample());

    const std::string everything = finished.output + finished.errors;
    EXPECT_EQ(finished.exitCode, 0) << everything;
    EXPECT_THAT(finished.output, HasSubstr("uploaded  " + text(folder / "Plans/offer.txt")));
    EXPECT_THAT(finished.output, HasSubstr("changed on both sides  " + text(folder / "Plans/offer.txt")));
    EXPECT_THAT(finished.output, HasSubstr("kept twice  " + text(folder / "Plans/offer (conflict ")));
    EXPECT_THAT(finished.output, HasSubstr("Total: 1 conflict\n"));
    EXPECT_THAT(finished.output, HasSubstr("kept the other version  " + text(folder / "Plans/offer.txt")));
    EXPECT_THAT(finished.errors, HasSubstr("is a file on one side and a folder on the other; rename one"));
    EXPECT_THAT(finished.output, HasSubstr("failed                 " + text(folder / "Plans/letters")));
    EXPECT_THAT(finished.output, HasSubstr("Total: everything is in sync\n"));
    EXPECT_THAT(everything, testing::Not(HasSubstr("no such")));
    EXPECT_EQ(readFile(folder / "Plans/offer.txt"), readFile(folder / "nas/plans/offer.txt"));
    EXPECT_TRUE(fs::exists(folder / "nas/plans/letters/first.txt"));
    EXPECT_EQ(expectJson({"drives"}), nlohmann::json::array());
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest

#endif
