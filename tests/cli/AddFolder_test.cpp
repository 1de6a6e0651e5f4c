#include <gmock/gmock.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

class AddFolder : public ToolTest
{
protected:
    AddFolder()
    {
        makeDemo();
        writeFile(source / "a.txt", "a");
        writeFile(source / toPath("Übersicht/b.txt"), "b");
        fs::create_directories(source / "empty");
    }

    [[nodiscard]] std::string plans() const { return text(workspace("harbour") / "plans"); }
    [[nodiscard]] fs::path here(const std::string& path) const { return workspace("harbour") / "plans" / toPath(path); }
    [[nodiscard]] fs::path there(const std::string& path) const { return server("harbour") / "plans" / toPath(path); }

    const fs::path source = folder / "site";
};

TEST_F(AddFolder, PutsEverythingInItOnBothSides)
{
    const std::string shown = expectOk({"add", text(source / ""), plans()});

    EXPECT_THAT(shown, HasSubstr("created  " + text(source)));
    EXPECT_THAT(shown, HasSubstr("added  " + text(source / "a.txt")));
    for (const auto& side : {here("site"), there("site")}) {
        EXPECT_EQ(readFile(side / "a.txt"), "a");
        EXPECT_EQ(readFile(side / toPath("Übersicht/b.txt")), "b");
        EXPECT_TRUE(fs::is_directory(side / "empty"));
    }
    EXPECT_THAT(expectOk({"status", plans() + "/site"}), HasSubstr("everything is in sync"));
}

// As an addition leaves it that failed between the two sides.
TEST_F(AddFolder, AddsAFileThatIsOnlyInTheWorkspaceToTheServerToo)
{
    expectOk({"add", text(source), plans()});
    writeFile(source / "c.txt", "c");
    writeFile(here("site/c.txt"), "c");

    EXPECT_THAT(expectOk({"add", text(source), plans()}), HasSubstr("updated  " + text(source / "c.txt")));

    EXPECT_EQ(readFile(there("site/c.txt")), "c");
    EXPECT_EQ(readFile(here("site/c.txt")), "c");
}

TEST_F(AddFolder, ReplacesNoFileOfAFolderThatExists)
{
    expectOk({"add", text(source), plans()});
    writeFile(source / "a.txt", "another a");
    writeFile(source / "c.txt", "c");

    const ChildResult dry = run({"add", "-n", text(source), plans()});
    const ChildResult finished = run({"add", text(source), plans()});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("a.txt': there is a file of this name with other content"));
    EXPECT_THAT(finished.output, HasSubstr("exists  " + text(source / toPath("Übersicht/b.txt"))));
    EXPECT_EQ(readFile(here("site/a.txt")), "a");
    EXPECT_EQ(readFile(there("site/c.txt")), "c");
    EXPECT_EQ(dry.errors, finished.errors);
    EXPECT_THAT(dry.output, HasSubstr("would be added  " + text(source / "c.txt")));
}

TEST_F(AddFolder, IsNotAddedToItselfAndNamesWhatIsInTheWay)
{
    EXPECT_THAT(run({"add", text(workspace("harbour")), plans()}).errors,
        HasSubstr("the folder to which it is to be added is in it"));
    writeFile(here("site"), "a file");

    const ChildResult finished = run({"add", text(source), plans()});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("is a file"));
    EXPECT_THAT(finished.errors, HasSubstr("no file in it was added"));
    EXPECT_EQ(readFile(here("site")), "a file");
}

TEST_F(AddFolder, SaysWhatAPatternLeavesOut)
{
    writeFile(source / "x.tmp", "x");
    writeFile(source / "build" / "y.txt", "y");
    expectOk({"drive", "set", "Harbour Project", "--ignore", "*.tmp", "--ignore", "build/"});

    const ChildResult finished = run({"add", text(source), plans()});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("x.tmp': a pattern of the drive leaves it out"));
    EXPECT_THAT(finished.errors, HasSubstr("by the pattern 'build/'"));
    EXPECT_EQ(readFile(there("site/a.txt")), "a");
    EXPECT_FALSE(fs::exists(there("site/build")) || fs::exists(there("site/x.tmp")));
}

#ifndef _WIN32
TEST_F(AddFolder, NamesAndLeavesOutWhatIsNeitherAFileNorAFolder)
{
    writeFile(folder / "outside" / "secret.txt", "secret");
    fs::create_directory_symlink(folder / "outside", source / "link");
    fs::create_symlink(source / "a.txt", source / "alias.txt");
    ASSERT_EQ(mkfifo((source / "pipe").c_str(), 0600), 0);
    writeFile(source / "back\\slash" / "x.txt", "x");

    const ChildResult finished = run({"add", text(source), plans()});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("link': it is a link, which is left out"));
    EXPECT_THAT(finished.errors, HasSubstr("alias.txt': it is a link, which is left out"));
    EXPECT_THAT(finished.errors, HasSubstr("pipe': it is not a regular file"));
    EXPECT_THAT(finished.errors, HasSubstr("slash': a name with a back-slash cannot be added"));
    EXPECT_EQ(readFile(there("site/a.txt")), "a");
    EXPECT_FALSE(fs::exists(there("site/link")) || fs::exists(there("site/back")));
}
#endif

} // namespace
} // namespace Quorvex::Velmora::ToolTest
