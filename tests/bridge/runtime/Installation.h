/// @file
/// A copy of the library and its bridge for one test, laid out as they are installed, in a folder whose name is not
/// ASCII.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{

/// A path of the build in the platform's own form, which messages show: with its slashes, and with the drive on
/// Windows.
[[nodiscard]] std::filesystem::path native(const char* path);

/// The folder of one variant of the vendor's assembly: see tests/managed/Vendors.
[[nodiscard]] std::filesystem::path vendorFolder(std::string_view variant);

/// The bridge that was built for the strong-named variant.
[[nodiscard]] std::filesystem::path vendorBridgeFolder();

/// The library and the bridge of the build tree.
[[nodiscard]] std::filesystem::path libraryOfBuild();
[[nodiscard]] std::filesystem::path bridgeOfBuild();

/// A host program, or a library for one.
[[nodiscard]] std::filesystem::path hostFile(std::string_view name);

/// The exit code of hosts that succeed. No failure of the runtime has it.
constexpr int ExitCodeOfHosts = 7;

/// Runs a host with the library of the build tree.
[[nodiscard]] ChildResult runHost(std::string_view name, const std::vector<std::string>& arguments,
    std::chrono::seconds timeLimit, std::map<std::string, std::string> environment = {});

/// Runs the host written in C# (tests/managed/ManagedHost) with the library of the folder, after it has loaded the
/// assemblies that are named.
[[nodiscard]] ChildResult runManagedHost(const std::filesystem::path& apiFolder,
    const std::vector<std::string>& loadedBefore,
    const std::filesystem::path& libraryFolder = libraryOfBuild().parent_path());

/// The .NET installation that the tests were built with.
[[nodiscard]] std::filesystem::path dotnetRoot();

/// Writes the file, and creates the folders above it.
void writeText(const std::filesystem::path& file, std::string_view text);

class Installation
{
public:
    Installation();

    [[nodiscard]] const std::filesystem::path& root() const noexcept { return folder.path(); }
    [[nodiscard]] std::filesystem::path library() const { return root() / "lib"; }
    [[nodiscard]] std::filesystem::path bridge() const { return library() / "velmora" / "bridge"; }

    /// Replaces the managed half by another build of it.
    void replaceBridge(const std::filesystem::path& folder) const;

    /// A copy of the variant's folder, which the test may change.
    [[nodiscard]] std::filesystem::path copyVendor(std::string_view variant, std::string_view name = "vendor") const;

    /// Takes the steps of Connect_host.cpp in one process.
    [[nodiscard]] ChildResult connect(const std::vector<std::string>& steps) const;

    /// Lets the next host find the library in `folder`.
    void takeLibraryFrom(const std::filesystem::path& folder);

    /// What the next host finds in its environment, and where it is started.
    std::map<std::string, std::string> environment;
    std::filesystem::path currentFolder;

private:
    TemporaryFolder folder;
};

/// The lines that a host wrote.
[[nodiscard]] std::vector<std::string> linesOf(const ChildResult& result);

[[nodiscard]] inline std::string step(std::string_view name, const std::filesystem::path& value)
{
    return std::string(name) + "=" + value.u8string();
}

[[nodiscard]] inline std::string renaming(const std::filesystem::path& from, const std::filesystem::path& to)
{
    return "rename=" + from.u8string() + ">" + to.u8string();
}

} // namespace Quorvex::Velmora::TestSupport
