#include <iostream>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

#ifdef _WIN32 // Under Wine a process takes a third of a second and more.
constexpr int Runs = 40;
#else
constexpr int Runs = 300;
#endif
constexpr int LastExitCode = 8;
constexpr int Usage = 2;

const std::vector<std::string> Commands{"demo", "doctor", "version", "help", "completion", "drives", "ls", "tree",
    "status", "conflicts", "stat", "where", "props", "sync", "add", "can-add", "mkdir", "rm", "commands", "run",
    "closed", "id", "resolve", "urn", "root", "can-add-file", "exists", "full-path", "offline", "check", "in-workspace",
    "log", "checksum", "linkify", "drive", "service", "__complete", "keep", "set", "remove", "stop", "start", "fail",
    "clear", "set-state", "grep", "bash"};

const std::vector<std::string> Options{"--json", "-v", "-h", "--help", "-n", "-y", "-r", "-p", "-q", "-R", "--one",
    "--other", "--this", "--name", "--color", "always", "--no-color", "--ignore", "--unignore", "--offline", "yes",
    "--drive", "--workspace", "--server", "--type", "--times", "--as", "--process", "--exit-code", "--ignored", "-V"};

const std::vector<std::string> Values{"", "-", "--", "--=", "---", "-x", "=", "a=b", ".", "..", "/", "\\", "*", "[",
    "%s%n", "Harbour Project", "Harbour Project/plans", "Harbour Project/../..", "Harbour", "plans/new", "0", "-1",
    "99999999999999999999", "1e9", "true", "\n", "\t", "\xC3\xA4", "\xF0\x9F\x98\x80", "{}", "[\"a\"]", "\"", "'",
    std::string(3000, 'a'), std::string(500, '/'), "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01"};

/// The tool with arguments that no one means, on the drives of the demo.
class RandomArguments : public ToolTest
{
protected:
    RandomArguments()
    {
        makeDemo();
        fs::create_directory(empty);
    }

    const std::string& oneOf(const std::vector<std::string>& words) { return words[random() % words.size()]; }

    std::vector<std::string> someArguments()
    {
        std::vector<std::string> arguments{oneOf(Commands)};
        for (auto left = random() % 6; left > 0; --left) {
            switch (random() % 4) {
            case 0:
                arguments.push_back(oneOf(Commands));
                break;
            case 1:
                arguments.push_back(oneOf(Options));
                break;
            default:
                arguments.push_back(oneOf(Values));
            }
        }
        return arguments;
    }

    ChildResult runInEmptyFolder(const std::vector<std::string>& arguments)
    {
        ChildProgram program;
        program.arguments = arguments;
        program.currentFolder = empty;
        return runProgram(program);
    }

    const fs::path empty = folder / "empty";
    const unsigned seed = std::random_device()();
    testing::ScopedTrace trace{__FILE__, __LINE__, "seed " + std::to_string(seed)};
    std::mt19937 random{seed};
};

TEST_F(RandomArguments, EndWithACodeThatIsDocumentedAndWrongUsageWithAMessage)
{
    std::vector<int> counts(LastExitCode + 1);
    for (int i = 0; i < Runs; ++i) {
        const std::vector<std::string> arguments = someArguments();
        const ChildResult finished = runInEmptyFolder(arguments);

        ASSERT_TRUE(
            finished.signal == 0 && !finished.timedOut && finished.exitCode >= 0 && finished.exitCode <= LastExitCode)
            << testing::PrintToString(arguments) << finished.description();
        ++counts[static_cast<std::size_t>(finished.exitCode)];
        if (finished.exitCode == Usage) {
            EXPECT_THAT(finished.errors, testing::StartsWith("tessaport: ")) << testing::PrintToString(arguments);
        }
    }
    std::cout << "exit codes 0 to " << LastExitCode << ": " << testing::PrintToString(counts) << '\n';
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
