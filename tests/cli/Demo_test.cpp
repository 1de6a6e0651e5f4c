#include "tests/cli/ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

class Demo : public ToolTest
{
};

#ifdef _WIN32
const std::string Quote = "\"";
#else
const std::string Quote = "'";
#endif

std::string replacedAll(std::string text, const std::string& from, const std::string& to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

TEST_F(Demo, ShowsVersionDrivesAndATree)
{
    const std::string output = replacedAll(expectOk({"demo"}), text(home), "HOME");

    EXPECT_EQ(replacedAll(output, std::string(1, std::filesystem::path::preferred_separator), "/"),
        "Home: HOME\nTessaport " TESSAPORT_VERSION "\n"
        R"(
NAME              TYPE                               LOCKS  WORKSPACE
Harbour Project   Quorvex.DataSourceType.Drive       yes    HOME/drives/harbour/workspace
Trelis Documents  Quorvex.DataSourceType.TrelisDocs  no     HOME/drives/documents/workspace
Bridge Team       Quorvex.DataSourceType.TrelisTeam  no     HOME/drives/team/workspace
Morrow Archive    Quorvex.DataSourceType.Morrow      yes    HOME/drives/archive/workspace

Harbour Project
├── plans/
│   ├── details/
│   │   ├── crane rail.txt  (server only)
│   │   └── stairs.txt
│   ├── ground floor.txt
│   └── Übersicht.txt
├── README.txt
└── survey/
    ├── 2024-05-01.csv  (server only)
    └── notes.txt  (local only)

Trelis Documents
├── contract.txt
├── letters/
│   └── 2024/
│       ├── offer.txt  (local only)
│       └── Київ – відповідь.txt
└── minutes/  (server only)
    └── kick-off.txt  (server only)

Bridge Team
└── model/
    ├── deck.txt
    ├── pylons.txt
    └── 図面.txt  (server only)

Morrow Archive
├── 1998/  (server only)
│   └── lighthouse.txt  (server only)
├── 2003/  (server only)
│   └── quay wall.txt  (server only)
└── index.txt

To go on, for example:
  tessaport sync
  tessaport where )" +
            Quote + "HOME/drives/harbour/workspace/README.txt" + Quote + '\n');
}

TEST_F(Demo, CanBeMadeTwiceAndKeepsWhatTheUserChanged)
{
    const std::string first = expectOk({"demo"});
    writeFile(toPath(readme()), "mine");

    const std::string second = expectOk({"demo"});

    EXPECT_EQ(first, second);
    EXPECT_EQ(readFile(toPath(readme())), "mine");
}

TEST_F(Demo, PutsBackWhatIsMissing)
{
    makeDemo();
    std::filesystem::remove(home / "service.json");
    std::filesystem::remove(workspace("harbour") / "survey/notes.txt");

    makeDemo();

    EXPECT_TRUE(std::filesystem::exists(workspace("harbour") / "survey/notes.txt"));
    expectOk({"drives"});
}

TEST_F(Demo, RefusesAFolderThatItDidNotMake)
{
    writeFile(home / "thesis.txt", "years of work");

    const ChildResult finished = run({"demo"});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_NE(finished.errors.find("did not make"), std::string::npos) << finished.errors;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home), {}), 1);
}

TEST_F(Demo, RefusesAPathThatIsAFile)
{
    writeFile(home, "a file");

    const ChildResult finished = run({"demo"});

    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_EQ(readFile(home), "a file");
}

TEST_F(Demo, HasADriveOfEachTypeWithAFileThatHasAllIdentifiers)
{
    makeDemo();
    const std::vector<std::pair<std::string, std::string>> files{
        {"harbour/workspace/README.txt", "Quorvex.DataSourceType.Drive"},
        {"documents/workspace/contract.txt", "Quorvex.DataSourceType.TrelisDocs"},
        {"team/workspace/model/deck.txt", "Quorvex.DataSourceType.TrelisTeam"},
        {"archive/workspace/index.txt", "Quorvex.DataSourceType.Morrow"}};

    for (const auto& [file, type] : files) {
        const auto place = expectJson({"where", text(home / "drives" / file)});

        EXPECT_EQ(place["driveType"], type);
        EXPECT_NE(place["permanentId"], "");
        EXPECT_NE(place["urn"], "");
        EXPECT_EQ(place["projectId"] != "", type.find("Trelis") != std::string::npos);
        EXPECT_EQ(expectJson({"where", "--id", place["permanentId"]}), place);
    }
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
