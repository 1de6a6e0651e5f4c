// A home with one drive, in a folder of its own, and the programs that copy the drive.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::Bench
{

struct Run {
    double seconds;
    double processorSeconds;
    double peakMegabytes;
};

class SyncHome
{
public:
    SyncHome();

    /// Writes small files of different sizes into folders of the workspace.
    void writeFiles(int count, int filesPerFolder) const;

    /// Gives each file of the workspace another name in its folder.
    void renameFiles() const;

    /// Syncs the drive in a process of its own.
    /// @throws std::runtime_error if that fails or leaves a file of the workspace missing on the server.
    [[nodiscard]] Run sync() const;

    /// Copies the workspace to a folder beside the drive.
    /// @throws std::runtime_error if that fails.
    [[nodiscard]] Run rsync() const;

    /// Asks in a process of its own what is not in sync.
    /// @throws std::runtime_error if that fails.
    [[nodiscard]] Run status() const;

    /// Looks at both sides on this thread without doing anything with what is there, as little as any status can.
    /// @throws std::runtime_error if not all files are there.
    [[nodiscard]] Run lookAtBothSides() const;

    /// Asks in a process of its own for the version of the application, so that there is little more than the start.
    /// @throws std::runtime_error if that fails.
    [[nodiscard]] Run version() const;

    /// Lists the first folder of the workspace by the tool.
    /// @throws std::runtime_error if that fails.
    [[nodiscard]] Run listFolder() const;

    /// Lists the same folder by `ls -l`.
    /// @throws std::runtime_error if that fails.
    [[nodiscard]] Run systemListFolder() const;

    /// Puts the workspace under version control, with the repository outside of it.
    /// @throws std::runtime_error if that fails.
    void commit() const;

    /// Asks the version control what has changed in the workspace.
    /// @throws std::runtime_error if that fails.
    [[nodiscard]] Run gitStatus() const;

private:
    [[nodiscard]] Run tool(const std::vector<std::string>& arguments) const;
    [[nodiscard]] Run git(const std::vector<std::string>& arguments) const;

    TestSupport::TemporaryFolder folder;
    std::filesystem::path workspace;
    std::filesystem::path server;
    std::filesystem::path peer;
};

} // namespace Quorvex::Velmora::Bench
