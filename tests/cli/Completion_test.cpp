#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class Completion : public ToolTest
{
protected:
    Completion() { makeDemo(); }

    /// The candidates for the last word of a command line.
    std::vector<std::string> complete(std::vector<std::string> words)
    {
        words.insert(words.begin(), {"__complete", "--"});
        std::vector<std::string> candidates;
        for (const std::string& line : linesOf(expectOk(words)))
            candidates.push_back(line.substr(0, line.find('\t')));
        return candidates;
    }
};

TEST_F(Completion, OffersCommands)
{
    EXPECT_THAT(complete({"dr"}), ElementsAre("drives", "drive"));
    EXPECT_THAT(complete({"--json", "service", "sta"}), ElementsAre("start", "status"));
    EXPECT_THAT(complete({"--home", "sync", "service", "set"}), ElementsAre("set-state"));
    EXPECT_THAT(complete({"--home=sync", "-v", "log", "gr"}), ElementsAre("grep"));
    EXPECT_THAT(complete({""}), Contains("sync"));
    EXPECT_THAT(complete({""}), Not(Contains("__complete")));
}

TEST_F(Completion, OffersOptions)
{
    EXPECT_THAT(complete({"sync", "--dr"}), ElementsAre("--dry-run"));
    EXPECT_THAT(complete({"drives", "--js"}), ElementsAre("--json"));
    EXPECT_THAT(complete({"drives", ""}), Contains("--json"));
    EXPECT_THAT(complete({"ls", "--", "--js"}), ElementsAre(":files"));
}

TEST_F(Completion, OffersFilesWhereFilesGo)
{
    for (const auto& words : std::vector<std::vector<std::string>>{{"stat", "a", "b"}, {"ls", "pl"},
             {"add", "a", "b", ""}, {"run", "lock", "x"}, {"log", "cat", ""}, {"log", "grep", "user=anna", ""},
             {"sync", "--one", "x"}, {"checksum", ""}, {"closed", "--process", "1", "x"}})
        EXPECT_THAT(complete(words), ElementsAre(":files")) << testing::PrintToString(words);
    for (const auto& words : std::vector<std::vector<std::string>>{{"can-add-file", ""}, {"--home", ""},
             {"drive", "add", "x", "--server", ""}, {"drives", "--api-folder", "x"}, {"--dotnet-root", ""}})
        EXPECT_THAT(complete(words), ElementsAre(":folders")) << testing::PrintToString(words);
    for (const auto& words : std::vector<std::vector<std::string>>{
             {"drives", ""}, {"ls", "a", ""}, {"resolve", ""}, {"tree", "--depth", ""}, {"service", ""}}) {
        EXPECT_THAT(complete(words), Not(Contains(":files"))) << testing::PrintToString(words);
        EXPECT_THAT(complete(words), Not(Contains(":folders"))) << testing::PrintToString(words);
    }
}

TEST_F(Completion, OffersDrivesWhereAPathMayBeginWithOne)
{
    EXPECT_THAT(complete({"ls", ""}),
        ElementsAre(":files", "Harbour Project/", "Trelis Documents/", "Bridge Team/", "Morrow Archive/"));
    EXPECT_THAT(complete({"status", "--short", "Br"}), ElementsAre(":files", "Bridge Team/"));
    EXPECT_THAT(complete({"conflicts", "keep", "--this", "Mo"}), ElementsAre(":files", "Morrow Archive/"));
    expectOk({"service", "stop"});
    EXPECT_THAT(complete({"ls", "Br"}), ElementsAre(":files"));
}

TEST_F(Completion, OffersWhatShowsAndSettlesWhatIsPending)
{
    EXPECT_THAT(complete({"stat"}), ElementsAre("status", "stat"));
    EXPECT_THAT(complete({"status", "--ex"}), ElementsAre("--exit-code"));
    EXPECT_THAT(complete({"status", "--ig"}), ElementsAre("--ignored"));
    EXPECT_THAT(complete({"drive", "set", "x", "--un"}), ElementsAre("--unignore", "--unignore-all"));
    EXPECT_THAT(complete({"drive", "set", "x", "--ignore", "b"}), IsEmpty());
    EXPECT_THAT(complete({"conflicts", "k"}), Contains("keep"));
    EXPECT_THAT(complete({"conflicts", "keep", "--o"}), ElementsAre("--other"));
    EXPECT_THAT(complete({"sync", "--q"}), ElementsAre("--quiet"));
    EXPECT_THAT(complete({"--color", "a"}), ElementsAre("auto", "always"));
}

TEST_F(Completion, OffersTheValuesThatTheToolKnows)
{
    EXPECT_THAT(complete({"service", "set-state", "r"}), ElementsAre("running", "requires-update"));
    EXPECT_THAT(complete({"service", "delay", "getF"}), ElementsAre("getFolderContents"));
    EXPECT_THAT(complete({"service", "fail", "sync"}), ElementsAre("syncFiles", "sync"));
    EXPECT_THAT(complete({"service", "fail", "sync", "a", "--as", "not"}), ElementsAre("not-running", "not-installed"));
    EXPECT_THAT(complete({"service", "clear", "getDr"}), ElementsAre("getDrives"));
    EXPECT_THAT(complete({"drive", "set", "x", "--offline", ""}), ElementsAre("yes", "no"));
    EXPECT_THAT(complete({"completion", ""}), ElementsAre("bash", "zsh", "fish"));
    EXPECT_THAT(complete({"help", "dr"}), ElementsAre("drives", "drive"));
    EXPECT_THAT(complete({"help", "service", "sto"}), ElementsAre("stop"));
}

TEST_F(Completion, OffersTheValuesThatTheSyncApplicationKnows)
{
    EXPECT_THAT(complete({"stat", "--drive", "H"}), ElementsAre("Harbour Project"));
    EXPECT_THAT(complete({"drive", "remove", "B"}), ElementsAre("Bridge Team"));
    EXPECT_THAT(complete({"props", "--definitions", ""}),
        ElementsAre("Harbour Project", "Trelis Documents", "Bridge Team", "Morrow Archive"));
    EXPECT_THAT(complete({"props", "--id", "Siz"}), ElementsAre("Size"));
    EXPECT_THAT(complete({"run", "lo"}), ElementsAre("lock"));
    EXPECT_THAT(complete({"root", "--type", "Quorvex.DataSourceType.M"}), ElementsAre("Quorvex.DataSourceType.Morrow"));
    EXPECT_THAT(complete({"--home", text(folder / "none"), "stat", "--drive", ""}), IsEmpty());
}

TEST_F(Completion, IsSilentWhenTheSyncApplicationCannotBeAsked)
{
    expectOk({"service", "stop"});

    EXPECT_THAT(complete({"stat", "--drive", ""}), IsEmpty());
    EXPECT_THAT(complete({"run", ""}), Not(Contains("lock")));
}

#ifndef _WIN32 // Where these shells are.

/// Runs the script of a shell with a few lines that try it.
class ShellCompletion : public Completion
{
protected:
    std::vector<std::string> tryIn(const std::string& shell, const std::string& lines)
    {
        writeFile(folder / ("completion." + shell), expectOk({"completion", shell}));
        writeFile(folder / "place/first file.txt", "");
        fs::create_directory(folder / "place/first folder");
        writeFile(folder / "try", lines);
        ChildProgram program;
        program.program = "/usr/bin/env";
        program.arguments = {shell, text(folder / "try")};
        program.currentFolder = folder / "place";
        program.environment = {{"TESSAPORT_HOME", text(home)}, {"HOME", text(folder)}, {"XDG_CONFIG_HOME", ""},
            {"PATH", fs::path(fs::absolute(TESSAPORT_TOOL)).parent_path().string() + ":/usr/bin:/bin"}};
        const ChildResult finished = TestSupport::run(program);
        EXPECT_EQ(finished.exitCode, 0) << finished.description();
        EXPECT_EQ(finished.errors, "");
        return linesOf(finished.output);
    }

    /// What the tool says about `service stop`.
    std::string stopDescription()
    {
        const std::string line = expectOk({"__complete", "--", "service", "sto"});
        return line.substr(line.find('\t') + 1, line.size() - line.find('\t') - 2);
    }
};

TEST_F(ShellCompletion, WorksInBash)
{
    EXPECT_THAT(tryIn("bash", R"(source ../completion.bash
try() { COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=(); _tessaport "$1"; printf '%s,' "${COMPREPLY[@]}"; echo; }
try tessaport dem
try tessaport --json service sta
try tessaport sync --dr
try tessaport stat --drive Har
try tessaport stat --drive Harbour\\\ P
try tessaport stat --drive \'Har
try tessaport stat first\\\ fi
try tessaport ls Harb
try tessaport can-add-file fi
try tessaport service set-state not-
)"),
        ElementsAre("demo,", "start,status,", "--dry-run,", "Harbour\\ Project,", "Harbour\\ Project,",
            "Harbour Project,", "first file.txt,", "Harbour Project/,", "first folder,", "not-running,not-installed,"));
}

TEST_F(ShellCompletion, WorksInZsh)
{
    EXPECT_THAT(tryIn("zsh", R"(compdef() { print -r -- registered "$@" }
_files() { print -r -- files "$@" }
_describe() { print -rl -- "${(@P)2}" }
source ../completion.zsh
try() { local -a words=("$@"); local CURRENT=$#; _tessaport; true }
try tessaport dem
try tessaport service sto
try tessaport stat --drive Harbour\\\ P
try tessaport stat fi
try tessaport can-add-file fi
)"),
        ElementsAre("registered _tessaport tessaport", "demo:Make a home with four drives and real files, and show it",
            "stop:" + stopDescription(), "Harbour Project:Quorvex.DataSourceType.Drive", "files", "files -/"));
}

TEST_F(ShellCompletion, WorksInFish)
{
    EXPECT_THAT(tryIn("fish", R"(source ../completion.fish
for line in 'tessaport dem' 'tessaport service sto' 'tessaport stat --drive Har' 'tessaport stat fi' 'tessaport can-add-file fi'
    complete -C $line
end
)"),
        ElementsAre("demo\tMake a home with four drives and real files, and show it", "stop\t" + stopDescription(),
            "Harbour Project\tQuorvex.DataSourceType.Drive", "first file.txt", "first folder/", "first folder/"));
}

#endif

} // namespace
} // namespace Quorvex::Velmora::ToolTest
