#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace Quorvex::Velmora::Tool
{

/// The home folder of the local sync service, as far as the tool writes to it: the state and the drives.
class Home
{
public:
    /// Finds the folder that the service uses: TESSAPORT_HOME, otherwise Tessaport in the per-user data folder.
    static Home locate();

    explicit Home(std::filesystem::path homeFolder);

    [[nodiscard]] const std::filesystem::path& folder() const { return root; }
    [[nodiscard]] std::filesystem::path serviceFile() const { return root / "service.json"; }
    [[nodiscard]] std::filesystem::path serviceLockFile() const { return root / "service.lock"; }
    [[nodiscard]] std::filesystem::path drivesFile() const { return root / "drives.json"; }

    /// Locked by the service while a request changes files of drives.
    [[nodiscard]] std::filesystem::path lockFile() const { return root / "lock"; }

    /// What the service remembers of a drive, and what its earlier versions did. @param id  in lower case, with
    /// hyphens.
    [[nodiscard]] std::array<std::filesystem::path, 2> stateFilesOf(const std::string& id) const
    {
        return {root / "state" / (id + ".records"), root / "state" / (id + ".json")};
    }

    /// Replaces a file in the home, at any depth, in one step: readers see the old content or the new one. The caller
    /// holds the lock of the file, or lockFile() if it has none.
    ///
    /// @param modified  its last-write time in seconds since 1970 (UTC); nothing means now.
    /// @throws Failure if it cannot be written.
    void replaceFile(const std::filesystem::path& file, const std::string& content,
        std::optional<std::int64_t> modified = std::nullopt) const;

private:
    std::filesystem::path root;
};

} // namespace Quorvex::Velmora::Tool
