#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <string>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/home/Home.h"
#include "tools/tessaport/output/JsonFwd.h"

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

/// The file of a home that the service reads at every request: its state, and what was set for requests.
class ServiceFile
{
public:
    explicit ServiceFile(Home serviceHome);

    [[nodiscard]] const Home& home() const { return place; }
    [[nodiscard]] std::filesystem::path path() const { return place.serviceFile(); }

    /// The current state; null if the file names none. @throws Failure if the file cannot be read.
    [[nodiscard]] const ServiceStateName* state() const;

    /// Writes the state and keeps everything else; "not-installed" removes the file. A damaged file is written anew.
    ///
    /// @throws Failure if there is no home, or if something other than a file is in its place.
    void setState(const std::string& name) const;

    /// The content. @throws Failure if there is no file, or if it is damaged.
    [[nodiscard]] Json content() const;

    /// Changes the content while no other process does. If `edit` throws, the file stays as it is.
    ///
    /// @throws Failure as content() does, or if it cannot be written.
    void change(const std::function<void(Json&)>& edit) const;

private:
    void requireHome() const;
    void write(const Json& changed) const;
    [[nodiscard]] Json parsed() const;

    Home place;
};

} // namespace Quorvex::Velmora::Tool
