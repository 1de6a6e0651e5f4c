#include <algorithm>
#include <chrono>
#include <random>
#include <set>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

#ifdef _WIN32 // Under Wine, where they are tested, a round takes three seconds.
constexpr int Rounds = 12;
#else
constexpr int Rounds = 100;
#endif
constexpr int Files = 12;
constexpr std::size_t FileSize = 300 * 1000;

/// The content of a file in a round: long, and different everywhere, so that an incomplete copy shows.
std::string contentOf(int file, int round)
{
    std::string content(FileSize, '\0');
    const std::string mark = std::to_string(file) + '/' + std::to_string(round) + ';';
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = mark[i % mark.size()];
    return content;
}

std::string nameOf(int file) { return "file " + std::to_string(file) + ".bin"; }

/// Runs a command many times, kills it at a random moment and examines the result.
class Kill : public ToolTest
{
protected:
    Kill()
    {
        makeDemo();
        expectOk({"sync"});
    }

    [[nodiscard]] fs::path here(int file) const { return workspace("harbour") / "work" / nameOf(file); }
    [[nodiscard]] fs::path there(int file) const { return server("harbour") / "work" / nameOf(file); }

    std::chrono::microseconds durationOf(const std::vector<std::string>& arguments)
    {
        const auto begin = std::chrono::steady_clock::now();
        expectOk(arguments);
        return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    }

    void killAtRandomMoment(const std::vector<std::string>& arguments, std::chrono::microseconds longest)
    {
        ChildProgram program;
        program.arguments = arguments;
        program.timeLimit =
            std::chrono::microseconds(std::uniform_int_distribution<std::int64_t>(0, longest.count())(random));
        const ChildResult finished = runProgram(program);
        ++(finished.timedOut ? killed : finishedFirst);
    }

    /// Every visible file is complete: it is one of the versions that it has had.
    static bool isComplete(const fs::path& file, int number, const std::set<int>& versions)
    {
        const std::string content = readFile(file);
        return std::any_of(
            versions.begin(), versions.end(), [&](int version) { return content == contentOf(number, version); });
    }

    void expectOnlyCompleteFiles(const std::set<int>& versions)
    {
        for (int file = 0; file < Files; ++file) {
            for (const fs::path& path : {here(file), there(file)})
                EXPECT_TRUE(!fs::exists(path) || isComplete(path, file, versions)) << path;
        }
    }

    void expectNothingElse()
    {
        std::set<std::string> expected;
        for (int file = 0; file < Files; ++file)
            expected.insert(nameOf(file));
        for (const auto& item : expectJson({"ls", text(workspace("harbour") / "work")}))
            EXPECT_EQ(expected.count(item["name"]), 1U) << item;
    }

    void TearDown() override
    {
        std::cout << "killed " << killed << " times, finished before it " << finishedFirst << " times\n";
        EXPECT_GT(killed, Rounds / 4) << "most kills came too late to say anything";
    }

    // The seed changes with every run; it is shown with a failure.
    unsigned seed = std::random_device()();
    testing::ScopedTrace trace{__FILE__, __LINE__, "seed " + std::to_string(seed)};
    std::mt19937 random{seed};
    int killed = 0;
    int finishedFirst = 0;
};

TEST_F(Kill, DuringAddLosesNothingAndLeavesOnlyCompleteFiles)
{
    std::vector<std::string> add{"add"};
    for (int file = 0; file < Files; ++file) {
        writeFile(folder / "sources" / nameOf(file), contentOf(file, 0));
        add.push_back(text(folder / "sources" / nameOf(file)));
    }
    add.push_back(text(workspace("harbour") / "work"));
    expectOk({"mkdir", add.back()});
    const auto longest = durationOf(add);
    for (int round = 1; round <= Rounds; ++round) {
        for (int file = 0; file < Files; ++file)
            writeFile(folder / "sources" / nameOf(file), contentOf(file, round));

        killAtRandomMoment(add, longest);

        expectOnlyCompleteFiles({round - 1, round});
        expectNothingElse();
        expectOk(add);
        for (int file = 0; file < Files; ++file) {
            ASSERT_EQ(readFile(here(file)), contentOf(file, round));
            ASSERT_EQ(readFile(there(file)), contentOf(file, round));
        }
    }
}

TEST_F(Kill, DuringSyncLosesNothingAndLeavesOnlyCompleteFiles)
{
    const std::vector<std::string> sync{"sync", text(workspace("harbour") / "work")};
    const auto changeHalfOnEachSide = [this](int round) {
        for (int file = 0; file < Files; ++file)
            writeFile(file % 2 == 0 ? here(file) : there(file), contentOf(file, round));
    };
    changeHalfOnEachSide(0);
    const auto longest = durationOf(sync);
    for (int round = 1; round <= Rounds; ++round) {
        changeHalfOnEachSide(round);

        killAtRandomMoment(sync, longest);

        expectOnlyCompleteFiles({round - 1, round});
        for (int file = 0; file < Files; ++file)
            ASSERT_EQ(readFile(file % 2 == 0 ? here(file) : there(file)), contentOf(file, round));
        expectOk(sync);
        expectNothingElse();
        for (int file = 0; file < Files; ++file) {
            ASSERT_EQ(readFile(here(file)), contentOf(file, round));
            ASSERT_EQ(readFile(there(file)), contentOf(file, round));
        }
    }
}

TEST_F(Kill, DuringRmDeletesCompleteFilesOrNothing)
{
    const std::string kept = readFile(toPath(readme()));
    std::vector<std::string> rm{"rm", "-y"};
    for (int file = 0; file < Files; ++file)
        rm.push_back(text(here(file)));
    const auto makeFiles = [this](int round) {
        for (int file = 0; file < Files; ++file)
            writeFile(here(file), contentOf(file, round));
        expectOk({"sync", text(workspace("harbour") / "work")});
    };
    makeFiles(0);
    const auto longest = durationOf(rm);
    for (int round = 1; round <= Rounds; ++round) {
        makeFiles(round);

        killAtRandomMoment(rm, longest);

        expectOnlyCompleteFiles({round});
        expectNothingElse();
        EXPECT_EQ(readFile(toPath(readme())), kept);
        const ChildResult again = run(rm);
        EXPECT_TRUE(again.exitCode == 0 || again.exitCode == 3) << again.errors;
        for (int file = 0; file < Files; ++file) {
            EXPECT_FALSE(fs::exists(here(file)));
            EXPECT_FALSE(fs::exists(there(file)));
        }
    }
}

TEST_F(Kill, DuringDriveSetLeavesTheOldSettingsOrTheNewOnes)
{
    const std::vector<std::string> rename{"drive", "set", "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "--name"};
    const auto named = [&rename](int round) {
        auto arguments = rename;
        arguments.push_back("Harbour " + std::to_string(round));
        return arguments;
    };
    const auto longest = durationOf(named(0));
    nlohmann::json drives = nlohmann::json::parse(readFile(home / "drives.json"));
    for (int round = 1; round <= Rounds; ++round) {
        killAtRandomMoment(named(round), longest);

        const auto found = nlohmann::json::parse(readFile(home / "drives.json"));
        if (found != drives) {
            drives[0]["name"] = "Harbour " + std::to_string(round);
            ASSERT_EQ(found, drives);
        }
    }
    expectOk(named(0));
    drives[0]["name"] = "Harbour 0";
    EXPECT_EQ(nlohmann::json::parse(readFile(home / "drives.json")), drives);
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
