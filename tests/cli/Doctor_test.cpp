#include <gmock/gmock.h>
#ifndef _WIN32
#include <unistd.h>
#endif

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;
using testing::StartsWith;

#ifdef _WIN32
constexpr const char* DataFolderVariable = "LOCALAPPDATA";
#else
constexpr const char* DataFolderVariable = "XDG_DATA_HOME";
#endif

class Doctor : public ToolTest
{
protected:
    std::map<std::string, nlohmann::json> examine(std::vector<std::string> arguments, int exitCode)
    {
        arguments.insert(arguments.end(), {"doctor", "--json"});
        const ChildResult finished = run(std::move(arguments));
        EXPECT_EQ(finished.exitCode, exitCode) << finished.output << finished.errors;
        std::map<std::string, nlohmann::json> bySubject;
        for (const auto& finding : nlohmann::json::parse(finished.output))
            bySubject[finding["subject"]] = finding;
        return bySubject;
    }
};

TEST_F(Doctor, FindsNothingWrongWithAGoodInstallation)
{
    makeDemo();

    const auto findings = examine({}, 0);

    for (const std::string subject :
        {"Tool", "Library", "Bridge", "API", ".NET", "Home", "Runtime", "Service", "Drives"}) {
        ASSERT_EQ(findings.count(subject), 1U) << subject;
        EXPECT_EQ(findings.at(subject)["good"], true) << findings.at(subject);
        EXPECT_NE(findings.at(subject)["version"], "") << subject;
        EXPECT_EQ(findings.at(subject)["remedy"], "");
    }
    for (const std::string subject : {"Tool", "Library", "Bridge", "API", "Runtime"})
        EXPECT_TRUE(fs::exists(findings.at(subject)["detail"].get<std::string>())) << findings.at(subject);
    EXPECT_THAT(expectOk({"doctor"}), HasSubstr("Velmora.Bridge.dll"));
}

#ifndef _WIN32 // There, who may change it is not looked at.
TEST_F(Doctor, WarnsOfAHomeThatEveryoneMayChange)
{
    makeDemo();
    for (const fs::path& path : {home, home / "drives.json"}) {
        fs::permissions(path, fs::perms::others_write, fs::perm_options::add);

        const auto finding = examine({}, 0)["Home"];

        EXPECT_EQ(finding["good"], true);
        EXPECT_THAT(
            finding["remedy"].get<std::string>(), StartsWith("'" + text(path) + "' can be changed by everyone"));
        fs::permissions(path, fs::perms::others_write, fs::perm_options::remove);
    }
}

TEST_F(Doctor, WarnsOfAHomeOfAnotherUser)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "Only root can give files to another user.";
    makeDemo();
    ASSERT_EQ(chown(home.c_str(), 65533, 65533), 0);

    const auto finding = examine({}, 0)["Home"];

    EXPECT_EQ(finding["good"], true);
    EXPECT_THAT(finding["remedy"].get<std::string>(), HasSubstr("can be changed by user 65533"));
}
#endif

TEST_F(Doctor, ShowsTheVersionOfTheReleaseForEveryPartOfIt)
{
    makeDemo();

    const auto findings = examine({}, 0);

    for (const std::string subject : {"Tool", "Library", "Bridge", "API", "Service"})
        EXPECT_THAT(findings.at(subject)["version"].get<std::string>(), StartsWith(TESSAPORT_VERSION)) << subject;
}

TEST_F(Doctor, SaysWhatToDoWithoutDotnet)
{
    makeDemo();
    fs::create_directory(folder / "empty");

    const auto findings = examine({"--dotnet-root", text(folder / "empty")}, 1);

    EXPECT_EQ(findings.at(".NET")["good"], false);
    EXPECT_THAT(findings.at(".NET")["remedy"], HasSubstr("install the .NET runtime"));
    EXPECT_EQ(findings.at("Runtime")["good"], false);
    EXPECT_THAT(findings.at("Runtime")["detail"], HasSubstr(text(folder / "empty")));
    EXPECT_THAT(findings.at("Runtime")["detail"], HasSubstr("--dotnet-root"));
    EXPECT_EQ(findings.at("API")["good"], true);
    EXPECT_EQ(findings.count("Service"), 0U);
}

TEST_F(Doctor, SaysWhichVersionsOfDotnetAreTooOld)
{
    makeDemo();
    fs::create_directories(folder / "old/host/fxr/6.0.36");
    fs::create_directories(folder / "old/shared/Microsoft.NETCore.App/6.0.36");

    const auto findings = examine({"--dotnet-root", text(folder / "old")}, 1);

    EXPECT_EQ(findings.at(".NET")["good"], false);
    EXPECT_THAT(findings.at(".NET")["detail"], HasSubstr("6.0.36"));
}

TEST_F(Doctor, SaysThatTheAssemblyIsMissing)
{
    makeDemo();
    fs::create_directory(folder / "ohne Schnittstelle");

    const auto findings = examine({"--api-folder", text(folder / "ohne Schnittstelle")}, 1);

    EXPECT_EQ(findings.at("API")["good"], false);
    EXPECT_THAT(
        findings.at("API")["detail"], HasSubstr(withNativeSlashes("ohne Schnittstelle/Quorvex.Tessaport.API.dll")));
    EXPECT_THAT(findings.at("API")["remedy"], HasSubstr("--api-folder"));
    EXPECT_EQ(findings.at("Runtime")["good"], false);
}

TEST_F(Doctor, SaysThatAnAssemblyIsDamaged)
{
    makeDemo();
    const fs::path copy = folder / "damaged";
    const fs::path assembly = copy / "Quorvex.Tessaport.API.dll";
    fs::copy(fs::path(TESSAPORT_TOOL).parent_path().parent_path() / "share/velmora/local-service", copy,
        fs::copy_options::recursive);
    const std::string good = readFile(assembly);
    for (const auto& [content, detail] :
        {std::pair<std::string, std::string>{"", "is empty"}, {"no assembly", "is not a .NET assembly"},
            {good.substr(0, 100), "is cut short"}, {good.substr(0, good.size() / 2), "is cut short"}}) {
        writeFile(assembly, content);

        const auto findings = examine({"--api-folder", text(copy)}, 1);

        EXPECT_EQ(findings.at("API")["good"], false) << detail;
        EXPECT_EQ(findings.at("API")["detail"], text(assembly) + ' ' + detail);
    }
}

TEST_F(Doctor, HasARemedyForEverythingThatIsBad)
{
    const auto expectRemedies = [this](const std::vector<std::string>& arguments, int exitCode) {
        for (const auto& [subject, finding] : examine(arguments, exitCode))
            EXPECT_EQ(finding["remedy"] == "", finding["good"] == true) << finding;
    };
    expectRemedies({}, 4);
    makeDemo();
    fs::create_directory(folder / "empty");
    expectRemedies({}, 0);
    expectRemedies({"--dotnet-root", text(folder / "empty")}, 1);
    expectRemedies({"--api-folder", text(folder / "empty")}, 1);
    for (const auto& [state, code] : {std::pair<std::string, int>{"not-running", 5}, {"forced-update", 6}}) {
        expectOk({"service", "set-state", state});
        expectRemedies({}, code);
    }
    writeFile(home / "service.json", "{");
    expectRemedies({}, 1);
}

TEST_F(Doctor, NamesWhatTheServiceCouldNotTidyUp)
{
    makeDemo();
    fs::remove_all(home / "state");
    writeFile(home / "state", "mine");

    const auto findings = examine({}, 1);

    EXPECT_EQ(findings.at("Drives")["good"], false);
    EXPECT_THAT(findings.at("Drives")["detail"], HasSubstr(text(home / "state")));
    EXPECT_NE(findings.at("Drives")["remedy"], "");
    EXPECT_THAT(expectOk({"ls"}), HasSubstr("Harbour Project"));
}

TEST_F(Doctor, SaysThatTheServiceIsNotInstalled)
{
    const auto findings = examine({}, 4);

    EXPECT_EQ(findings.at("Runtime")["good"], true);
    EXPECT_EQ(findings.at("Service")["good"], false);
    EXPECT_THAT(findings.at("Service")["detail"], HasSubstr("tessaport demo"));
}

TEST_F(Doctor, WorksFromANonAsciiFolderInTheCLocale)
{
    makeDemo();
    const fs::path copy = folder / toPath("Встановлення ü");
    fs::copy(fs::path(TESSAPORT_TOOL).parent_path().parent_path() / "share/velmora/local-service", copy,
        fs::copy_options::recursive);
    ChildProgram program;
    program.arguments = {"--api-folder", text(copy), "drives"};
    program.environment = CLocale;

    const ChildResult finished = runProgram(program);

    EXPECT_EQ(finished.exitCode, 0) << finished.errors;
}

TEST_F(Doctor, UsesTheUsersDataFolderWhenNoHomeIsNamed)
{
    ChildProgram program;
    program.arguments = {"--json", "service", "status"};
    program.environment = {{"TESSAPORT_HOME", ""}, {DataFolderVariable, text(folder / "data")}};

    const ChildResult finished = runProgram(program);

    EXPECT_EQ(finished.exitCode, 4);
    EXPECT_EQ(nlohmann::json::parse(finished.output)["home"], text(folder / "data/Tessaport"));
    program.arguments = {"demo"};
    EXPECT_EQ(runProgram(program).exitCode, 0);
    EXPECT_TRUE(fs::exists(folder / "data/Tessaport/service.json"));
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
