#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

class DrivePath : public ToolTest
{
protected:
    DrivePath() { makeDemo(); }

    ChildResult runIn(const fs::path& current, std::vector<std::string> arguments)
    {
        ChildProgram program;
        program.arguments = std::move(arguments);
        program.currentFolder = current;
        return runProgram(std::move(program));
    }

    void expectLists(const ChildResult& finished, const std::string& name)
    {
        EXPECT_EQ(finished.exitCode, 0) << finished.errors;
        EXPECT_THAT(finished.output, HasSubstr(name));
    }

    const std::string plans = "Harbour Project/plans";
};

TEST_F(DrivePath, IsTakenByCommandsThatLook)
{
    EXPECT_THAT(expectOk({"ls", plans}), HasSubstr("ground floor.txt"));
    EXPECT_THAT(expectOk({"tree", "Morrow Archive"}), HasSubstr("lighthouse.txt"));
    EXPECT_EQ(expectJson({"stat", "Harbour Project\\README.txt"})[0]["workspacePath"], withBackslashes(readme()));
    EXPECT_EQ(expectJson({"where", plans + '/'})["relativePath"], "plans");
    EXPECT_THAT(expectOk({"props", "--id", "Size", "Harbour Project/README.txt"}), HasSubstr("Size"));
    EXPECT_THAT(expectOk({"id", "5B1F7F0E-6C0E-4A53-9A39-0F6A3C1D2B02/contract.txt"}), HasSubstr("tp."));
    EXPECT_THAT(expectOk({"in-workspace", "Harbour Project/README.txt"}), HasSubstr("yes"));
    EXPECT_THAT(expectOk({"can-add-file", plans}), HasSubstr("yes"));
}

TEST_F(DrivePath, IsTakenByCommandsThatChange)
{
    writeFile(folder / "new.txt", "new");

    expectOk({"mkdir", plans + "/2024/a"});
    expectOk({"add", text(folder / "new.txt"), plans + "/2024"});
    EXPECT_EQ(readFile(server("harbour") / "plans/2024/new.txt"), "new");
    expectOk({"rm", "-y", plans + "/2024/new.txt"});
    EXPECT_FALSE(fs::exists(server("harbour") / "plans/2024/new.txt"));
    expectOk({"sync", "Morrow Archive/1998"});
    EXPECT_TRUE(fs::exists(workspace("archive") / "1998/lighthouse.txt"));
    expectOk({"sync", "--one", "Bridge Team"});
    expectOk({"run", "lock", "Harbour Project/README.txt"});
}

TEST_F(DrivePath, IsLocalIfItsFirstNameExistsHere)
{
    fs::create_directory(folder / "Harbour Project");
    expectOk({"drive", "set", "Bridge Team", "--name", "1998"});

    const ChildResult hidden = runIn(folder, {"rm", "-y", "Harbour Project/README.txt"});
    const ChildResult onServer = runIn(workspace("archive"), {"ls", "1998"});
    const ChildResult drive = runIn(folder, {"ls", "1998"});

    EXPECT_EQ(hidden.exitCode, 3);
    EXPECT_THAT(hidden.errors, HasSubstr("exists in the current folder and hides the drive 'Harbour Project'"));
    EXPECT_THAT(hidden.errors, HasSubstr(text(workspace("harbour"))));
    EXPECT_TRUE(fs::exists(toPath(readme())));
    expectLists(onServer, "lighthouse.txt");
    expectLists(drive, "model/");
}

TEST_F(DrivePath, TellsNamesApartThatDifferInCaseOnly)
{
    expectOk({"drive", "set", "Bridge Team", "--name", "harbour project"});
    expectOk({"drive", "set", "Morrow Archive", "--name", toPath("Архів 図面").u8string()});

    expectLists(run({"ls", "Harbour Project"}), "plans/");
    expectLists(run({"ls", "harbour project"}), "model/");
    expectLists(run({"ls", toPath("Архів 図面/1998").u8string()}), "lighthouse.txt");
}

TEST_F(DrivePath, WithAMistypedDriveNamesTheOneThatIsMeantAndItsWorkspace)
{
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"ls", "harbor project/plans"},
             {"mkdir", "Harbour Projekt/new"}, {"stat", "--drive", "Harbour Projekt", "plans"}}) {
        const ChildResult finished = run(arguments);

        EXPECT_EQ(finished.exitCode, 3) << finished.output;
        EXPECT_THAT(finished.errors, HasSubstr("'Harbour Project'"));
        EXPECT_THAT(finished.errors, HasSubstr(text(workspace("harbour"))));
    }
    EXPECT_FALSE(fs::exists(workspace("harbour") / "new"));
}

TEST_F(DrivePath, WithANameThatTwoDrivesHaveAsksForTheIdentifier)
{
    std::string drives = readFile(home / "drives.json");
    const std::string other = "Bridge Team";
    writeFile(home / "drives.json", drives.replace(drives.find(other), other.size(), "Harbour Project"));

    const ChildResult finished = run({"ls", plans});

    EXPECT_EQ(finished.exitCode, 3);
    EXPECT_THAT(finished.errors, HasSubstr("there are 2 drives 'Harbour Project'; name one by its identifier"));
    expectLists(run({"ls", "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b03"}), "model/");
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
