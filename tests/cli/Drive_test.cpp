#include <chrono>
#include <future>
#include <map>
#include <set>
#include <stdexcept>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

class Drive : public ToolTest
{
protected:
    Drive()
    {
        fs::create_directories(here);
        fs::create_directories(there);
    }

    ChildResult add(const std::string& name, const fs::path& workspace, const fs::path& server)
    {
        return run({"drive", "add", name, "--workspace", text(workspace), "--server", text(server)});
    }

    [[nodiscard]] nlohmann::json drivesFile() const
    {
        return nlohmann::json::parse(readFile(home / "drives.json"), nullptr, false);
    }

    void expectRefused(const ChildResult& finished, int exitCode, const std::string& reason)
    {
        EXPECT_EQ(finished.exitCode, exitCode) << reason;
        EXPECT_THAT(finished.errors, HasSubstr(reason));
        EXPECT_EQ(finished.output, "");
    }

    const fs::path here = folder / toPath("my plans/ws");
    const fs::path there = folder / toPath("Sérver");
};

TEST_F(Drive, AddMakesAHomeAndTheFoldersAreSynced)
{
    writeFile(here / "from here.txt", "here");
    writeFile(there / "from there.txt", "there");

    const auto added = expectJson({"drive", "add", toPath("Plans für 2024").u8string(), "--workspace", text(here),
        "--server", text(there), "--type", "Morrow", "--locking"});

    EXPECT_EQ(added["drive"]["driveType"], "Quorvex.DataSourceType.Morrow");
    EXPECT_EQ(added["drive"]["locking"], true);
    EXPECT_EQ(added["drive"]["offline"], false);
    EXPECT_EQ(added["drive"]["readOnly"], false);
    EXPECT_EQ(added["drive"]["workspaceLocation"], withBackslashes(text(here)));
    EXPECT_EQ(added["drive"]["serverLocation"], withBackslashes(text(there)));
    expectOk({"sync"});
    EXPECT_EQ(readFile(here / "from there.txt"), "there");
    EXPECT_EQ(readFile(there / "from here.txt"), "here");
}

TEST_F(Drive, AddSaysWhereTheFoldersAreAndHowToGoOn)
{
    const ChildResult finished = add("Plans", here, there);

    EXPECT_EQ(finished.exitCode, 0) << finished.errors;
    EXPECT_THAT(finished.output, HasSubstr(text(here)));
    EXPECT_THAT(finished.output, HasSubstr(text(there)));
    EXPECT_THAT(finished.output, HasSubstr("tessaport sync"));
}

TEST_F(Drive, AddRefusesFoldersThatOverlapOrCannotBeUsed)
{
    makeDemo();
    const std::string before = readFile(home / "drives.json");
    writeFile(folder / "file", "");
    const fs::path other = workspace("harbour");

    expectRefused(add("New", here, folder / "none"), 3, "does not exist; create it first");
    EXPECT_FALSE(fs::exists(folder / "none"));
    expectRefused(add("New", folder / "file", there), 1, "is not a folder");
    expectRefused(add("New", here, here), 1, "of the drive 'New' overlap");
    expectRefused(add("New", here.parent_path(), here), 1, "of the drive 'New' overlap");
    expectRefused(add("New", other / "plans", there), 1, "of the drive 'Harbour Project' overlap");
    expectRefused(add("New", here, home), 1, "overlap");
    expectRefused(run({"drive", "add", "New", "--workspace", text(here), "--server", text(there), "--type", "Disk"}), 1,
        "'Quorvex.DataSourceType.Disk' of a drive is not one of");

    EXPECT_EQ(readFile(home / "drives.json"), before);
    EXPECT_TRUE(fs::is_empty(here) && fs::is_empty(there));
}

#ifndef _WIN32
TEST_F(Drive, AddRefusesFoldersThatALinkJoinsOrThatCannotBeWritten)
{
    makeDemo();
    const std::string before = readFile(home / "drives.json");
    fs::create_directory_symlink(workspace("harbour") / "plans", folder / "link");
    fs::create_directory_symlink(here, folder / "again");

    expectRefused(add("New", folder / "link", there), 1, "of the drive 'Harbour Project' overlap");
    expectRefused(add("New", here, folder / "again"), 1, "of the drive 'New' overlap");
    expectRefused(add("New", "/proc", there), 1, "cannot be written to");
    expectRefused(add("New", here, "/proc"), 1, "cannot be written to");

    EXPECT_EQ(readFile(home / "drives.json"), before);
}

// A shell makes the folder that has the number of the tool's process in its name, and becomes the tool.
TEST_F(Drive, AddRemovesNoFolderThatIsThere)
{
    ChildProgram shell;
    shell.program = "/bin/sh";
    shell.arguments = {"-c",
        R"(mkdir "$1/.tessaport-$$" && exec "$2" --home "$4" drive add Plans --workspace "$1" --server "$3")", "sh",
        text(here), TESSAPORT_TOOL, text(there), text(home)};

    const ChildResult finished = runProgram(shell);

    EXPECT_TRUE(finished.exitedWith(0)) << finished.description();
    EXPECT_FALSE(fs::is_empty(here));
    EXPECT_TRUE(fs::is_empty(there));
}

/// Holds the lock that the service holds while a request changes files.
class HeldHome
{
public:
    explicit HeldHome(const fs::path& home) : lock(open((home / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666))
    {
        if (lock < 0 || flock(lock, LOCK_EX) != 0)
            throw std::runtime_error("cannot lock the home");
    }
    ~HeldHome()
    {
        flock(lock, LOCK_UN); // A child process that has not started its program yet has a copy of the descriptor.
        close(lock);
    }
    HeldHome(const HeldHome&) = delete;
    HeldHome& operator=(const HeldHome&) = delete;

private:
    const int lock;
};

TEST_F(Drive, IsNotChangedWhileARequestChangesFiles)
{
    makeDemo();
    const std::string before = readFile(home / "drives.json");
    std::future<ChildResult> change;
    {
        const HeldHome held(home);
        change = std::async(std::launch::async, [this] {
            return run({"drive", "set", "Harbour Project", "--offline", "yes"});
        });

        // Long enough for the tool to have changed the file if it did not wait.
        EXPECT_EQ(change.wait_for(std::chrono::seconds(2)), std::future_status::timeout);
        EXPECT_EQ(readFile(home / "drives.json"), before);
    }

    EXPECT_EQ(change.get().exitCode, 0);
    EXPECT_EQ(drivesFile()[0]["offline"], true);
}
#endif

TEST_F(Drive, AddRefusesNamesThatCannotBeTypedOrToldApart)
{
    EXPECT_EQ(add("Plans", here, there).exitCode, 0);
    const std::string before = readFile(home / "drives.json");
    const fs::path more = folder / "more";
    fs::create_directories(more / "ws");
    fs::create_directories(more / "server");

    for (const auto& [name, reason] :
        std::map<std::string, std::string>{{"", "empty"}, {std::string(101, 'x'), "longer than 100 characters"},
            {"a/b", "slash"}, {"a\\b", "slash"}, {"a\tb", "cannot be shown"}, {"a\x7F", "cannot be shown"},
            {" a", "space"}, {"..", "names a folder"}, {"Plans", "another drive has it"}})
        expectRefused(add(name, more / "ws", more / "server"), 2, reason);

    EXPECT_EQ(readFile(home / "drives.json"), before);
}

TEST_F(Drive, AddMakesNoHomeAmongOtherFiles)
{
    writeFile(home / "letter.txt", "not a home");

    expectRefused(add("Plans", here, there), 1, "it holds something else; name another folder with --home");

    EXPECT_FALSE(fs::exists(home / "drives.json"));
}

// What a tool leaves that is killed while it makes a home.
TEST_F(Drive, AddCompletesAHomeThatHasNoStateYet)
{
    writeFile(home / "drives.json", "[]\n");

    expectOk({"drive", "add", "Plans", "--workspace", text(here), "--server", text(there)});

    EXPECT_EQ(expectJson({"drives"}).size(), 1U);
}

TEST_F(Drive, AddThatIsRefusedMakesNoHome)
{
    expectRefused(add("Plans", here, here), 1, "overlap");
    expectRefused(run({"drive", "add", "Plans", "--workspace", text(here), "--server", text(there), "--type", "None"}),
        1, "is not one of");

    EXPECT_FALSE(fs::exists(home / "drives.json"));
    EXPECT_FALSE(fs::exists(home / "service.json"));
    EXPECT_FALSE(fs::exists(home / ".drives.new"));
    makeDemo();
}

TEST_F(Drive, SetChangesWhatIsNamedAndKeepsTheRest)
{
    EXPECT_EQ(add("Plans", here, there).exitCode, 0);
    auto file = drivesFile();
    file[0]["colour"] = {{"of", "another version"}};
    writeFile(home / "drives.json", "\xEF\xBB\xBF" + file.dump());

    const std::string changed = expectOk({"drive", "set", "Plans", "--offline", "yes", "--read-only", "yes"});
    const auto renamed =
        expectJson({"drive", "set", "Plans", "--name", "Drawings", "--offline", "no", "--locking", "yes"});

    EXPECT_THAT(changed, HasSubstr("offline, read-only, without locks"));
    EXPECT_EQ(renamed["drive"]["name"], "Drawings");
    EXPECT_EQ(renamed["drive"]["readOnly"], true);
    file[0]["name"] = "Drawings";
    file[0]["writable"] = false;
    file[0]["locking"] = true;
    EXPECT_EQ(drivesFile(), file);
}

TEST_F(Drive, SetRefusesWhatItCannotDoAndChangesNothing)
{
    makeDemo();
    const std::string before = readFile(home / "drives.json");

    expectRefused(run({"drive", "set", "Harbour Projekt", "--offline", "yes"}), 3, "did you mean 'Harbour Project'?");
    expectRefused(run({"drive", "set", "Harbour Project"}), 2, "say what to change");
    expectRefused(run({"drive", "set", "Harbour Project", "--name", "Bridge Team"}), 2, "another drive has it");
    expectRefused(run({"drive", "set", "Harbour Project", "--offline", "maybe"}), 2, "--offline");
    expectOk({"service", "stop"});
    expectRefused(run({"drive", "set", "Harbour Project", "--offline", "yes"}), 5, "tessaport service start");

    EXPECT_EQ(readFile(home / "drives.json"), before);
}

TEST_F(Drive, PatternsAreAddedAndRemovedInTheirOrder)
{
    EXPECT_EQ(expectJson({"drive", "add", "Plans", "--workspace", text(here), "--server", text(there), "--ignore",
                  "*.log", "--ignore", "!keep.log"})["drive"]["ignore"],
        (nlohmann::json{"*.log", "!keep.log"}));

    const std::string changed =
        expectOk({"drive", "set", "Plans", "--ignore", "build/", "--ignore", "*.log", "--unignore", "!keep.log"});

    EXPECT_THAT(changed, HasSubstr("; leaves out build/, *.log."));
    EXPECT_EQ(expectJson({"drives"})[0]["ignore"], (nlohmann::json{"build/", "*.log"}));
    expectOk({"drive", "set", "Plans", "--unignore-all"});
    EXPECT_FALSE(drivesFile()[0].contains("ignore"));
}

TEST_F(Drive, APatternThatCannotBeUsedChangesNothing)
{
    expectRefused(run({"drive", "add", "Plans", "--workspace", text(here), "--server", text(there), "--ignore", "[a"}),
        1, "the pattern '[a' of the drive 'Plans' cannot be used: a bracket is not closed");
    EXPECT_EQ(add("Plans", here, there).exitCode, 0);
    const std::string before = readFile(home / "drives.json");

    expectRefused(run({"drive", "set", "Plans", "--ignore", "a\\b"}), 1, "write / between folders");
    expectRefused(run({"drive", "set", "Plans", "--unignore", "*.tmp"}), 3, "has no pattern '*.tmp'; it has none");

    EXPECT_EQ(readFile(home / "drives.json"), before);
}

TEST_F(Drive, ADamagedListIsKeptAndNamed)
{
    makeDemo();
    writeFile(home / "drives.json", "[{\"id\": ");

    expectRefused(run({"drive", "remove", "Harbour Project"}), 1, "is damaged");
    EXPECT_EQ(readFile(home / "drives.json"), "[{\"id\": ");

    fs::remove(home / "drives.json");
    fs::create_directory(home / "drives.json");
    expectRefused(run({"drive", "remove", "Harbour Project"}), 1, "is a folder and not a file; remove it");
}

TEST_F(Drive, IsListedWithItsStateAndItsNumberOfFiles)
{
    makeDemo();
    expectOk({"drive", "set", "Harbour Project", "--offline", "yes"});
    expectOk({"drive", "set", "Morrow Archive", "--read-only", "yes"});

    const std::vector<std::string> lines = linesOf(expectOk({"drives"}));
    const auto drives = expectJson({"drives"});

    ASSERT_EQ(lines.size(), 5U);
    EXPECT_THAT(lines[1], testing::ContainsRegex("offline +5 +- +.*workspace"));
    EXPECT_THAT(lines[2], testing::ContainsRegex("online +3 +3 +.*workspace"));
    EXPECT_THAT(lines[4], testing::ContainsRegex("online, read-only +1 +3 +.*workspace"));
    EXPECT_EQ(drives[0]["offline"], true);
    EXPECT_EQ(drives[0]["readOnly"], false);
    EXPECT_EQ(drives[0]["filesInWorkspace"], 5);
    EXPECT_EQ(drives[0]["filesOnServer"], nullptr);
    EXPECT_EQ(drives[3]["offline"], false);
    EXPECT_EQ(drives[3]["readOnly"], true);
    EXPECT_EQ(drives[3]["filesOnServer"], 3);
    EXPECT_EQ(drives[3]["root"]["name"], "Morrow Archive");
}

TEST_F(Drive, RemoveTouchesNoFileAndAddingTheFoldersAgainLosesNone)
{
    EXPECT_EQ(add("Plans", here, there).exitCode, 0);
    for (const char* name : {"same.txt", "changed.txt", "deleted here.txt", "deleted there.txt", "moved.txt"})
        writeFile(here / name, name);
    expectOk({"sync"});
    // As an earlier version of the service wrote it.
    const auto id = drivesFile()[0]["id"].get<std::string>();
    writeFile(home / "state" / (id + ".json"), R"({"version":2})");

    const std::string removed = expectOk({"drive", "remove", "Plans"});

    EXPECT_THAT(removed, HasSubstr(text(here)));
    EXPECT_EQ(drivesFile(), nlohmann::json::array());
    EXPECT_TRUE(fs::is_empty(home / "state"));
    EXPECT_EQ(readFile(here / "same.txt"), "same.txt");
    EXPECT_EQ(readFile(there / "same.txt"), "same.txt");

    writeFile(here / "changed.txt", "a new version from here");
    writeFile(there / "changed.txt", "another version from there");
    fs::remove(here / "deleted here.txt");
    fs::remove(there / "deleted there.txt");
    fs::rename(here / "moved.txt", here / "moved away.txt");
    writeFile(there / "moved.txt", "changed where it was");
    EXPECT_EQ(add("Plans", here, there).exitCode, 0);
    EXPECT_EQ(run({"sync"}).exitCode, 7);

    std::multiset<std::string> contents;
    for (const auto& entry : fs::directory_iterator(here)) {
        contents.insert(readFile(entry.path()));
        EXPECT_EQ(readFile(there / entry.path().filename()), readFile(entry.path()));
    }
    EXPECT_EQ(contents, (std::multiset<std::string>{"same.txt", "a new version from here", "another version from there",
                            "deleted here.txt", "deleted there.txt", "moved.txt", "changed where it was"}));
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
