#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "tools/tessaport/home/Home.h"
#include "tools/tessaport/output/JsonFwd.h"

namespace Quorvex::Velmora::Tool
{

/// The file of a home that names the drives.
class DrivesFile
{
public:
    /// Gets a file that would replace this one, and throws what prevents that.
    using Check = std::function<void(const std::filesystem::path& proposal)>;

    explicit DrivesFile(Home serviceHome);

    [[nodiscard]] const Home& home() const { return place; }
    [[nodiscard]] std::filesystem::path path() const { return place.drivesFile(); }

    /// Changes the list of drives in one step, while no request changes files of drives; waits for one that does. If
    /// `edit` or `check` throws, the file stays as it is.
    ///
    /// @param edit       gets an array; members that it does not know stay.
    /// @param mayBeNew   makes the home if there is none; after a failure there still is none.
    /// @param afterwards called after the file was replaced, still under the lock; may be empty.
    /// @throws Failure if there is no home, or if the file is damaged or cannot be written.
    void change(const std::function<void(Json&)>& edit, const Check& check, bool mayBeNew = false,
        const std::function<void()>& afterwards = {}) const;

private:
    [[nodiscard]] bool hasHome() const;
    void requireRoom() const;
    void makeHome() const;
    void removeHome() const;
    [[nodiscard]] Json list() const;
    void replace(const Json& changed, const Check& check) const;

    Home place;
};

/// The drive with a name or identifier in a list of drives.
///
/// @throws Failure with NotFound if no drive has it, or if several have it.
Json& driveIn(Json& list, const std::string& nameOrId);

/// The string that a member of a drive holds; empty if it holds none.
std::string memberOf(const Json& drive, const char* member);

} // namespace Quorvex::Velmora::Tool
