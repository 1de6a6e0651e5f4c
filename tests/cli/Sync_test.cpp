#include <algorithm>
#include <map>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

/// All drives are in sync at the start.
class Sync : public ToolTest
{
protected:
    Sync()
    {
        makeDemo();
        expectOk({"sync"});
    }

    [[nodiscard]] fs::path here(const std::string& name) const { return workspace("harbour") / name; }
    [[nodiscard]] fs::path there(const std::string& name) const { return server("harbour") / name; }
    [[nodiscard]] std::string harbour() const { return text(workspace("harbour")); }

    void changeOnBothSides(const std::string& name, bool newerHere)
    {
        writeFile(here(name), "from here");
        writeFile(there(name), "from the server");
        const auto now = fs::last_write_time(here(name));
        fs::last_write_time(newerHere ? there(name) : here(name), now - std::chrono::hours(1));
    }
};

TEST_F(Sync, SaysWhichWayEachFileWent)
{
    writeFile(here("plans/new here.txt"), "x");
    writeFile(here("README.txt"), "changed here");
    writeFile(there("plans/new there.txt"), "x");
    writeFile(there("survey/notes.txt"), "changed there");

    const auto lines = linesOf(expectOk({"sync", harbour()}));

    EXPECT_THAT(lines, Contains("uploaded  " + text(here("plans/new here.txt"))));
    EXPECT_THAT(lines, Contains("uploaded  " + text(here("README.txt"))));
    EXPECT_THAT(lines, Contains("downloaded  " + text(here("plans/new there.txt"))));
    EXPECT_THAT(lines, Contains("downloaded  " + text(here("survey/notes.txt"))));
    EXPECT_THAT(lines.back(), StartsWith("Total: "));
    EXPECT_THAT(lines.back(), HasSubstr("2 uploaded"));
    EXPECT_THAT(lines.back(), HasSubstr("2 downloaded"));
}

TEST_F(Sync, SaysWhichWayAFileWentThatWasAskedFor)
{
    writeFile(here("README.txt"), "changed here");

    EXPECT_EQ(expectOk({"sync", readme()}), "uploaded  " + readme() + "\nTotal: 1 uploaded\n");
    EXPECT_EQ(expectOk({"sync", readme()}), "in sync  " + readme() + "\nTotal: 1 in sync\n");
    writeFile(there("README.txt"), "changed on the server");
    EXPECT_EQ(expectJson({"sync", readme()}),
        nlohmann::json::parse("[{\"path\": " + nlohmann::json(readme()).dump() + ", \"outcome\": \"downloaded\"}]"));
}

TEST_F(Sync, PrintsNothingButErrorsIfItIsToBeQuiet)
{
    writeFile(here("README.txt"), "changed here");
    writeFile(here("x"), "a file");
    fs::create_directory(there("x"));

    const ChildResult failed = run({"sync", "-q", harbour()});
    fs::remove(here("x"));
    changeOnBothSides("README.txt", true);
    const ChildResult conflict = run({"sync", "--quiet", "--json"});

    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.output, "");
    EXPECT_EQ(linesOf(failed.errors).size(), 1U) << failed.errors;
    EXPECT_EQ(readFile(there("README.txt")), "from here");
    EXPECT_EQ(conflict.exitCode, 7);
    EXPECT_EQ(conflict.output + conflict.errors, "");
    EXPECT_EQ(run({"sync", "-q", "-n"}).exitCode, 2);
}

TEST_F(Sync, ListsARenameWhateverTheOrderOfTheNames)
{
    for (const auto& [from, to] : {std::pair<std::string, std::string>{"README.txt", "a.txt"}, {"a.txt", "z.txt"}}) {
        fs::rename(here(from), here(to));

        EXPECT_THAT(linesOf(expectOk({"sync", harbour()})), Contains("renamed  " + text(here(to)))) << from;
        EXPECT_TRUE(fs::exists(there(to)));
        EXPECT_FALSE(fs::exists(there(from)));
    }
    fs::rename(there("z.txt"), there("b.txt"));
    EXPECT_THAT(linesOf(expectOk({"sync", harbour()})), Contains("renamed  " + text(here("b.txt"))));
}

TEST_F(Sync, NamesTheVersionThatKeptTheNameInAConflict)
{
    for (const bool newerHere : {true, false}) {
        changeOnBothSides("README.txt", newerHere);

        const ChildResult finished = run({"sync", harbour()});

        EXPECT_EQ(finished.exitCode, 7);
        EXPECT_EQ(finished.errors, "");
        EXPECT_THAT(finished.output, HasSubstr("kept twice  " + text(here("README (conflict "))));
        EXPECT_THAT(finished.output,
            HasSubstr(newerHere ? "'README.txt' is the version from here, this is the one from the server\n"
                                : "'README.txt' is the version from the server, this is the one from here\n"));
        EXPECT_THAT(linesOf(finished.output).back(), HasSubstr("1 kept twice"));
        EXPECT_EQ(readFile(here("README.txt")), newerHere ? "from here" : "from the server");
        EXPECT_EQ(run({"sync", harbour()}).exitCode, 0);
    }
}

TEST_F(Sync, NamesTheVersionThatKeptTheNameInJson)
{
    changeOnBothSides("plans/ground floor.txt", false);

    const ChildResult finished = run({"--json", "sync", harbour()});

    EXPECT_EQ(finished.exitCode, 7);
    for (const auto& outcome : nlohmann::json::parse(finished.output)) {
        if (outcome["outcome"] != "kept twice")
            continue;
        EXPECT_EQ(outcome["of"], text(here("plans/ground floor.txt")));
        EXPECT_EQ(outcome["nameKeptBy"], "server");
        EXPECT_EQ(readFile(toPath(outcome["path"])), "from here");
        return;
    }
    ADD_FAILURE() << finished.output;
}

TEST_F(Sync, NamesAFileHereThatIsAFolderThere)
{
    writeFile(here("plans/x"), "a file");
    fs::create_directory(there("plans/x"));
    fs::create_directory(here("plans/y"));
    writeFile(there("plans/y"), "a file");

    const ChildResult finished = run({"sync", harbour()});

    EXPECT_EQ(finished.exitCode, 1);
    for (const std::string name : {"plans/x", "plans/y"})
        EXPECT_THAT(finished.errors, HasSubstr("tessaport: '" + text(here(name)) + "': not synced: ")) << name;
    EXPECT_EQ(linesOf(finished.errors).size(), 2U) << finished.errors;
    EXPECT_THAT(linesOf(finished.output).back(), HasSubstr("2 failed"));
}

TEST_F(Sync, GivesTheReasonOfTheServiceForWhatFailed)
{
    writeFile(here("plans/thing"), "x");
    fs::create_directories(there("plans/thing"));

    const ChildResult finished = run({"sync", harbour()});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("a file on one side and a folder on the other"));
    EXPECT_EQ(linesOf(finished.errors).size(), 1U) << finished.errors;
}

#ifndef _WIN32 // Windows makes no file of such a name.
TEST_F(Sync, GivesTheReasonOfTheServiceForANameThatIsNotAllowed)
{
    writeFile(here("plans/bad:name.txt"), "x");

    const ChildResult finished = run({"sync", harbour()});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("not a name that every platform accepts"));
    EXPECT_EQ(linesOf(finished.errors).size(), 1U) << finished.errors;
}

TEST_F(Sync, SaysInAdvanceWhatCannotBeSyncedInTheWordsOfASync)
{
    writeFile(here("plans/bad:name.txt"), "x");
    writeFile(here("con/inner/deep.txt"), "x");
    writeFile(there("nul.txt"), "x");
    writeFile(here("aux.txt"), "in sync already");
    writeFile(there("aux.txt"), "in sync already");

    const ChildResult before = run({"sync", "-n", harbour()});
    const ChildResult done = run({"sync", harbour()});

    EXPECT_EQ(before.exitCode, done.exitCode);
    EXPECT_EQ(linesOf(before.errors).size(), 3U) << before.errors;
    EXPECT_THAT(linesOf(before.errors), testing::UnorderedElementsAreArray(linesOf(done.errors)));
    EXPECT_THAT(before.output, testing::Not(HasSubstr("con")));
    EXPECT_THAT(before.output, testing::Not(HasSubstr("bad:name")));
}
#endif

TEST_F(Sync, SaysThatADriveIsOfflineOrReadOnly)
{
    writeFile(here("README.txt"), "changed here");
    const auto withDrive = [this](const std::string& member, bool value) {
        auto drives = nlohmann::json::parse(readFile(home / "drives.json"));
        drives[0][member] = value;
        writeFile(home / "drives.json", drives.dump());
        return run({"sync", readme()}).errors;
    };

    EXPECT_THAT(withDrive("writable", false), HasSubstr("read-only"));
    EXPECT_THAT(withDrive("offline", true), HasSubstr("offline"));
}

TEST_F(Sync, SaysInAdvanceWhatADriveRefusesThatIsOfflineOrReadOnly)
{
    writeFile(here("README.txt"), "changed here");
    writeFile(there("plans/ground floor.txt"), "changed on the server");
    changeOnBothSides("survey/notes.txt", true);
    fs::create_directory(here("new"));
    writeFile(here("new/inside.txt"), "new");
    for (const char* const refusal : {"--offline", "--read-only"}) {
        expectOk({"drive", "set", "Harbour Project", refusal, "yes"});

        const ChildResult before = run({"sync", "-n", harbour()});
        const ChildResult done = run({"sync", harbour()});

        EXPECT_EQ(before.exitCode, 1);
        EXPECT_EQ(done.exitCode, 1);
        EXPECT_THAT(linesOf(before.errors), testing::UnorderedElementsAreArray(linesOf(done.errors))) << refusal;
        EXPECT_THAT(before.output, testing::Not(HasSubstr("would go up")));
        EXPECT_EQ(before.output.empty(), refusal == std::string("--offline")) << before.output;
        expectOk({"drive", "set", "Harbour Project", refusal, "no"});
    }
}

TEST_F(Sync, OfADriveWhoseServerFolderIsAFileFailsAndTheOtherDrivesAreSynced)
{
    fs::rename(server("harbour"), home / "kept");
    writeFile(server("harbour"), "not a folder");
    writeFile(server("documents") / "new.txt", "new");

    const ChildResult before = run({"sync", "-n"});
    const ChildResult done = run({"sync"});

    for (const ChildResult& result : {before, done}) {
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(linesOf(result.errors).size(), 1U) << result.errors;
        EXPECT_THAT(result.errors, HasSubstr("is not a folder"));
    }
    EXPECT_THAT(before.output, HasSubstr("would come down  "));
    EXPECT_THAT(done.output, HasSubstr("downloaded  "));
    EXPECT_EQ(readFile(server("harbour")), "not a folder");
    EXPECT_EQ(run({"drives"}).exitCode, 0);
}

TEST_F(Sync, OfADriveWhoseServerFolderIsMissingSaysSoAndMakesNoFolder)
{
    expectOk({"sync"});
    fs::rename(server("harbour"), home / "not mounted");
    writeFile(here("new.txt"), "new");

    const ChildResult before = run({"sync", "-n", harbour()});
    const ChildResult done = run({"sync", harbour()});

    for (const ChildResult& result : {before, done}) {
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(
            result.errors, HasSubstr("a folder of the drive 'Harbour Project', is missing. Mount or restore it"));
    }
    EXPECT_THAT(before.output, Not(HasSubstr("would")));
    EXPECT_FALSE(fs::exists(server("harbour")));
}

TEST_F(Sync, SaysInAdvanceWhichWayFilesWouldGo)
{
    writeFile(here("README.txt"), "changed here");
    writeFile(there("plans/ground floor.txt"), "changed on the server");
    changeOnBothSides("survey/notes.txt", true);
    writeFile(here("equal.txt"), "equal");
    writeFile(there("equal.txt"), "equal");
    fs::rename(here("survey/2024-05-01.csv"), here("survey/first.csv"));

    const auto before = linesOf(expectOk({"sync", "-n", harbour()}));
    const ChildResult done = run({"sync", harbour()});

    // The words for what would be done, in the place of those for what was done.
    const std::map<std::string, std::string> words{{"would go up", "uploaded"}, {"would come down", "downloaded"},
        {"would be renamed", "renamed"}, {"would be kept twice", "kept twice"}};
    std::vector<std::string> expected;
    for (const std::string& line : before)
        expected.push_back(words.at(line.substr(0, line.find("  "))) + line.substr(line.find("  ")));
    auto lines = linesOf(done.output);
    lines.pop_back(); // The total.
    lines.erase(std::remove(lines.begin(), lines.end(), "in sync  " + harbour()), lines.end());
    EXPECT_EQ(done.exitCode, 7);
    EXPECT_EQ(before.size(), 5U) << testing::PrintToString(before);
    EXPECT_THAT(lines, testing::UnorderedElementsAreArray(expected));
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
