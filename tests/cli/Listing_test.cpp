#include <regex>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"
#include "tests/support/Links.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

class Listing : public ToolTest
{
protected:
    Listing() { makeDemo(); }

    static std::vector<std::string> namesIn(const nlohmann::json& items)
    {
        std::vector<std::string> names;
        for (const auto& item : items)
            names.push_back(item["name"]);
        return names;
    }
};

TEST_F(Listing, PutsOneItemOnEachLineOfAValidArray)
{
    const std::string output = expectOk({"ls", "--json", text(workspace("harbour"))});

    const std::vector<std::string> lines = linesOf(output);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines.front(), "[");
    EXPECT_EQ(lines.back(), "]");
    for (std::size_t i = 1; i + 1 < lines.size(); ++i) {
        const std::string line = i + 2 < lines.size() ? lines[i].substr(0, lines[i].size() - 1) : lines[i];
        EXPECT_TRUE(nlohmann::json::accept(line)) << line;
    }
    EXPECT_THAT(namesIn(nlohmann::json::parse(output)), ElementsAre("plans", "README.txt", "survey"));
}

TEST_F(Listing, GivesEveryFieldOfAnItem)
{
    const auto items = expectJson({"stat", readme()});

    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0], nlohmann::json::parse(R"({
        "driveId": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "isFolder": false, "isInWorkspace": true,
        "isOnServer": true, "name": "README.txt", "relativePath": "README.txt",
        "workspacePath": )" + nlohmann::json(withBackslashes(readme())).dump() +
                                              R"(,
        "localPath": )" + nlohmann::json(readme()).dump() +
                                              R"(,
        "lastModifiedDate": "2024-05-01T10:15:30Z"})"));
}

TEST_F(Listing, ShowsPeopleEveryFieldOfAnItem)
{
    const std::string shown = expectOk({"stat", readme()});

    for (const char* field : {"Name +README\\.txt", "Kind +file", "Where +", "Modified +2024-05-01",
             "Drive +5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "Relative path +README\\.txt", "Local path +"})
        EXPECT_TRUE(std::regex_search(shown, std::regex(field))) << field << " is not in\n" << shown;
    EXPECT_THAT(shown, HasSubstr(readme()));
}

TEST_F(Listing, GivesAnEmptyArrayForAnEmptyFolder)
{
    std::filesystem::create_directory(workspace("harbour") / "empty");

    EXPECT_EQ(expectJson({"ls", text(workspace("harbour") / "empty")}), nlohmann::json::array());
    EXPECT_EQ(expectOk({"ls", text(workspace("harbour") / "empty")}), "");
}

TEST_F(Listing, AcceptsEitherSlashDotsAndRelativePaths)
{
    const auto expected = expectJson({"stat", readme()});

    EXPECT_EQ(expectJson({"stat", withBackslashes(readme())}), expected);
    EXPECT_EQ(expectJson({"stat", text(workspace("harbour") / "plans/../README.txt")}), expected);
    ChildProgram program;
    program.arguments = {"--json", "stat", "./README.txt"};
    program.currentFolder = workspace("harbour");
    EXPECT_EQ(nlohmann::json::parse(runProgram(program).output), expected);
}

TEST_F(Listing, FollowsALinkIntoTheWorkspace)
{
    const TestSupport::Link link("home/drives/harbour/workspace", folder / "link");

    EXPECT_EQ(expectJson({"stat", text(folder / "link/README.txt")}), expectJson({"stat", readme()}));
}

TEST_F(Listing, WorksInAHomeThatIsReachedThroughALink)
{
    const TestSupport::Link link("home", folder / "link");
    const std::string linked = text(folder / "link/drives/harbour/workspace/README.txt");

    EXPECT_EQ(expectJson({"--home", text(folder / "link"), "exists", linked})["exists"], true);
}

TEST_F(Listing, ShowsOnWhichSideItemsAre)
{
    EXPECT_EQ(expectOk({"ls", text(workspace("harbour") / "survey")}),
        localTime(1714558830) + "  server  2024-05-01.csv\n" + localTime(1714558890) + "  local   notes.txt\n");
}

TEST_F(Listing, LongShowsSizeLocalTimeAndState)
{
    const std::string survey = text(workspace("harbour") / "survey");
    writeFile(workspace("harbour") / "survey/notes.txt", "12345");
    std::filesystem::last_write_time(workspace("harbour") / "survey/notes.txt",
        std::filesystem::last_write_time(server("harbour") / "survey/2024-05-01.csv"));
    const std::string size = std::to_string(readFile(server("harbour") / "survey/2024-05-01.csv").size());
    const std::string time = localTime(1714558830);

    const auto lines = linesOf(expectOk({"ls", "-l", survey}));
    const auto items = expectJson({"ls", "-l", text(workspace("harbour"))});
    const std::string tree = expectOk({"tree", "-l", text(workspace("harbour"))});

    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0], testing::MatchesRegex(size + " *  " + time + "  only on the server  2024-05-01.csv"));
    EXPECT_THAT(lines[1], testing::MatchesRegex("5 *  " + time + "  only here           notes.txt"));
    EXPECT_THAT(tree, HasSubstr("notes.txt  (5 bytes, " + time + ", only here)\n"));
    EXPECT_THAT(tree, HasSubstr("README.txt  (" + std::to_string(readFile(toPath(readme())).size()) + " bytes, "));
    EXPECT_THAT(tree, testing::ContainsRegex("plans/  \\(....-..-.. ..:..:.., in sync\\)"));
    EXPECT_EQ(items[1]["state"], "in-sync");
    EXPECT_EQ(items[1]["size"], readFile(toPath(readme())).size());
    EXPECT_EQ(items[0]["size"], nlohmann::json());
    EXPECT_EQ(expectJson({"tree", "-l", survey})[2]["state"], "only-here");
    EXPECT_FALSE(expectJson({"ls", survey})[0].contains("state"));
}

TEST_F(Listing, ListsRecursivelyAndFiltersByName)
{
    const std::string root = text(workspace("harbour"));

    EXPECT_EQ(expectOk({"ls", "-1R", "--filter", "*R*.TXT", root}),
        withNativeSlashes("plans/details/crane rail.txt\nplans/details/stairs.txt\nplans/ground floor.txt\n"
                          "plans/Übersicht.txt\nREADME.txt\n"));
    EXPECT_EQ(expectOk({"ls", "-1R", "--filter", "?bersicht.txt", root}), withNativeSlashes("plans/Übersicht.txt\n"));
    EXPECT_EQ(expectOk({"ls", "-1R", "--folders", root}), withNativeSlashes("plans\nplans/details\nsurvey\n"));
}

TEST_F(Listing, ListsTheDrivesWithoutAPath)
{
    EXPECT_EQ(expectOk({"ls", "-1"}), "Harbour Project\nTrelis Documents\nBridge Team\nMorrow Archive\n");
}

TEST_F(Listing, ListsAllDrivesRecursivelyWithPathsThatCommandsTake)
{
    const auto names = linesOf(expectOk({"ls", "-1R"}));

    EXPECT_EQ(names.front(), "Harbour Project");
    EXPECT_THAT(names, testing::Contains("Bridge Team/" + withNativeSlashes("model/deck.txt")));
    EXPECT_EQ(expectOk({"ls", "-1", "Bridge Team/model/deck.txt"}), "deck.txt\n");
}

TEST_F(Listing, NamesFoldersThatCannotBeReadAndShowsTheOthers)
{
    std::filesystem::rename(server("harbour"), home / "kept");
    writeFile(server("harbour"), "not a folder");

    const ChildResult tree = run({"tree"});
    const ChildResult json = run({"--json", "tree"});
    const ChildResult list = run({"ls", "-1R"});

    for (const ChildResult& result : {tree, json, list}) {
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(linesOf(result.errors).size(), 1U) << result.errors;
        EXPECT_THAT(result.errors, HasSubstr("is not a folder"));
        EXPECT_THAT(result.output, HasSubstr("lighthouse.txt"));
    }
    EXPECT_EQ(nlohmann::json::parse(json.output)[0]["name"], "Harbour Project");
    EXPECT_EQ(run({"ls", "Harbour Project"}).exitCode, 1);
}

TEST_F(Listing, LimitsTheDepthOfATree)
{
    EXPECT_EQ(expectOk({"tree", "--depth", "1", "--folders", text(workspace("harbour"))}),
        text(workspace("harbour")) + "\n├── plans/\n└── survey/\n");
    for (const auto& item : expectJson({"tree", "--depth", "2"}))
        EXPECT_LE(item["depth"], 2);
}

TEST_F(Listing, NamesEveryMissingItemAndStillShowsTheOthers)
{
    const std::string missing = text(workspace("harbour") / "none.txt");

    const ChildResult finished = run({"--json", "stat", missing, readme(), "/etc/hosts"});

    EXPECT_EQ(finished.exitCode, 3);
    const auto answers = nlohmann::json::parse(finished.output);
    ASSERT_EQ(answers.size(), 3U);
    EXPECT_EQ(answers[0]["path"], missing);
    EXPECT_EQ(answers[0]["outcome"], "failed");
    EXPECT_EQ(answers[0]["reason"], "no such item on any drive");
    EXPECT_EQ(answers[1]["name"], "README.txt");
    EXPECT_EQ(answers[2]["path"], "/etc/hosts");
    EXPECT_THAT(finished.errors, HasSubstr("'" + missing + "': no such item on any drive\n"));
    EXPECT_THAT(finished.errors, HasSubstr("'/etc/hosts': no such item on any drive\n"));
}

TEST_F(Listing, FindsItemsRelativeToADriveByNameAndById)
{
    const auto byName = expectJson({"stat", "--drive", "Harbour Project", "plans/Übersicht.txt", "\\README.txt"});

    EXPECT_THAT(namesIn(byName), ElementsAre("Übersicht.txt", "README.txt"));
    EXPECT_EQ(
        expectJson({"stat", "--drive", "5B1F7F0E-6C0E-4A53-9A39-0F6A3C1D2B01", "plans\\Übersicht.txt", "README.txt"}),
        byName);
    const ChildResult finished = run({"stat", "--drive", "Harbour Project", "none", "README.txt"});
    EXPECT_EQ(finished.exitCode, 3);
    EXPECT_THAT(finished.errors, HasSubstr("'none': no such item on the drive 'Harbour Project'"));
    EXPECT_THAT(finished.output, HasSubstr("README.txt"));
    const auto answers =
        nlohmann::json::parse(run({"--json", "stat", "--drive", "Harbour Project", "README.txt", "none"}).output);
    EXPECT_EQ(answers[0]["name"], "README.txt");
    EXPECT_EQ(answers[1]["path"], "none");
    EXPECT_EQ(answers[1]["reason"], "no such item on the drive 'Harbour Project'");
    EXPECT_EQ(run({"stat", "--drive", "Harbor", "README.txt"}).exitCode, 3);
}

TEST_F(Listing, SurvivesOddPaths)
{
    const std::string longPath = text(workspace("harbour")) + '/' + std::string(5000, 'x');
    for (const std::string& path :
        {longPath, std::string("\xED\xA0\x80"), std::string("\xFF\xFE"), std::string("~"), std::string("/")}) {
        for (const std::string command : {"ls", "stat", "exists", "where", "urn", "in-workspace", "can-add-file"}) {
            const ChildResult finished = run({command, path});
            EXPECT_EQ(finished.signal, 0);
            EXPECT_TRUE(finished.exitCode == 3 || finished.exitCode == 1) << command << ' ' << finished.errors;
        }
    }
}

TEST_F(Listing, ReplacesControlCharactersOfNames)
{
    // The second one is a single character for the two with which such sequences begin.
    writeFile(workspace("harbour") / toPath("gone\x7F"
                                            "\xC2\x9B"
                                            "31m"),
        "x");
#ifndef _WIN32 // No name there has any of the others.
    writeFile(workspace("harbour") / "two\nlines\x1b[31m", "x");
#endif

    const std::string output = expectOk({"ls", "-1", text(workspace("harbour"))});

    EXPECT_THAT(linesOf(output), testing::Contains("gone??31m"));
#ifndef _WIN32
    EXPECT_THAT(linesOf(output), testing::Contains("two?lines?[31m"));
#endif
    EXPECT_EQ(output.find('\x1b'), std::string::npos);
    EXPECT_EQ(output.find("\xC2\x9B"), std::string::npos);
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
