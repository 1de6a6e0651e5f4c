#include <set>

#include <gmock/gmock.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "tests/cli/ToolTest.h"
#include "tests/cli/UnreadableFile.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

class Changes : public ToolTest
{
protected:
    Changes() { makeDemo(); }

    std::string source(const std::string& name, const std::string& content)
    {
        const fs::path file = folder / "sources" / toPath(name);
        writeFile(file, content);
        return text(file);
    }

    [[nodiscard]] std::string plans() const { return text(workspace("harbour") / "plans"); }

    void setDrive(const std::string& member, bool value)
    {
        auto drives = nlohmann::json::parse(readFile(home / "drives.json"));
        drives[0][member] = value;
        writeFile(home / "drives.json", drives.dump());
    }
};

TEST_F(Changes, MkdirMakesNestedFoldersOnBothSides)
{
    const std::string path = plans() + "/2024/Übersicht/a";

    EXPECT_EQ(expectOk({"mkdir", path}), "created  " + path + '\n');

    EXPECT_TRUE(fs::is_directory(toPath(path)));
    EXPECT_TRUE(fs::is_directory(server("harbour") / toPath("plans/2024/Übersicht/a")));
    EXPECT_EQ(expectOk({"mkdir", path + '/'}), "exists  " + path + "/\n");
}

TEST_F(Changes, MkdirMakesAFolderThatIsOnlyInTheWorkspaceOnTheServerToo)
{
    const std::string path = plans() + "/half";
    fs::create_directory(toPath(path));

    EXPECT_EQ(expectOk({"mkdir", path}), "created  " + path + '\n');

    EXPECT_TRUE(fs::is_directory(server("harbour") / "plans/half"));
    EXPECT_EQ(expectOk({"mkdir", path}), "exists  " + path + '\n');
}

TEST_F(Changes, DryRunsOnlyShowWhatWouldBeDone)
{
    const std::string file = source("new.txt", "new");
    const std::string before = expectOk({"tree", "--json"});

    EXPECT_THAT(expectOk({"mkdir", "-n", plans() + "/x"}), HasSubstr("would be created"));
    EXPECT_THAT(expectOk({"add", "-n", file, plans()}), HasSubstr("would be added"));
    EXPECT_THAT(expectOk({"rm", "-n", "-r", plans()}), HasSubstr("would be deleted"));
    EXPECT_THAT(expectOk({"sync", "-n"}), HasSubstr("would come down"));
    EXPECT_THAT(expectOk({"sync", "--dry-run"}), HasSubstr("would go up"));
    EXPECT_THAT(expectOk({"run", "-n", "lock", readme()}), HasSubstr("would run"));

    EXPECT_EQ(expectOk({"tree", "--json"}), before);
}

TEST_F(Changes, MkdirRefusesPathsOutsideTheDrivesAndInsideFiles)
{
    const ChildResult finished = run({"mkdir", "/etc/x", readme() + "/x", plans() + "/good"});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("'/etc/x': it is on no drive"));
    EXPECT_THAT(finished.errors, HasSubstr("is a file"));
    EXPECT_TRUE(fs::is_directory(toPath(plans() + "/good")));
}

TEST_F(Changes, AddTakesTheGoodFilesOfABatchAndNamesTheOthers)
{
    const std::string good = source("gut – добре.txt", "good");
    const std::string clash = source("details", "a folder of this name is there");
    const std::string twin = source("other/gut – добре.txt", "same name");
    const std::string missing = text(folder / "missing");
    std::vector<std::string> arguments{"--json", "add", missing, good, clash, twin, text(folder)};
#ifndef _WIN32 // No file there can have such a name, be a pipe or, under Wine, a link that leads to nothing.
    fs::create_symlink(missing, folder / "dangling");
    arguments.push_back(text(folder / "dangling"));
    arguments.push_back(source("what?.txt", "not for every platform"));
    arguments.push_back(source("back\\slash", "x"));
    arguments.push_back(text(folder / "pipe"));
    ASSERT_EQ(mkfifo(arguments.back().c_str(), 0600), 0);
#endif
    const std::size_t files = arguments.size() - 2;
    arguments.push_back(plans());

    const ChildResult finished = run(arguments);

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(readFile(toPath(plans() + "/gut – добре.txt")), "good");
    EXPECT_EQ(readFile(server("harbour") / toPath("plans/gut – добре.txt")), "good");
    const auto outcomes = nlohmann::json::parse(finished.output);
    EXPECT_EQ(outcomes.size(), files);
    for (const auto& outcome : outcomes) {
        EXPECT_EQ(outcome["outcome"] == "added", outcome["path"] == good) << outcome;
        if (outcome["path"] == good)
            continue;
        const std::string line =
            "'" + outcome["path"].get<std::string>() + "': " + outcome["reason"].get<std::string>();
        EXPECT_THAT(finished.errors, HasSubstr(line));
    }
    EXPECT_EQ(linesOf(finished.errors).size(), files - 1) << finished.errors;
    EXPECT_EQ(std::distance(fs::directory_iterator(toPath(plans())), {}), 4);
}

TEST_F(Changes, AddSaysWhyAFileIsRefused)
{
    const std::string clash = source("details", "a folder of this name is there");
    EXPECT_THAT(run({"add", clash, plans()}).errors, HasSubstr("'" + clash + "': a folder has this name\n"));
#ifndef _WIN32 // No file there can have such a name.
    const std::string name = source("what?.txt", "not for every platform");
    EXPECT_THAT(run({"can-add", name, plans()}).errors,
        HasSubstr("'" + name + "': the sync application does not accept this name\n"));
#endif
}

TEST_F(Changes, AddEndsWithCode1WhenFilesFailInDifferentWays)
{
    const std::string missing = text(folder / "missing");

    EXPECT_EQ(run({"add", missing, plans()}).exitCode, 3);
    const std::string whole = text(folder); // Holds the folder to which it would be added.
    EXPECT_EQ(run({"add", whole, missing, plans()}).exitCode, 1);
    EXPECT_EQ(run({"add", missing, whole, plans()}).exitCode, 1);
}

TEST_F(Changes, AddNamesEveryFileOfARequestThatFails)
{
    expectOk({"sync"});
    const std::string one = source("one.txt", "1");
    const std::string two = source("two.txt", "2");
    fs::remove(home / "lock");
    fs::create_directory(home / "lock");

    const ChildResult finished = run({"--json", "add", one, two, plans()});

    EXPECT_EQ(finished.exitCode, 1);
    const auto outcomes = nlohmann::json::parse(finished.output);
    ASSERT_EQ(outcomes.size(), 2U);
    EXPECT_EQ(outcomes[0]["path"], one);
    EXPECT_EQ(outcomes[1]["path"], two);
    EXPECT_THAT(outcomes[0]["reason"], HasSubstr("lock"));
    EXPECT_EQ(linesOf(finished.errors).size(), 2U);
}

#ifndef _WIN32 // Where a folder cannot be made read-only by its permissions.
TEST_F(Changes, AddReportsThatTheServiceCouldNotSaveItsState)
{
    expectOk({"sync"});
    const std::string file = source("one.txt", "1");
    const UnreadableFile rightsDropped(toPath(source("unreadable", "")));
    fs::permissions(home / "state", fs::perms::owner_read | fs::perms::owner_exec);

    const ChildResult finished = run({"add", file, plans()});

    fs::permissions(home / "state", fs::perms::owner_all);
    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(finished.output, "added  " + file + '\n');
    EXPECT_THAT(finished.errors, HasSubstr("could not save what it has to remember"));
}
#endif

TEST_F(Changes, RunAppliesTheCommandToTheItemsThatExist)
{
    const std::string missing = plans() + "/none";

    const ChildResult finished = run({"--json", "run", "lock", missing, readme()});

    EXPECT_EQ(finished.exitCode, 3);
    const auto outcomes = nlohmann::json::parse(finished.output);
    EXPECT_EQ(outcomes[0]["path"], missing);
    EXPECT_EQ(outcomes[0]["outcome"], "failed");
    EXPECT_EQ(outcomes[1]["path"], readme());
    EXPECT_EQ(outcomes[1]["outcome"], "updated");
    EXPECT_EQ(run({"run", "lock", missing}).exitCode, 3);
}

TEST_F(Changes, AddTakesManyFilesInFewRequests)
{
    std::vector<std::string> arguments{"add"};
    for (int i = 0; i < 250; ++i)
        arguments.push_back(source(std::to_string(i) + ".txt", std::to_string(i)));
    arguments.push_back(plans());

    EXPECT_EQ(linesOf(expectOk(arguments)).size(), 250U);

    for (int i = 0; i < 250; ++i)
        EXPECT_EQ(readFile(server("harbour") / "plans" / (std::to_string(i) + ".txt")), std::to_string(i));
}

TEST_F(Changes, AddReplacesAnExistingFile)
{
    const std::string file = source("README.txt", "the new version");

    EXPECT_EQ(expectOk({"add", file, text(workspace("harbour"))}), "updated  " + file + '\n');

    EXPECT_EQ(readFile(toPath(readme())), "the new version");
    EXPECT_EQ(readFile(server("harbour") / "README.txt"), "the new version");
}

TEST_F(Changes, AddRefusesAFileThatCannotBeRead)
{
    const std::string file = source("secret.txt", "secret");
    const UnreadableFile unreadable(toPath(file));

    const ChildResult finished = run({"add", file, source("open.txt", "open"), plans()});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("'" + file + "': it cannot be read; check its permissions"));
    EXPECT_EQ(readFile(toPath(plans() + "/open.txt")), "open");
    EXPECT_FALSE(fs::exists(toPath(plans() + "/secret.txt")));
}

TEST_F(Changes, AddAndRmRefuseAReadOnlyOrOfflineDrive)
{
    const std::string file = source("new.txt", "new");
    for (const auto& [member, value] : {std::pair<std::string, bool>{"writable", false}, {"offline", true}}) {
        setDrive(member, value);

        EXPECT_EQ(run({"can-add", file, plans()}).exitCode, 1);
        const ChildResult finished = run({"add", file, plans()});
        EXPECT_EQ(finished.exitCode, 1);
        EXPECT_THAT(finished.errors, HasSubstr(value ? "The drive 'Harbour Project' is offline\n"
                                                     : "The drive 'Harbour Project' is read-only\n"));
        EXPECT_FALSE(fs::exists(toPath(plans() + "/new.txt")));
        EXPECT_EQ(run({"rm", "-y", readme()}).exitCode, 1);
        setDrive(member, !value);
    }
}

TEST_F(Changes, RmDeletesWhatItCanAndNamesTheRest)
{
    expectOk({"run", "lock", readme()});
    const std::string missing = plans() + "/none";

    const ChildResult finished =
        run({"rm", "-r", "-y", missing, readme(), text(workspace("harbour")), plans() + "/details"});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(finished.output, "deleted  " + plans() + "/details\n");
    EXPECT_THAT(finished.errors, HasSubstr("'" + missing + "': no such item"));
    EXPECT_THAT(finished.errors, HasSubstr("'" + readme() + "': not deleted: "));
    EXPECT_THAT(finished.errors, HasSubstr("locked"));
    EXPECT_THAT(finished.errors, HasSubstr("the root of a drive cannot be deleted"));
    EXPECT_TRUE(fs::exists(toPath(readme())));
    EXPECT_FALSE(fs::exists(toPath(plans() + "/details")));
    EXPECT_FALSE(fs::exists(server("harbour") / "plans/details"));
}

TEST_F(Changes, RmDeletesFoldersThatAreNotEmptyOnlyWithR)
{
    expectOk({"mkdir", "-p", plans() + "/new/empty"});

    const ChildResult finished = run({"rm", "-y", plans() + "/details", plans() + "/new/empty"});
    const ChildResult serverOnly = run({"rm", "-y", "-n", text(workspace("archive") / "1998")});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(finished.output, "deleted  " + plans() + "/new/empty\n");
    EXPECT_THAT(finished.errors, HasSubstr("add -r to delete it with everything in it"));
    EXPECT_TRUE(fs::exists(toPath(plans() + "/details/stairs.txt")));
    EXPECT_TRUE(fs::exists(server("harbour") / "plans/details/stairs.txt"));
    EXPECT_EQ(serverOnly.exitCode, 1);
    expectOk({"rm", "-ry", plans() + "/details"});
    EXPECT_FALSE(fs::exists(toPath(plans() + "/details")));
    EXPECT_FALSE(fs::exists(server("harbour") / "plans/details"));
}

TEST_F(Changes, RmDeletesNothingWhenItCannotAsk)
{
    const ChildResult finished = run({"rm", readme()});

    EXPECT_EQ(finished.exitCode, 2);
    EXPECT_THAT(finished.errors, HasSubstr("-y"));
    EXPECT_TRUE(fs::exists(toPath(readme())));
}

TEST_F(Changes, RmAsksOnATerminal)
{
    for (const auto& [answer, deleted] : {std::pair<std::string, bool>{"n\n", false}, {"\n", false}, {"y\n", true}}) {
        ChildProgram program;
        program.arguments = {"rm", readme()};
        program.input = answer;

        const ChildResult finished = runOnTerminal(program);

        EXPECT_THAT(finished.output, HasSubstr("Delete 1 item, here and on the server? [y/N]"));
        EXPECT_EQ(fs::exists(toPath(readme())), !deleted) << finished.output;
        EXPECT_EQ(finished.exitCode, 0) << "an answer is no failure";
    }
}

TEST_F(Changes, RmCountsTheItemsInFoldersBeforeItAsks)
{
    ChildProgram program;
    program.arguments = {"rm", "-r", plans(), readme()};
    program.input = "n\n";

    const std::string output = runOnTerminal(program).output;

    EXPECT_THAT(output, HasSubstr(plans() + "/  (5 items in it)"));
    EXPECT_THAT(output, HasSubstr("Delete 2 items and the 5 items in them, here and on the server? [y/N]"));
    EXPECT_THAT(output, HasSubstr("kept  " + plans()));
    EXPECT_TRUE(fs::exists(toPath(plans())));
}

TEST_F(Changes, SyncBringsBothSidesUpToDate)
{
    const std::string output = expectOk({"sync"});

    EXPECT_THAT(output, HasSubstr("downloaded  " + text(workspace("team") / toPath("model/図面.txt"))));
    EXPECT_EQ(readFile(workspace("team") / toPath("model/図面.txt")), "橋の図面\n");
    EXPECT_TRUE(fs::exists(server("harbour") / "survey/notes.txt"));
    EXPECT_EQ(expectOk({"sync", "-n"}), "");
    EXPECT_EQ(linesOf(expectOk({"sync"})).back(), "Total: 4 in sync");
}

TEST_F(Changes, SyncKeepsBothVersionsOfAFileChangedOnBothSides)
{
    expectOk({"sync"});
    writeFile(toPath(readme()), "changed here");
    writeFile(server("harbour") / "README.txt", "changed over there");

    const ChildResult finished = run({"sync", readme()});

    EXPECT_EQ(finished.exitCode, 7);
    EXPECT_THAT(finished.output, HasSubstr("kept twice  "));
    std::set<std::string> contents;
    for (const auto& entry : fs::directory_iterator(workspace("harbour"))) {
        if (entry.is_regular_file())
            contents.insert(readFile(entry.path()));
    }
    EXPECT_THAT(contents, testing::ElementsAre("changed here", "changed over there"));
}

TEST_F(Changes, SyncDoesManyItemsInBatchesAndNamesTheOneThatFailed)
{
    std::vector<std::string> arguments{"sync"};
    for (int i = 0; i < 205; ++i) {
        const std::string name = "batch/" + std::to_string(i) + ".txt";
        writeFile(workspace("harbour") / name, std::to_string(i));
        arguments.push_back(text(workspace("harbour") / name));
    }
    const fs::path clash = workspace("harbour") / "batch/150.txt";
    fs::create_directories(server("harbour") / "batch/150.txt");

    const ChildResult finished = run(arguments);

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(linesOf(finished.output).size(), 205U) << "with the total";
    ASSERT_EQ(linesOf(finished.errors).size(), 1U) << finished.errors;
    EXPECT_THAT(finished.errors, HasSubstr("'" + text(clash) + "': not synced"));
    EXPECT_EQ(readFile(server("harbour") / "batch/204.txt"), "204");
}

TEST_F(Changes, SyncOfAFolderNamesTheFileInItThatFailed)
{
    writeFile(workspace("harbour") / "survey/bad:name.txt", "x");

    const ChildResult finished = run({"sync", text(workspace("harbour"))});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("bad:name.txt': not synced"));
    EXPECT_TRUE(fs::exists(server("harbour") / "survey/notes.txt"));
}

TEST_F(Changes, SyncOneUsesTheOneShotOperation)
{
    const std::string notes = text(workspace("harbour") / "survey/notes.txt");

    EXPECT_EQ(expectOk({"sync", "--one", notes}), "in sync  " + notes + '\n');

    EXPECT_TRUE(fs::exists(server("harbour") / "survey/notes.txt"));
    EXPECT_EQ(run({"sync", "--one", notes + "x"}).exitCode, 3);
}

TEST_F(Changes, ClosedUploadsTheFile)
{
    writeFile(toPath(readme()), "changed by a process");

    expectOk({"closed", "--process", "4711", readme()});

    EXPECT_EQ(readFile(server("harbour") / "README.txt"), "changed by a process");
}

TEST_F(Changes, RunLocksUnlocksAndCopiesLinks)
{
    const auto stateOf = [this](const std::string& id) {
        for (const auto& command : expectJson({"commands", readme()})) {
            if (command["id"] == id)
                return std::pair<bool, bool>(command["isEnabled"], command["isChecked"]);
        }
        ADD_FAILURE() << "no command " << id;
        return std::pair(false, false);
    };
    ASSERT_EQ(stateOf("unlock").first, false);

    expectOk({"run", "Lock", readme()});

    EXPECT_TRUE(stateOf("lock").second);
    EXPECT_TRUE(stateOf("unlock").first);
    EXPECT_EQ(run({"run", "none", readme()}).exitCode, 3);
    expectOk({"run", "copy-link", readme()});
    EXPECT_THAT(readFile(home / "clipboard.txt"), HasSubstr("tessaport://tp."));
    expectOk({"run", "unlock", readme()});
    EXPECT_EQ(run({"run", "unlock", readme()}).exitCode, 1);
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
