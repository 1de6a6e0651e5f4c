#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

/// The item README.txt holds "from the server"; the version that was here is kept beside it.
class Conflicts : public ToolTest
{
protected:
    Conflicts()
    {
        makeDemo();
        expectOk({"sync"});
        makeConflict();
    }

    void makeConflict(int hours = 1)
    {
        writeFile(here(), "here");
        writeFile(there(), "from the server");
        fs::last_write_time(here(), fs::last_write_time(there()) - std::chrono::hours(hours));
        EXPECT_EQ(run({"sync", readme()}).exitCode, 7);
    }

    [[nodiscard]] fs::path here() const { return workspace("harbour") / "README.txt"; }
    [[nodiscard]] fs::path there() const { return server("harbour") / "README.txt"; }

    [[nodiscard]] std::vector<fs::path> copies() const
    {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(workspace("harbour"))) {
            if (text(entry.path().filename()).find("(conflict ") != std::string::npos)
                found.push_back(entry.path());
        }
        return found;
    }

    void expectVersions(const std::string& content, std::size_t copyCount)
    {
        EXPECT_EQ(readFile(here()), content);
        EXPECT_EQ(readFile(there()), content);
        EXPECT_EQ(copies().size(), copyCount);
        EXPECT_EQ(expectOk({"conflicts"}), "Total: 0 conflicts\n");
        EXPECT_EQ(expectOk({"status"}), "Total: everything is in sync\n");
    }
};

TEST_F(Conflicts, AreListedWithBothVersions)
{
    const std::string copy = text(copies().at(0).filename());

    const auto lines = linesOf(expectOk({"conflicts", "Harbour Project"}));
    const auto list = expectJson({"conflicts"});

    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], readme());
    EXPECT_THAT(lines[1], testing::StartsWith("  this   15 bytes, "));
    EXPECT_THAT(lines[1], testing::EndsWith(", from the server"));
    EXPECT_THAT(lines[2], testing::StartsWith("  other  4 bytes, "));
    EXPECT_THAT(lines[2], testing::EndsWith(", from here: " + copy));
    EXPECT_EQ(lines[3], "Total: 1 conflict");
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0]["path"], readme());
    EXPECT_EQ(list[0]["this"]["size"], 15);
    EXPECT_EQ(list[0]["this"]["from"], "server");
    EXPECT_EQ(list[0]["other"]["path"], text(copies().at(0)));
    EXPECT_EQ(list[0]["other"]["from"], "here");
    EXPECT_THAT(std::string(list[0]["other"]["lastModifiedDate"]), testing::EndsWith("Z"));
    EXPECT_EQ(expectJson({"conflicts", text(workspace("harbour") / "plans")}), nlohmann::json::array());
}

TEST_F(Conflicts, KeepThisDeletesTheOtherVersion)
{
    EXPECT_EQ(expectOk({"conflicts", "keep", "--this", readme()}), "kept this version  " + readme() + "\n");
    expectVersions("from the server", 0);
}

TEST_F(Conflicts, KeepOtherPutsTheOtherVersionInThePlaceOfTheItem)
{
    const std::string copy = text(copies().at(0));

    EXPECT_EQ(expectJson({"conflicts", "keep", "--other", "Harbour Project/README.txt"}),
        nlohmann::json::parse(R"([{"path": )" + nlohmann::json(readme()).dump() +
                              R"(, "outcome": "kept the other version", "of": )" + nlohmann::json(copy).dump() + "}]"));
    expectVersions("here", 0);
}

TEST_F(Conflicts, KeepBothLeavesTwoOrdinaryFiles)
{
    EXPECT_EQ(expectOk({"conflicts", "keep", "--both", readme()}), "kept both versions  " + readme() + "\n");
    expectVersions("from the server", 1);
}

TEST_F(Conflicts, AVersionThatWasChangedMeanwhileIsNotTouched)
{
    writeFile(here(), "edited since");

    for (const char* const which : {"--this", "--other"}) {
        const ChildResult finished = run({"conflicts", "keep", which, readme()});

        EXPECT_EQ(finished.exitCode, 1) << which;
        EXPECT_THAT(finished.errors, HasSubstr("the conflict is not settled: ")) << which;
        EXPECT_THAT(finished.errors, HasSubstr("has changed since the last sync")) << which;
        EXPECT_EQ(readFile(here()), "edited since") << which;
        EXPECT_EQ(copies().size(), 1U) << which;
    }
}

TEST_F(Conflicts, SayWhichFileIsMeant)
{
    const std::string copy = text(copies().at(0));
    const ChildResult ofCopy = run({"conflicts", "keep", "--this", copy});
    const ChildResult ofNone = run({"conflicts", "keep", "--this", text(workspace("harbour") / "plans")});
    makeConflict(2);
    const ChildResult ofSeveral = run({"conflicts", "keep", "--other", readme()});

    EXPECT_EQ(ofCopy.exitCode, 1);
    EXPECT_THAT(ofCopy.errors, HasSubstr("is the other version of 'README.txt'; name that file"));
    EXPECT_EQ(ofNone.exitCode, 3);
    EXPECT_THAT(ofNone.errors, HasSubstr("there is no conflict about"));
    EXPECT_EQ(ofSeveral.exitCode, 1);
    EXPECT_THAT(ofSeveral.errors, HasSubstr("there are 2 other versions of"));
    EXPECT_EQ(copies().size(), 2U);
    expectOk({"conflicts", "keep", "--this", readme(), "--copy", copy});
    EXPECT_FALSE(fs::exists(toPath(copy)));
    EXPECT_EQ(copies().size(), 1U);
}

TEST_F(Conflicts, AreSettledInOneWayAtATime)
{
    for (const auto& which : std::vector<std::vector<std::string>>{{}, {"--this", "--other"}}) {
        std::vector<std::string> arguments{"conflicts", "keep", readme()};
        arguments.insert(arguments.end(), which.begin(), which.end());
        const ChildResult finished = run(arguments);

        EXPECT_EQ(finished.exitCode, 2);
        EXPECT_THAT(finished.errors, HasSubstr("--this, --other or --both"));
    }
    EXPECT_EQ(copies().size(), 1U);
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
