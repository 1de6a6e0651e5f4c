#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "tools/tessaport/errors/ExitCode.h"

namespace Quorvex::Velmora::Tool
{

/// A state of the service: its name in the home's file and on the command line, and the code that `service status` ends
/// with.
struct ServiceStateName {
    const char* name;
    const char* meaning;
    ExitCode code;
};

inline constexpr std::array<ServiceStateName, 6> ServiceStates{{
    {"running", "requests are served", ExitCode::Ok},
    {"not-running", "requests fail until 'tessaport service start'", ExitCode::NotRunning},
    {"requires-update", "the sync application must be updated", ExitCode::UpdateNeeded},
    {"forced-update", "an update of the sync application is pending", ExitCode::UpdateNeeded},
    {"api-requires-update", "the programming interface must be updated", ExitCode::UpdateNeeded},
    {"not-installed", "there is no service in the home", ExitCode::NotInstalled},
}};

/// The home folder of the local sync service, as far as the tool writes to it: the state and the drives.
class Home
{
public:
    /// Finds the folder that the service uses: TESSAPORT_HOME, otherwise Tessaport in the per-user data folder.
    static Home locate();

    explicit Home(std::filesystem::path homeFolder);

    [[nodiscard]] const std::filesystem::path& folder() const { return root; }
    [[nodiscard]] std::filesystem::path serviceFile() const { return root / "service.json"; }
    [[nodiscard]] std::filesystem::path drivesFile() const { return root / "drives.json"; }

    /// The current state; null if the file names none. @throws Failure if the file cannot be read.
    [[nodiscard]] const ServiceStateName* state() const;

    /// Writes the state; "not-installed" removes its file. @throws Failure if there is no home.
    void setState(const std::string& name) const;

    /// Replaces a file in the home, at any depth, in one step: readers see the old content or the new one.
    ///
    /// @param modified  its last-write time in seconds since 1970 (UTC); nothing means now.
    /// @throws Failure if it cannot be written.
    void replaceFile(const std::filesystem::path& file, const std::string& content,
        std::optional<std::int64_t> modified = std::nullopt) const;

private:
    std::filesystem::path root;
};

/// The content of a file; nothing if it cannot be read.
std::optional<std::string> readFile(const std::filesystem::path& file);

} // namespace Quorvex::Velmora::Tool
