// The tool in an installation that is somewhere else, moved, in two versions, or not of one release.
#include <algorithm>

#include <gmock/gmock.h>

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::HasSubstr;

fs::path builtTree() { return fs::path(TESSAPORT_TOOL).parent_path().parent_path(); }

#ifdef _WIN32
constexpr const char* LibraryFolder = "bin";
#else
constexpr const char* LibraryFolder = "lib";
#endif

class InstalledTree : public ToolTest
{
protected:
    InstalledTree() { install(tree); }

    // Copies what the build tree has of an installation.
    static void install(const fs::path& prefix)
    {
        fs::create_directories(prefix / "share" / "velmora");
        fs::copy(builtTree() / "share/velmora/local-service", prefix / "share/velmora/local-service",
            fs::copy_options::recursive);
        fs::create_directories(prefix / "bin");
        fs::copy(TESSAPORT_TOOL, prefix / "bin");
        fs::create_directories(prefix / LibraryFolder / "velmora");
        for (const fs::directory_entry& file : fs::directory_iterator(builtTree() / LibraryFolder)) {
            if (file.path().filename().u8string().find("VelmoraTessaport.") != std::string::npos)
                fs::copy(file.path(), prefix / LibraryFolder / file.path().filename(), fs::copy_options::copy_symlinks);
        }
        fs::copy(builtTree() / LibraryFolder / "velmora/bridge", prefix / LibraryFolder / "velmora/bridge");
    }

    ChildResult runIn(const fs::path& prefix, std::vector<std::string> arguments)
    {
        ChildProgram program;
        program.program = (prefix / "bin" / fs::path(TESSAPORT_TOOL).filename()).make_preferred();
        program.arguments = std::move(arguments);
        return runProgram(program);
    }

    std::map<std::string, nlohmann::json> examine(const fs::path& prefix)
    {
        const ChildResult finished = runIn(prefix, {"doctor", "--json"});
        std::map<std::string, nlohmann::json> bySubject;
        for (const auto& finding : nlohmann::json::parse(finished.output))
            bySubject[finding["subject"]] = finding;
        return bySubject;
    }

    static std::vector<fs::path> filesIn(const fs::path& prefix)
    {
        std::vector<fs::path> files;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(prefix))
            files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        return files;
    }

    const fs::path tree = folder / toPath("Ablage für Пётр");
};

void expectInside(const std::map<std::string, nlohmann::json>& findings, const fs::path& prefix)
{
    for (const char* const subject : {"Tool", "Library", "Bridge", "API"})
        EXPECT_THAT(findings.at(subject)["detail"].get<std::string>(), testing::StartsWith(text(prefix))) << subject;
}

TEST_F(InstalledTree, WorksInAPrefixWithBlanksAfterItWasMovedAndWritesNothingIntoIt)
{
    const fs::path moved = folder / "moved";
    EXPECT_EQ(runIn(tree, {"demo"}).exitCode, 0);
    const std::size_t count = filesIn(tree).size();
    fs::rename(tree, moved);

    const auto findings = examine(moved);

    for (const auto& [subject, finding] : findings)
        EXPECT_EQ(finding["good"], true) << finding;
    expectInside(findings, moved);
    EXPECT_EQ(filesIn(moved).size(), count);
}

TEST_F(InstalledTree, UsesItsOwnPartsWithAnotherInstallationBesideIt)
{
    const fs::path other = folder / "other";
    install(other);
    makeDemo();

    expectInside(examine(tree), tree);
    expectInside(examine(other), other);
}

TEST_F(InstalledTree, NamesADamagedDotnetThatBelongsToIt)
{
    makeDemo();
    const fs::path shipped = tree / LibraryFolder / "velmora" / "dotnet";
    fs::create_directory(shipped);

    const auto findings = examine(tree);

    EXPECT_EQ(findings.at(".NET")["good"], false);
    EXPECT_THAT(findings.at(".NET")["detail"].get<std::string>(), HasSubstr(text(shipped)));
    EXPECT_THAT(findings.at(".NET")["remedy"].get<std::string>(), HasSubstr("install the library again"));
    EXPECT_THAT(findings.at("Runtime")["detail"].get<std::string>(), HasSubstr("--dotnet-root"));
}

#ifndef _WIN32 // There the version is in the file of the library.
TEST_F(InstalledTree, NamesABridgeOfAnotherRelease)
{
    makeDemo();
    const std::string release = TESSAPORT_VERSION;
    for (const std::string& other : {std::string("0.0.1"), std::string("99.0.0")}) {
        const fs::path prefix = folder / other;
        install(prefix);
        const fs::path libraries = prefix / LibraryFolder;
        const std::string soname = "libVelmoraTessaport.so.0";
        fs::rename(libraries / ("libVelmoraTessaport.so." + release), libraries / ("libVelmoraTessaport.so." + other));
        fs::remove(libraries / soname);
        fs::create_symlink("libVelmoraTessaport.so." + other, libraries / soname);

        const auto findings = examine(prefix);

        EXPECT_EQ(findings.at("Bridge")["good"], false) << other;
        EXPECT_THAT(findings.at("Bridge")["detail"].get<std::string>(),
            testing::AllOf(HasSubstr("has version " + release), HasSubstr("the library has " + other)));
        EXPECT_THAT(findings.at("Bridge")["remedy"].get<std::string>(), HasSubstr("from one release"));
    }
}
#endif

} // namespace
} // namespace Quorvex::Velmora::ToolTest
