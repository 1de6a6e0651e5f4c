#include "tools/tessaport/items/ItemPaths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "tools/tessaport/commandline/Suggestion.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

using Drives = std::vector<Drive>;

Drives drivesOf(Context& context)
{
    const auto drives = context.connection().getDrives();
    return {drives.begin(), drives.end()};
}

std::string firstNameOf(const std::string& path) { return path.substr(0, path.find_first_of("/\\")); }

/// What follows a drive's name in a path, with its slash; nothing if the path begins with another name.
std::optional<std::string> restAfter(const std::string& name, const std::string& path)
{
    if (name.empty() || path.compare(0, name.size(), name) != 0)
        return std::nullopt;
    if (path.size() > name.size() && path[name.size()] != '/' && path[name.size()] != '\\')
        return std::nullopt;
    return path.substr(name.size());
}

std::optional<std::string> restAfterDrive(const Drive& drive, const std::string& path)
{
    if (auto rest = restAfter(toUtf8(drive.name), path))
        return rest;
    const std::string first = firstNameOf(path);
    return asciiLower(first) == toUtf8(drive.id) ? std::optional(path.substr(first.size())) : std::nullopt;
}

bool beginsWithAName(const std::string& path)
{
    const std::string first = firstNameOf(path);
    return !first.empty() && first != "." && first != ".." && !toPath(Platform::nativeSlashes(path)).has_root_path();
}

/// Whether the first name of a path is in the current folder; not only the path, so that a path to something that does
/// not exist yet means the same after it was created.
bool beginsHere(const std::string& path)
{
    std::error_code error;
    const fs::path first = toPath(absolutePath(firstNameOf(path)));
    return fs::symlink_status(first, error).type() != fs::file_type::not_found;
}

Failure ambiguous(const std::string& name, std::size_t count)
{
    return {ExitCode::NotFound, "there are " + std::to_string(count) + " drives '" + name +
                                    "'; name one by its identifier, which 'tessaport drives --json' shows"};
}

const Drive* closestDrive(const Drives& drives, const std::string& name)
{
    std::vector<std::string> names;
    for (const Drive& drive : drives)
        names.push_back(asciiLower(toUtf8(drive.name)));
    const auto meant = closest(asciiLower(name), names);
    return meant ? &drives[static_cast<std::size_t>(std::find(names.begin(), names.end(), *meant) - names.begin())]
                 : nullptr;
}

std::string placeOf(const Drive& drive)
{
    return '\'' + toUtf8(drive.name) + "' with the workspace '" + localText(drive.workspaceLocation) + '\'';
}

} // namespace

std::string ItemPaths::of(const std::string& given)
{
    std::string local = absolutePath(given);
    if (!beginsWithAName(given) || beginsHere(given))
        return local;
    const Drive* const drive = driveBefore(given);
    if (drive == nullptr || isItem(absolutePath(firstNameOf(given))))
        return local;
    return absolutePath(localText(drive->workspaceLocation) + restAfterDrive(*drive, given).value_or(""));
}

std::string ItemPaths::hintFor(const std::string& given)
{
    if (!beginsWithAName(given))
        return "";
    if (const Drive* const named = driveBefore(given))
        return of(given) == absolutePath(given)
                   ? "; '" + firstNameOf(given) + "' exists in the current folder and hides the drive " +
                         placeOf(*named)
                   : "";
    const Drive* const meant = closestDrive(drives(), firstNameOf(given));
    return meant == nullptr ? "" : "; did you mean the drive " + placeOf(*meant) + '?';
}

const Drives& ItemPaths::drives()
{
    if (!known)
        known = drivesOf(context);
    return *known;
}

const Drive* ItemPaths::driveBefore(const std::string& given)
{
    const Drive* found = nullptr;
    std::size_t count = 0;
    for (const Drive& drive : drives()) {
        if (!restAfterDrive(drive, given))
            continue;
        found = &drive;
        ++count;
    }
    if (count > 1)
        throw ambiguous(firstNameOf(given), count);
    return found;
}

bool ItemPaths::isItem(const std::string& path)
{
    QVBuffer<QVString> paths;
    paths.Append(toQVString(path));
    const auto results = context.connection().getItemsByWorkspacePaths(paths);
    return results.GetSize() == 1 && results[0]->result == Result::Success;
}

Drive findDrive(Context& context, const std::string& nameOrId)
{
    const Drives all = drivesOf(context);
    Drives found;
    std::copy_if(all.begin(), all.end(), std::back_inserter(found), [&nameOrId](const Drive& drive) {
        return toUtf8(drive.name) == nameOrId || toUtf8(drive.id) == asciiLower(nameOrId);
    });
    if (found.size() == 1)
        return found.front();
    if (found.size() > 1)
        throw ambiguous(nameOrId, found.size());
    std::string names;
    for (const Drive& drive : all)
        names += (names.empty() ? "'" : ", '") + toUtf8(drive.name) + "'";
    const Drive* const meant = closestDrive(all, nameOrId);
    throw Failure(ExitCode::NotFound, "there is no drive '" + nameOrId + "'; " +
                                          (meant != nullptr   ? "did you mean " + placeOf(*meant) + '?'
                                              : names.empty() ? "there are no drives at all"
                                                              : "there are " + names));
}

} // namespace Quorvex::Velmora::Tool
