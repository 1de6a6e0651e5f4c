#include <set>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"
#include "tests/support/EnvironmentVariable.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

class Identifiers : public ToolTest
{
protected:
    Identifiers() { makeDemo(); }

    std::string idOf(const std::string& path) { return expectJson({"id", path})[0]["permanentId"]; }

    [[nodiscard]] std::string contract() const { return text(workspace("documents") / "contract.txt"); }
    [[nodiscard]] std::string letters() const { return text(workspace("documents") / "letters"); }

    void takeOffline(int drive)
    {
        auto drives = nlohmann::json::parse(readFile(home / "drives.json"));
        drives[static_cast<std::size_t>(drive)]["offline"] = true;
        writeFile(home / "drives.json", drives.dump());
    }
};

TEST_F(Identifiers, LeadBackToTheItem)
{
    const auto ids = expectJson({"id", readme(), contract()});
    ASSERT_EQ(ids.size(), 2U);

    const std::string output = expectOk({"resolve", ids[0]["permanentId"], ids[1]["permanentId"]});

    EXPECT_EQ(output, readme() + '\n' + contract() + '\n');
}

TEST_F(Identifiers, SurviveARename)
{
    const std::string id = idOf(readme());
    fs::rename(toPath(readme()), workspace("harbour") / "plans/READ ME.txt");

    EXPECT_EQ(expectOk({"resolve", id}), text(workspace("harbour") / "plans/READ ME.txt") + '\n');
}

TEST_F(Identifiers, ThatAreUnknownAreNamed)
{
    const ChildResult finished = run({"resolve", "tp.nothing", idOf(readme())});

    EXPECT_EQ(finished.exitCode, 3);
    EXPECT_EQ(finished.output, readme() + '\n');
    EXPECT_THAT(finished.errors, HasSubstr("'tp.nothing': the sync application does not know it (result 2)"));
}

TEST_F(Identifiers, OnAnOfflineDriveAreReportedAsSuch)
{
    const std::string id = idOf(readme());
    takeOffline(0);

    const ChildResult finished = run({"id", readme()});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("its drive is offline"));
    EXPECT_EQ(run({"where", "--id", id}).exitCode, 3);
    EXPECT_EQ(expectJson({"offline"})["offline"], true);
    EXPECT_THAT(expectOk({"ls", "-1", text(workspace("harbour"))}), HasSubstr("README.txt"));
}

TEST_F(Identifiers, InTheCloudDependOnTheKindOfDrive)
{
    EXPECT_THAT(expectOk({"urn", readme()}), testing::StartsWith("urn "));
    EXPECT_THAT(expectOk({"urn", contract()}), testing::StartsWith("project "));
    const auto folder = run({"urn", letters()});
    EXPECT_EQ(folder.exitCode, 3);
    EXPECT_THAT(folder.errors, HasSubstr("--parent-key"));
    EXPECT_NE(expectJson({"urn", "--parent-key", letters()})["urn"], "");
}

TEST_F(Identifiers, OfAFileThatIsNotOnTheServerAreMissing)
{
    const ChildResult finished = run({"urn", text(workspace("harbour") / "survey/notes.txt")});

    EXPECT_EQ(finished.exitCode, 3);
    EXPECT_THAT(finished.errors, HasSubstr("not on the server"));
}

TEST_F(Identifiers, AndPropertiesAreShownForManyItemsAtOnce)
{
    const auto values = expectJson({"props", "--id", "Size", "--id", "Name", readme(), contract()});

    ASSERT_EQ(values.size(), 4U);
    std::set<std::pair<std::string, std::string>> seen;
    for (const auto& value : values)
        seen.emplace(value["path"], value["id"].get<std::string>() + '=' + value["value"].get<std::string>());
    EXPECT_EQ(seen, (std::set<std::pair<std::string, std::string>>{{readme(), "Size=65"}, {readme(), "Name=README.txt"},
                        {contract(), "Size=23"}, {contract(), "Name=contract.txt"}}));
}

TEST_F(Identifiers, AndPropertyDefinitionsDependOnTheDrive)
{
    EXPECT_THAT(expectOk({"props", "--definitions", "Harbour Project"}), HasSubstr("IsLocked"));
    EXPECT_THAT(expectOk({"props", "--definitions", "Trelis Documents"}), HasSubstr("KeldaItemId"));
    EXPECT_EQ(run({"props", "--definitions", "none"}).exitCode, 3);
}

TEST_F(Identifiers, AreAllInOneAnswer)
{
    const auto place = expectJson({"where", letters()});

    EXPECT_EQ(place["drive"], "Trelis Documents");
    EXPECT_EQ(place["relativePath"], "letters");
    EXPECT_EQ(place["localPath"], letters());
    EXPECT_EQ(place["permanentId"], idOf(letters()));
    EXPECT_NE(place["urn"], "");
    EXPECT_EQ(run({"where", letters() + "x"}).exitCode, 3);
}

TEST_F(Identifiers, OfTheRootFolderThatTakesFiles)
{
    EXPECT_EQ(expectOk({"root"}), text(workspace("harbour") / "plans") + '\n');
    EXPECT_EQ(expectOk({"root", "--first"}), text(workspace("harbour")) + '\n');
    EXPECT_EQ(run({"root", "--type", "Quorvex.DataSourceType.Morrow"}).exitCode, 1);
    writeFile(home / "drives.json", "[]");
    EXPECT_EQ(run({"root"}).exitCode, 3);
    EXPECT_EQ(run({"root", "--first"}).exitCode, 3);
}

TEST_F(Identifiers, QuestionsAnswerWithTheExitCodeToo)
{
    const std::string plans = text(workspace("harbour") / "plans");

    EXPECT_EQ(expectOk({"can-add-file", plans}), "yes\n");
    EXPECT_EQ(expectOk({"exists", plans}), "yes\n");
    EXPECT_EQ(expectOk({"in-workspace", plans, readme()}), "yes  " + plans + "\nyes  " + readme() + '\n');
    EXPECT_EQ(run({"in-workspace", readme(), "/etc/hosts"}).output, "yes  " + readme() + "\nno   /etc/hosts\n");
    EXPECT_EQ(run({"in-workspace", readme(), "/etc/hosts"}).exitCode, 1);
    EXPECT_EQ(run({"exists", plans + "/none"}).output, "no\n");
    EXPECT_EQ(run({"exists", plans + "/none"}).exitCode, 3);
    EXPECT_EQ(run({"can-add-file", "/etc"}).exitCode, 3);
    EXPECT_EQ(run({"can-add-file", readme()}).exitCode, 1);
    EXPECT_EQ(run({"offline"}).output, "no\n");
    EXPECT_EQ(run({"offline"}).exitCode, 1);
    expectOk({"check"});
}

TEST_F(Identifiers, FullPathIsTheOneOfDotnet)
{
    ChildProgram program;
    program.arguments = {"full-path", "../ü/./x"};
    program.currentFolder = workspace("harbour");

    EXPECT_EQ(runProgram(program).output, text(home / toPath("drives/harbour/ü/x")) + '\n');
    EXPECT_EQ(run({"full-path", ""}).exitCode, 1);
}

TEST_F(Identifiers, LogLinesOfTheLibraryAreShownWhenAskedFor)
{
    const ChildResult quiet = run({"urn", readme()});
    const ChildResult verbose = run({"-v", "urn", readme()});

    EXPECT_EQ(quiet.errors, "");
    EXPECT_EQ(verbose.output, quiet.output);
    EXPECT_THAT(verbose.errors, HasSubstr("[TP] ERROR: project id is empty\n"));
}

TEST_F(Identifiers, ProbeFilesNeverStay)
{
    ChildProgram program;
    program.environment[TestSupport::TemporaryFolderVariable] = text(folder / "tmp");
    fs::create_directory(folder / "tmp");
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"root"}, {"can-add-file", readme()},
             {"can-add-file", "/etc"}, {"can-add-file", text(workspace("team"))}}) {
        program.arguments = arguments;
        runProgram(program);
    }
    for (const auto& entry : fs::directory_iterator(folder / "tmp"))
        EXPECT_NE(entry.path().extension(), ".txt") << entry.path();
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
