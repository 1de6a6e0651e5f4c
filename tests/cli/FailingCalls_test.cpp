// Each call of the system that a command makes on the files of a user fails once, by a preloaded library.
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using Json = nlohmann::json;

constexpr int Errors[] = {EIO, ENOSPC, EACCES, EMFILE, EINTR, ENOMEM, ESTALE};

/// Of all pairs of a call and an error, every so many are tried. No multiple of the number of errors, so that all
/// errors and all kinds of calls take their turn; with 8, almost every call fails once.
std::size_t step()
{
    const char* const set = std::getenv("VELMORA_FAILING_CALLS_STEP");
    return set == nullptr ? 99 : std::stoul(set);
}

struct Attack {
    std::string call;
    int number = 0;
    int error = 0;

    [[nodiscard]] std::string name() const
    {
        return "call " + std::to_string(number) + " of " + call + ": " + std::strerror(error);
    }
};

/// A command that is run with a failing call.
struct Command {
    std::vector<std::string> arguments;
    /// What the exit codes of success are.
    std::vector<int> success{0};
    /// Whether the command has done what it is for.
    std::function<bool()> isDone = [] { return true; };
};

bool contains(const std::vector<int>& codes, int code)
{
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

class FailingCalls : public ToolTest
{
protected:
    FailingCalls()
    {
        home = work / "home";
        fs::create_directories(workspaceOf("plans"));
        fs::create_directories(serverOf("plans"));
        expectOk({"drive", "add", "plans", "--workspace", text(workspaceOf("plans")), "--server",
            text(serverOf("plans")), "--locking"});
        for (const std::string name : {"here", "there", "both", "moved", "folder/inner"})
            write(workspaceOf("plans") / name, name);
        expectOk({"sync"});
    }

    [[nodiscard]] fs::path workspaceOf(const std::string& drive) const { return work / drive / "workspace"; }
    [[nodiscard]] fs::path serverOf(const std::string& drive) const { return work / drive / "server"; }
    [[nodiscard]] std::string inWorkspace(const std::string& name) const { return text(workspaceOf("plans") / name); }

    /// Writes a file whose content no command may lose.
    void write(const fs::path& file, const std::string& content)
    {
        writeFile(file, content);
        kept.push_back(content);
    }

    /// A change of every kind that a sync treats.
    void changeBothSides()
    {
        kept.clear();
        write(workspaceOf("plans") / "here", "changed here");
        write(serverOf("plans") / "there", "changed there, longer");
        write(workspaceOf("plans") / "both", "changed on this side");
        write(serverOf("plans") / "both", "changed on the other side");
        write(workspaceOf("plans") / "new/file", "new here");
        write(serverOf("plans") / "new there", "new there");
        fs::rename(workspaceOf("plans") / "moved", workspaceOf("plans") / "moved to");
        kept.insert(kept.end(), {"moved", "folder/inner"});
    }

    [[nodiscard]] bool isOnBothSides(const std::string& name) const
    {
        return fs::exists(workspaceOf("plans") / name) && fs::exists(serverOf("plans") / name);
    }

    [[nodiscard]] bool isOnNoSide(const std::string& name) const
    {
        return !fs::exists(workspaceOf("plans") / name) && !fs::exists(serverOf("plans") / name);
    }

    [[nodiscard]] bool areSidesEqual() const
    {
        return contentsIn(workspaceOf("plans")) == contentsIn(serverOf("plans"));
    }

    /// Lets calls of the command fail, each in a run of its own on the same files.
    void attack(const Command& command)
    {
        save();
        const std::vector<Attack> attacks = attacksOn(command);
        EXPECT_GE(attacks.size(), 3U);
        int failed = 0;
        for (const Attack& each : attacks) {
            const testing::ScopedTrace trace(__FILE__, __LINE__, each.name());
            restore();
            failed += survives(command, each) ? 1 : 0;
        }
        std::cout << failed << " of " << attacks.size() << " calls failed\n";
        EXPECT_GT(failed, static_cast<int>(attacks.size() * 3 / 4)) << "the calls are no longer those of the count";
    }

    /// Runs the tool with a failing call on what is in a folder.
    ChildResult runWith(const std::vector<std::string>& arguments, const Attack& attack, const fs::path& concerned)
    {
        fs::remove(log);
        ChildProgram program;
        program.arguments = arguments;
        program.environment["LD_PRELOAD"] = FAILING_CALLS_LIBRARY;
        program.environment["VELMORA_FAILING_CALL"] = attack.call + ':' + std::to_string(attack.number) + ':' +
                                                      std::to_string(attack.error) + ':' + text(concerned);
        program.environment["VELMORA_FAILING_CALL_LOG"] = text(log);
        return runProgram(program);
    }

    const fs::path work = folder / "work";
    std::vector<std::string> kept;

private:
    using Contents = std::map<std::string, std::string>;

    static Contents contentsIn(const fs::path& side)
    {
        Contents contents;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(side))
            contents[text(entry.path().lexically_relative(side))] = entry.is_directory() ? "" : readFile(entry.path());
        return contents;
    }

    void save()
    {
        copyTree(work, saved);
        const ChildResult usual = run({"status"});
        ASSERT_TRUE(usual.exitedWith(0)) << usual.description();
    }

    void restore()
    {
        fs::remove_all(work);
        copyTree(saved, work);
    }

    // With the times of the files, by which a sync compares.
    void copyTree(const fs::path& from, const fs::path& to)
    {
        ChildProgram copy;
        copy.program = "/bin/cp";
        copy.arguments = {"-a", text(from), text(to)};
        ASSERT_TRUE(runProgram(copy).exitedWith(0));
    }

    std::vector<Attack> attacksOn(const Command& command)
    {
        const ChildResult usual = runWith(command.arguments, {"none", 0, 0}, work);
        EXPECT_TRUE(contains(command.success, usual.exitCode)) << usual.description();
        EXPECT_TRUE(command.isDone());
        std::map<std::string, int> counts;
        for (const std::string& call : linesOf(readFile(log)))
            ++counts[call];
        std::vector<Attack> all;
        for (const auto& [call, count] : counts) {
            for (int number = 1; number <= count; ++number) {
                for (const int error : Errors)
                    all.push_back({call, number, error});
            }
        }
        std::vector<Attack> some;
        for (std::size_t i = 0; i < all.size(); i += step())
            some.push_back(all[i]);
        return some;
    }

    /// Runs the command twice, the first time with the failing call. Returns false if it did not make that call.
    bool survives(const Command& command, const Attack& attack)
    {
        const ChildResult result = runWith(command.arguments, attack, work);
        const std::vector<std::string> calls = linesOf(readFile(log));
        const bool failed = std::find(calls.begin(), calls.end(), "failed") != calls.end();
        expectTruth(command, result);
        expectNothingLost(result);

        const ChildResult again = runAgain(command);
        EXPECT_TRUE(again.signal == 0 && (again.exitCode == 0 || contains(command.success, again.exitCode)))
            << "next command: " << again.description() << "after: " << result.description();
        EXPECT_TRUE(command.isDone()) << result.description();
        expectNothingLost(again);
        expectNothingLeft();
        return failed;
    }

    /// The next command: the same one if there is still something to do, after the sync that it may ask for.
    ChildResult runAgain(const Command& command)
    {
        if (command.isDone())
            return run({"status"});
        ChildResult again = run(command.arguments);
        if (again.errors.find("Sync it, look at both versions") == std::string::npos)
            return again;
        again = run({"sync"});
        return again.exitCode != 0 || command.isDone() ? again : run(command.arguments);
    }

    static void expectTruth(const Command& command, const ChildResult& result)
    {
        EXPECT_TRUE(result.signal == 0 && !result.timedOut) << result.description();
        if (contains(command.success, result.exitCode)) {
            EXPECT_TRUE(command.isDone()) << "success is reported: " << result.description();
        } else {
            EXPECT_EQ(result.exitCode, 1) << result.description();
            EXPECT_THAT(result.errors, testing::StartsWith("tessaport: ")) << result.description();
        }
    }

    void expectNothingLost(const ChildResult& result) const
    {
        std::vector<std::string> found;
        for (const fs::path& side : {workspaceOf("plans"), serverOf("plans")}) {
            for (const auto& [name, content] : contentsIn(side))
                found.push_back(content);
        }
        for (const std::string& content : kept)
            EXPECT_THAT(found, testing::Contains(content)) << "lost; " << result.description();
    }

    void expectNothingLeft() const
    {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(work)) {
            const std::string name = text(entry.path().filename());
            EXPECT_TRUE(name != ".tessaport" && entry.path().extension() != ".tmp") << entry.path();
        }
    }

    const fs::path saved = folder / "saved";
    const fs::path log = folder / "calls";
};

TEST_F(FailingCalls, OfAddLoseNothing)
{
    writeFile(work / "sources/new.txt", "added");
    writeFile(work / "sources/tree/deep/inner.txt", "added inside");

    attack({{"add", text(work / "sources/new.txt"), text(work / "sources/tree"), inWorkspace("folder")}, {0},
        [this] { return isOnBothSides("folder/new.txt") && isOnBothSides("folder/tree/deep/inner.txt"); }});
}

TEST_F(FailingCalls, OfSyncLoseNothing)
{
    changeBothSides();

    attack({{"sync"}, {0, 7}, [this] { return areSidesEqual(); }});
}

TEST_F(FailingCalls, OfRmLoseNothingElse)
{
    kept = {"here", "there", "both", "moved"};

    attack({{"rm", "-r", "-y", inWorkspace("folder")}, {0}, [this] { return isOnNoSide("folder"); }});
}

TEST_F(FailingCalls, OfMkdirLoseNothing)
{
    attack({{"mkdir", inWorkspace("more/and deeper")}, {0}, [this] { return isOnBothSides("more/and deeper"); }});
}

TEST_F(FailingCalls, OfRunLoseNothing)
{
    attack({{"run", "copy-link", inWorkspace("here")}, {0}, [this] { return fs::exists(home / "clipboard.txt"); }});
}

TEST_F(FailingCalls, OfStatusLoseNothing)
{
    changeBothSides();

    attack({{"status"}});
}

TEST_F(FailingCalls, OfDriveAddLoseNothing)
{
    fs::create_directories(workspaceOf("more"));
    fs::create_directories(serverOf("more"));

    attack({{"drive", "add", "more", "--workspace", text(workspaceOf("more")), "--server", text(serverOf("more"))}, {0},
        [this] { return Json::parse(readFile(home / "drives.json")).size() == 2; }});
}

TEST_F(FailingCalls, OfDriveSetLoseNothing)
{
    attack({{"drive", "set", "plans", "--name", "renamed"}, {0},
        [this] { return Json::parse(readFile(home / "drives.json"))[0]["name"] == "renamed"; }});
}

TEST_F(FailingCalls, OfReadingAndWritingNameTheFileOnItsSide)
{
    writeFile(workspaceOf("plans") / "new", "new");

    const auto errorsOf = [this](const std::string& call, const fs::path& side) {
        return runWith({"sync"}, {call, 1, ENOSPC}, side).errors;
    };

    EXPECT_THAT(errorsOf("pwrite", serverOf("plans")),
        testing::AllOf(testing::HasSubstr("'" + text(serverOf("plans"))), testing::HasSubstr("cannot be written: "),
            testing::HasSubstr("Make room")));
    EXPECT_THAT(
        errorsOf("pread", workspaceOf("plans")), testing::HasSubstr("'" + inWorkspace("new") + "' cannot be read: "));
}

class FailingCallsOfKeep : public FailingCalls, public testing::WithParamInterface<std::string>
{
};

TEST_P(FailingCallsOfKeep, LoseOnlyTheVersionThatIsNotKept)
{
    changeBothSides();
    EXPECT_EQ(run({"sync"}).exitCode, 7);
    const std::string named = readFile(workspaceOf("plans") / "both");
    const std::string here = "changed on this side";
    const std::string there = "changed on the other side";
    const std::string copied = named == here ? there : here;
    const std::string givenUp = GetParam() == "--this" ? copied : GetParam() == "--other" ? named : "";
    kept.erase(std::remove(kept.begin(), kept.end(), givenUp), kept.end());

    attack({{"conflicts", "keep", GetParam(), inWorkspace("both")}, {0},
        [this] { return expectJson({"conflicts"}).empty(); }});
}

INSTANTIATE_TEST_SUITE_P(Each, FailingCallsOfKeep, testing::Values("--this", "--other", "--both"),
    [](const auto& version) { return version.param.substr(2); });

} // namespace
} // namespace Quorvex::Velmora::ToolTest
