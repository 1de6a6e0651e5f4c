#include "bench/sync/SyncHome.h"

#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <unistd.h>

#include "bench/sync/BareLook.h"
#include "tests/support/ChildProcess.h"

namespace Quorvex::Velmora::Bench
{
namespace
{

namespace fs = std::filesystem;

std::vector<fs::path> filesIn(const fs::path& folder)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files.push_back(entry.path());
    }
    return files;
}

Run runTimed(TestSupport::ChildProgram program)
{
    program.timeLimit = std::chrono::hours(1);
    // What was written before must not be flushed on the account of this run.
    ::sync();
    const auto begin = std::chrono::steady_clock::now();
    const auto result = TestSupport::run(program);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    if (!result.exitedWith(0))
        throw std::runtime_error(program.program.string() + " failed: " + result.description());
    return {took.count(), result.processorTime.count(), static_cast<double>(result.peakMemory) / 1e6};
}

} // namespace

SyncHome::SyncHome()
    : workspace(folder.path() / "workspace"), server(folder.path() / "server"), peer(folder.path() / "peer")
{
    fs::create_directory(workspace);
    fs::create_directory(peer);
    std::ofstream(folder.path() / "service.json") << R"({"state": "running"})";
    std::ofstream(folder.path() / "drives.json")
        << R"([{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "Bench", "type": "Quorvex.DataSourceType.Drive",)"
        << R"("workspace": "workspace", "server": "server"}])";
}

void SyncHome::writeFiles(int count, int filesPerFolder) const
{
    fs::path target;
    for (int i = 0; i < count; ++i) {
        if (i % filesPerFolder == 0) {
            target = workspace / ("folder " + std::to_string(i / filesPerFolder));
            fs::create_directory(target);
        }
        const std::string number = std::to_string(i);
        std::ofstream file(target / ("file " + number + ".txt"));
        // 100 to 4,000 bytes, no two files alike.
        file << number << std::string(static_cast<std::size_t>(100 + i * 389 % 3900), static_cast<char>('a' + i % 26));
    }
}

void SyncHome::renameFiles() const
{
    for (const fs::path& file : filesIn(workspace))
        fs::rename(file, file.parent_path() / ("renamed " + file.filename().string()));
}

Run SyncHome::sync() const
{
    const Run run = tool({"sync"});
    for (const fs::path& file : filesIn(workspace)) {
        const fs::path copy = server / fs::relative(file, workspace);
        if (!fs::exists(copy) || fs::file_size(copy) != fs::file_size(file))
            throw std::runtime_error("'" + file.string() + "' was not synced");
    }
    return run;
}

Run SyncHome::rsync() const
{
    TestSupport::ChildProgram program;
    program.program = "/usr/bin/rsync";
    program.arguments = {"-a", workspace.string() + "/", peer.string() + "/"};
    return runTimed(program);
}

Run SyncHome::status() const { return tool({"status"}); }

Run SyncHome::lookAtBothSides() const
{
    const auto begin = std::chrono::steady_clock::now();
    const Look look = lookAtBoth(workspace, server);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    if (look.files != 2 * filesIn(workspace).size())
        throw std::runtime_error("The sides of the drive differ");
    return {took.count(), look.processorSeconds, 0};
}

Run SyncHome::version() const { return tool({"version"}); }

Run SyncHome::listFolder() const { return tool({"ls", "Bench/folder 0"}); }

Run SyncHome::systemListFolder() const
{
    TestSupport::ChildProgram program;
    program.program = "/bin/ls";
    program.arguments = {"-l", (workspace / "folder 0").string()};
    return runTimed(program);
}

void SyncHome::commit() const
{
    static_cast<void>(git({"init", "--quiet"}));
    static_cast<void>(git({"add", "--all"}));
    static_cast<void>(
        git({"-c", "user.name=bench", "-c", "user.email=bench@localhost", "commit", "--quiet", "-m", "all"}));
}

Run SyncHome::gitStatus() const { return git({"status", "--short"}); }

Run SyncHome::tool(const std::vector<std::string>& arguments) const
{
    TestSupport::ChildProgram program;
    program.program = TESSAPORT_TOOL;
    program.arguments = arguments;
    program.environment = {{"TESSAPORT_HOME", folder.path().string()}};
    return runTimed(program);
}

Run SyncHome::git(const std::vector<std::string>& arguments) const
{
    TestSupport::ChildProgram program;
    program.program = "/usr/bin/git";
    program.arguments = arguments;
    program.environment = {{"GIT_DIR", (folder.path() / "git").string()}, {"GIT_WORK_TREE", workspace.string()}};
    return runTimed(program);
}

} // namespace Quorvex::Velmora::Bench
