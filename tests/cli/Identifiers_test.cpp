#include <regex>
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

TEST_F(Identifiers, ResolveLeadsBackToTheItem)
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

TEST_F(Identifiers, ResolveNamesUnknownIds)
{
    const ChildResult finished = run({"resolve", "tp.nothing", idOf(readme())});

    EXPECT_EQ(finished.exitCode, 3);
    EXPECT_EQ(finished.output, readme() + '\n');
    EXPECT_THAT(finished.errors, HasSubstr("'tp.nothing': the sync application does not know it (result 2)"));
}

TEST_F(Identifiers, OfItemsOnAnOfflineDriveAreReportedAsOffline)
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

TEST_F(Identifiers, UrnsDependOnTheTypeOfTheDrive)
{
    EXPECT_THAT(expectOk({"urn", readme()}), testing::StartsWith("urn "));
    EXPECT_THAT(expectOk({"urn", contract()}), testing::StartsWith("project "));
    const auto ofParent = expectJson({"urn", "--parent-key", letters()});
    EXPECT_NE(ofParent["urn"], "");
    EXPECT_EQ(expectJson({"urn", letters()}), ofParent) << "it has none of its own";
    EXPECT_EQ(ofParent["of"], "parent");
    EXPECT_THAT(expectOk({"urn", letters()}), HasSubstr("  (of the folder that holds it)\n"));
    EXPECT_EQ(expectJson({"urn", text(workspace("harbour") / "plans")})["of"], "item");
}

TEST_F(Identifiers, UrnOfAFileThatIsNotOnTheServerIsNotFound)
{
    const ChildResult finished = run({"urn", text(workspace("harbour") / "survey/notes.txt")});

    EXPECT_EQ(finished.exitCode, 3);
    EXPECT_THAT(finished.errors, HasSubstr("not on the server"));
}

TEST_F(Identifiers, PropsShowsTheValuesOfSeveralItems)
{
    const auto values = expectJson({"props", "--id", "Size", "--id", "Name", readme(), contract()});

    ASSERT_EQ(values.size(), 4U);
    std::set<std::pair<std::string, std::string>> seen;
    for (const auto& value : values)
        seen.emplace(value["path"], value["id"].get<std::string>() + '=' + value["value"].dump());
    EXPECT_EQ(
        seen, (std::set<std::pair<std::string, std::string>>{{readme(), "Size=65"}, {readme(), "Name=\"README.txt\""},
                  {contract(), "Size=23"}, {contract(), "Name=\"contract.txt\""}}));
}

TEST_F(Identifiers, PropsHaveTheirTypesInJson)
{
    ChildProgram program;
    program.arguments = {"--json", "props", readme()};
    program.environment = {{"LC_ALL", "de_DE.UTF-8"}};

    std::map<std::string, nlohmann::json> values;
    for (const auto& value : nlohmann::json::parse(runProgram(program).output))
        values[value["id"]] = value["value"];

    EXPECT_EQ(values["Size"], 65);
    EXPECT_EQ(values["IsFolder"], false);
    EXPECT_EQ(values["IsOnServer"], true);
    EXPECT_EQ(values["Name"], "README.txt");
    EXPECT_EQ(values["Modified"], "2024-05-01T10:15:30Z");
    EXPECT_TRUE(std::regex_match(values["Created"].get<std::string>(), std::regex("[0-9-]{10}T[0-9:]{8}Z")));
}

TEST_F(Identifiers, PropsNamesUnknownProperties)
{
    const ChildResult finished = run({"--json", "props", "--id", "Sise", "--id", "Size", readme()});

    EXPECT_EQ(finished.exitCode, 3);
    EXPECT_EQ(finished.errors, "tessaport: 'Sise': there is no such property; did you mean 'Size'?\n");
    const auto answers = nlohmann::json::parse(finished.output);
    EXPECT_EQ(answers[0]["property"], "Sise");
    EXPECT_EQ(answers[1]["value"], 65);
    EXPECT_EQ(run({"props", "--id", "LockedBy", readme()}).exitCode, 0) << "defined, without a value";
}

TEST_F(Identifiers, PropertyDefinitionsDependOnTheDrive)
{
    EXPECT_THAT(expectOk({"props", "--definitions", "Harbour Project"}), HasSubstr("IsLocked"));
    EXPECT_THAT(expectOk({"props", "--definitions", "Trelis Documents"}), HasSubstr("KeldaItemId"));
    EXPECT_EQ(run({"props", "--definitions", "none"}).exitCode, 3);
}

TEST_F(Identifiers, WhereShowsAllInOneAnswer)
{
    const auto place = expectJson({"where", letters()});

    EXPECT_EQ(place["drive"], "Trelis Documents");
    EXPECT_EQ(place["relativePath"], "letters");
    EXPECT_EQ(place["localPath"], letters());
    EXPECT_EQ(place["permanentId"], idOf(letters()));
    EXPECT_EQ(run({"where", letters() + "x"}).exitCode, 3);
}

TEST_F(Identifiers, WhereShowsTheUrnOfAFolderItselfOrNone)
{
    const std::string plans = text(workspace("harbour") / "plans");
    fs::create_directory(workspace("harbour") / "plans/new");

    EXPECT_EQ(expectJson({"where", plans})["urn"], expectJson({"urn", plans})["urn"]);
    EXPECT_NE(expectJson({"where", plans})["urn"], expectJson({"where", text(workspace("harbour"))})["urn"]);
    EXPECT_EQ(expectJson({"where", plans + "/new"})["urn"], "") << "it is not on the server";
    EXPECT_EQ(expectJson({"where", letters()})["urn"], "") << "the drive names folders by the one that holds them";
}

TEST_F(Identifiers, FailuresAreInTheJsonList)
{
    const ChildResult ids = run({"--json", "id", "/none", readme()});
    const auto idAnswers = nlohmann::json::parse(ids.output);
    EXPECT_EQ(ids.exitCode, 3);
    EXPECT_EQ(idAnswers[0],
        (nlohmann::json{{"path", "/none"}, {"outcome", "failed"}, {"reason", "no such item on any drive"}}));
    EXPECT_EQ(idAnswers[1]["permanentId"], idOf(readme()));

    const auto resolved = nlohmann::json::parse(run({"--json", "resolve", idOf(readme()), "tp.nothing"}).output);
    EXPECT_EQ(resolved[0]["name"], "README.txt");
    EXPECT_EQ(resolved[1]["permanentId"], "tp.nothing");
    EXPECT_EQ(resolved[1]["outcome"], "failed");

    const auto properties = nlohmann::json::parse(run({"--json", "props", "--id", "Size", "/none", readme()}).output);
    EXPECT_EQ(properties[0]["path"], "/none");
    EXPECT_EQ(properties[0]["outcome"], "failed");
    EXPECT_EQ(properties[1]["value"], 65);
}

TEST_F(Identifiers, RootIsTheFolderThatTakesFiles)
{
    EXPECT_EQ(expectOk({"root"}), text(workspace("harbour") / "plans") + '\n');
    EXPECT_EQ(expectOk({"root", "--first"}), text(workspace("harbour")) + '\n');
    EXPECT_EQ(expectJson({"root", "--first"})["rule"], "the root of the first drive");
    EXPECT_THAT(std::string(expectJson({"root"})["rule"]), HasSubstr("'Quorvex.DataSourceType.Drive' that takes new"));
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

TEST_F(Identifiers, FullPathIsThatOfDotnet)
{
    ChildProgram program;
    program.arguments = {"full-path", "../ü/./x"};
    program.currentFolder = workspace("harbour");

    EXPECT_EQ(runProgram(program).output, text(home / toPath("drives/harbour/ü/x")) + '\n');
    EXPECT_EQ(run({"full-path", ""}).exitCode, 1);
}

TEST_F(Identifiers, VerboseShowsTheLogLinesOfTheLibrary)
{
    const ChildResult quiet = run({"urn", readme()});
    const ChildResult verbose = run({"-v", "urn", readme()});

    EXPECT_EQ(quiet.errors, "");
    EXPECT_EQ(verbose.output, quiet.output);
    EXPECT_THAT(verbose.errors, HasSubstr("[TP] ERROR: project id is empty\n"));
}

TEST_F(Identifiers, QuestionsLeaveNoProbeFile)
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
