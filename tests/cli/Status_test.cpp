#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

constexpr int PendingCode = 8;

/// All drives are in sync at the start.
class Status : public ToolTest
{
protected:
    Status()
    {
        makeDemo();
        expectOk({"sync"});
    }

    [[nodiscard]] fs::path here(const std::string& name) const { return workspace("harbour") / name; }
    [[nodiscard]] fs::path there(const std::string& name) const { return server("harbour") / name; }
    [[nodiscard]] std::string path(const std::string& name) const { return text(here(name)); }

    void makeConflict()
    {
        writeFile(here("README.txt"), "from here");
        writeFile(there("README.txt"), "from the server");
        fs::last_write_time(here("README.txt"), fs::last_write_time(there("README.txt")) - std::chrono::hours(1));
        EXPECT_EQ(run({"sync", readme()}).exitCode, 7);
    }

    /// The states by local path.
    std::map<std::string, std::string> states(std::vector<std::string> arguments)
    {
        std::map<std::string, std::string> found;
        arguments.insert(arguments.begin(), "status");
        for (const auto& item : expectJson(arguments))
            found[item["path"]] = item["state"];
        return found;
    }
};

TEST_F(Status, SaysThatEverythingIsInSync)
{
    EXPECT_EQ(expectOk({"status", "--exit-code"}), "Total: everything is in sync\n");
    EXPECT_EQ(expectOk({"status", "--short"}), "");
    EXPECT_EQ(expectJson({"status"}), nlohmann::json::array());
}

TEST_F(Status, ListsWhatIsLeftOutOnlyIfAskedFor)
{
    writeFile(here("a.tmp"), "x");
    writeFile(there("build/x.txt"), "x");
    expectOk({"drive", "set", "Harbour Project", "--ignore", "*.tmp", "--ignore", "build/"});

    EXPECT_EQ(expectOk({"status", "--exit-code"}), "Total: everything is in sync\n");
    const std::string shown = expectOk({"status", "--ignored", "Harbour Project"});

    EXPECT_THAT(
        shown, HasSubstr("left out               " + path("a.tmp") + ": It is left out by the pattern '*.tmp'"));
    EXPECT_THAT(shown, HasSubstr("by the pattern 'build/'"));
    EXPECT_THAT(shown, HasSubstr("Total: 2 left out\n"));
}

TEST_F(Status, ListsWhatIsNotInSyncAndWhy)
{
    makeConflict();
    expectOk({"run", "lock", path("survey/notes.txt")});
    writeFile(here("plans/new.txt"), "x");
    writeFile(there("remote/new.txt"), "x");
    writeFile(here("plans/ground floor.txt"), "changed here");
    writeFile(there("survey/2024-05-01.csv"), "changed on the server");
    writeFile(here("x"), "a file");
    writeFile(there("x/inner.txt"), "in a folder");
    EXPECT_EQ(run({"sync", path("x")}).exitCode, 1);

    const ChildResult shown = run({"status", text(workspace("harbour"))});
    const ChildResult brief = run({"status", "--short", "--exit-code", "Harbour Project"});
    std::string copy;
    for (const auto& [path, state] : states({"Harbour Project"}))
        copy = state == "conflict" ? path : copy;

    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_THAT(linesOf(brief.output),
        UnorderedElementsAre("A " + path("plans/new.txt"), "N " + path("remote"), "N " + path("remote/new.txt"),
            "M " + path("plans/ground floor.txt"), "S " + path("survey/2024-05-01.csv"), "F " + path("x"),
            "L " + path("survey/notes.txt"), "C " + copy));
    EXPECT_EQ(brief.exitCode, PendingCode);
    EXPECT_THAT(shown.output, HasSubstr("\nonly here              " + path("plans/new.txt") + "\n"));
    EXPECT_THAT(
        shown.output, HasSubstr("\nconflict copy          " + copy + ": other version of 'README.txt', from here\n"));
    EXPECT_THAT(shown.output, HasSubstr("\nfailed                 " + path("x") + ": '"));
    EXPECT_THAT(shown.output, HasSubstr("is a file on one side and a folder on the other; rename one.\n"));
    EXPECT_THAT(shown.output, HasSubstr(path("survey/notes.txt") + ": locked by "));
    EXPECT_THAT(linesOf(shown.output).back(),
        AllOf(HasSubstr("1 changed here"), HasSubstr("1 conflict copy"), HasSubstr("1 failed"), HasSubstr("1 locked"),
            HasSubstr("2 only on the server")));
}

TEST_F(Status, LooksAtTheItemsThatAreNamed)
{
    writeFile(here("plans/new.txt"), "x");
    writeFile(here("survey/new.txt"), "x");
    writeFile(workspace("team") / "new.txt", "x");

    EXPECT_THAT(states({}), testing::SizeIs(3));
    EXPECT_THAT(states({path("plans")}), ElementsAre(std::pair(path("plans/new.txt"), "only-here")));
    EXPECT_THAT(states({path("plans/new.txt"), "Bridge Team"}),
        ElementsAre(std::pair(path("plans/new.txt"), "only-here"),
            std::pair(text(workspace("team") / "new.txt"), "only-here")));
    EXPECT_THAT(states({readme()}), IsEmpty());
    const ChildResult missing = run({"status", path("none.txt"), path("plans")});
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_THAT(missing.errors, HasSubstr("none.txt"));
    EXPECT_THAT(missing.output, HasSubstr("plans"));
}

TEST_F(Status, EndsWithItsOwnCodeOnlyIfAsked)
{
    expectOk({"run", "lock", readme()});
    EXPECT_EQ(run({"status", "--exit-code", readme()}).exitCode, 0);
    writeFile(here("plans/new.txt"), "x");

    EXPECT_EQ(run({"status", path("plans")}).exitCode, 0);
    EXPECT_EQ(run({"status", "--exit-code", path("plans")}).exitCode, PendingCode);
}

TEST_F(Status, SaysThatADriveIsOffline)
{
    writeFile(here("plans/new.txt"), "x");
    expectOk({"drive", "set", "Harbour Project", "--offline", "yes"});

    const ChildResult finished = run({"status", "--exit-code"});

    EXPECT_EQ(finished.exitCode, PendingCode);
    EXPECT_EQ(finished.output, "offline                " + text(workspace("harbour")) +
                                   ": The drive 'Harbour Project' is offline\nTotal: 1 offline\n");
    EXPECT_THAT(states({"Harbour Project"}), ElementsAre(std::pair(text(workspace("harbour")), "offline")));
}

TEST_F(Status, FailsIfTheSyncApplicationCannotTell)
{
    expectOk({"service", "fail", "getProperties", "quota exceeded"});

    const ChildResult finished = run({"status"});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, EndsWith("tessaport: quota exceeded\n"));
    EXPECT_THAT(finished.output, Not(HasSubstr("in sync")));
}

TEST_F(Status, AsksASyncApplicationWithoutSyncStatesForEachFolder)
{
    const ChildResult finished =
        run({"--api-folder", text(toPath(VELMORA_VENDORS_FOLDER) / "fitting"), "status", "--short"});

    EXPECT_EQ(finished.exitCode, 0) << finished.description();
    EXPECT_THAT(linesOf(finished.output), testing::SizeIs(2));
    EXPECT_THAT(
        linesOf(finished.output), testing::Each(testing::AllOf(testing::StartsWith("A "), EndsWith("file 0.txt"))));
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
