#ifndef _WIN32 // The calls are recorded by a preloaded library.

#include <set>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

class Flush : public ToolTest
{
protected:
    /// Runs the tool and returns its flushes and renames as "flush PATH" and "rename FROM TO".
    std::vector<std::string> callsOf(std::vector<std::string> arguments)
    {
        const std::string log = text(folder / "calls");
        std::filesystem::remove(log);
        ChildProgram program;
        program.arguments = std::move(arguments);
        program.environment = {{"LD_PRELOAD", RECORDED_CALLS_LIBRARY}, {"VELMORA_RECORDED_CALLS", log}};
        const ChildResult finished = runProgram(program);
        EXPECT_TRUE(finished.exitedWith(0)) << finished.description();
        return linesOf(readFile(log));
    }
};

/// Expects that what is renamed to one of the home's files was flushed since it was written. @return the renames.
int expectFlushedFiles(const std::vector<std::string>& calls)
{
    std::set<std::string> flushed;
    int renames = 0;
    for (const std::string& call : calls) {
        const std::size_t end = call.find(".new ");
        if (call.compare(0, 6, "flush ") == 0)
            flushed.insert(call.substr(6));
        if (call.compare(0, 7, "rename ") != 0 || end == std::string::npos)
            continue;
        ++renames;
        EXPECT_EQ(flushed.erase(call.substr(7, end + 4 - 7)), 1U) << call;
    }
    return renames;
}

TEST_F(Flush, ComesBeforeEveryRenameOfAFileThatTheToolWrites)
{
    EXPECT_GT(expectFlushedFiles(callsOf({"demo"})), 15) << "the files of the demo";
    EXPECT_EQ(expectFlushedFiles(callsOf({"service", "stop"})), 1);
    EXPECT_EQ(expectFlushedFiles(callsOf({"service", "start"})), 1);
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest

#endif
