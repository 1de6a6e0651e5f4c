#include "tools/tessaport/home/DriveFolders.h"

#include <filesystem>
#include <system_error>
#include <vector>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/home/DrivesFile.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

struct Side {
    std::string drive;
    std::string path;
};

void requireReadable(const fs::path& folder, const std::string& named)
{
    std::error_code error;
    const fs::directory_iterator entries(folder, error);
    if (error)
        throw Failure(ExitCode::Failure, named + " cannot be read: " + Platform::messageOf(error) +
                                             "; change its permissions or choose another folder");
}

void requireWritable(const fs::path& folder, const std::string& named)
{
    if (const std::error_code error = Platform::tryCreating(folder))
        throw Failure(ExitCode::Failure, named + " cannot be written to: " + Platform::messageOf(error) +
                                             "; change its permissions or choose another folder");
}

std::vector<Side> sidesOf(const Home& home, const Json& drive)
{
    std::vector<Side> sides;
    for (const char* member : {"workspace", "server"}) {
        if (const std::string folder = memberOf(drive, member); !folder.empty())
            sides.push_back({memberOf(drive, "name"),
                toText((home.folder() / toPath(Platform::nativeSlashes(folder))).lexically_normal())});
    }
    return sides;
}

bool isSameOrHolds(const Side& outer, const Side& inner)
{
    for (const std::string& folder : selfAndParents(inner.path)) {
        std::error_code notThere;
        if (fs::equivalent(toPath(folder), toPath(outer.path), notThere))
            return true;
    }
    return false;
}

void requireApart(const Side& mine, const Side& other)
{
    if (isSameOrHolds(mine, other) || isSameOrHolds(other, mine))
        throw Failure(ExitCode::Failure, "the folder '" + mine.path + "' of the drive '" + mine.drive + "' and '" +
                                             other.path + "' of the drive '" + other.drive +
                                             "' overlap; choose folders that share nothing with those of other drives");
}

} // namespace

std::string usableFolder(const std::string& given, const std::string& option, bool mustWrite)
{
    std::string path = withoutLinks(absolutePath(given));
    const std::string named = "the folder '" + path + "' of " + option;
    std::error_code error;
    const fs::file_status status = fs::status(toPath(path), error);
    if (status.type() == fs::file_type::not_found)
        throw Failure(ExitCode::NotFound, named + " does not exist; create it first, or correct the path");
    if (status.type() == fs::file_type::none)
        throw Failure(ExitCode::Failure, named + " cannot be read: " + Platform::messageOf(error));
    if (status.type() != fs::file_type::directory)
        throw Failure(ExitCode::Failure, "'" + path + "' of " + option + " is not a folder; name a folder");
    requireReadable(toPath(path), named);
    if (mustWrite)
        requireWritable(toPath(path), named);
    return path;
}

void requireFolderOfItsOwn(const Home& home, const Json& drive, const Json& others)
{
    const std::vector<Side> mine = sidesOf(home, drive);
    for (std::size_t i = 1; i < mine.size(); ++i)
        requireApart(mine[i - 1], mine[i]);
    for (const Json& other : others) {
        for (const Side& theirs : sidesOf(home, other)) {
            for (const Side& side : mine)
                requireApart(side, theirs);
        }
    }
}

} // namespace Quorvex::Velmora::Tool
