#include "tools/tessaport/home/DrivesFile.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>
#include <vector>

#include "tools/tessaport/commandline/Suggestion.h"
#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/home/HeldLock.h"
#include "tools/tessaport/home/HomeText.h"
#include "tools/tessaport/home/ServiceFile.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

// As long as requests of the service wait for each other.
constexpr std::chrono::minutes LongestWait(2);

/// Removes a file of the home that is needed for a moment.
class Temporary
{
public:
    explicit Temporary(fs::path temporary) : file(std::move(temporary)) {}
    ~Temporary()
    {
        std::error_code ignored;
        fs::remove(file, ignored);
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;

    const fs::path file;
};

std::string namesIn(const Json& list)
{
    std::string names;
    for (const Json& drive : list)
        names += (names.empty() ? "'" : ", '") + memberOf(drive, "name") + '\'';
    return names.empty() ? "there are no drives at all" : "there are " + names;
}

Failure noSuchDrive(const Json& list, const std::string& nameOrId)
{
    std::vector<std::string> names;
    for (const Json& drive : list)
        names.push_back(memberOf(drive, "name"));
    const auto meant = closest(nameOrId, names);
    return {ExitCode::NotFound,
        "there is no drive '" + nameOrId + "'; " + (meant ? "did you mean '" + *meant + "'?" : namesIn(list))};
}

bool isThere(const fs::path& file)
{
    std::error_code error;
    return fs::exists(file, error);
}

} // namespace

DrivesFile::DrivesFile(Home serviceHome) : place(std::move(serviceHome)) {}

void DrivesFile::change(const std::function<void(Json&)>& edit, const Check& check, bool mayBeNew,
    const std::function<void()>& afterwards) const
{
    if (mayBeNew)
        requireRoom();
    else if (!hasHome())
        throw Failure(ExitCode::NotInstalled, "there is no home in '" + toText(place.folder()) +
                                                  "'; make one with 'tessaport drive add', or name another with "
                                                  "--home");
    const HeldLock held(place.lockFile(), LongestWait);
    const bool isNew = mayBeNew && !hasHome();
    try {
        if (isNew)
            makeHome();
        else if (mayBeNew && !isThere(place.serviceFile())) // Its making was interrupted.
            ServiceFile(place).setState("running");
        Json drives = list();
        edit(drives);
        replace(drives, check);
    } catch (...) {
        if (isNew)
            removeHome();
        throw;
    }
    if (afterwards)
        afterwards();
}

bool DrivesFile::hasHome() const { return isThere(path()) || isThere(place.serviceFile()); }

void DrivesFile::requireRoom() const
{
    if (!hasHome() && holdsOtherFiles(place))
        throw Failure(ExitCode::Failure, "'" + toText(place.folder()) +
                                             "' is to become the home of the local sync service, and it holds "
                                             "something else; name another folder with --home");
    fs::create_directories(place.folder());
}

void DrivesFile::makeHome() const
{
    place.replaceFile(path(), "[]\n");
    ServiceFile(place).setState("running");
}

void DrivesFile::removeHome() const
{
    std::error_code ignored;
    fs::remove(place.serviceFile(), ignored);
    fs::remove(path(), ignored);
}

Json DrivesFile::list() const
{
    if (!isHomeFile(path(), "try again"))
        return Json::array();
    Json drives = tryParseJson(readHomeFile(path()));
    if (!drives.is_array() || !std::all_of(drives.begin(), drives.end(), [](const Json& d) { return d.is_object(); }))
        throw Failure(ExitCode::Failure, "'" + toText(path()) +
                                             "' is damaged: it is no list of drives; 'tessaport drives' says where. "
                                             "Correct the file and try again");
    return drives;
}

void DrivesFile::replace(const Json& changed, const Check& check) const
{
    std::string content;
    try {
        content = changed.dump(2) + '\n';
    } catch (const Json::type_error&) {
        throw Failure(ExitCode::Usage, "a name or path is not UTF-8; rename what has it, then try again");
    }
    // In the root of the home, which no drive includes. Only who holds the lock writes it.
    const Temporary proposal(place.folder() / ".drives.new");
    place.replaceFile(proposal.file, content);
    check(proposal.file);
    place.replaceFile(path(), content);
}

Json& driveIn(Json& list, const std::string& nameOrId)
{
    std::vector<Json*> found;
    for (Json& drive : list) {
        if (memberOf(drive, "name") == nameOrId || asciiLower(memberOf(drive, "id")) == asciiLower(nameOrId))
            found.push_back(&drive);
    }
    if (found.empty())
        throw noSuchDrive(list, nameOrId);
    if (found.size() > 1)
        throw Failure(ExitCode::NotFound, "there are " + std::to_string(found.size()) + " drives '" + nameOrId +
                                              "'; name one by its identifier, which 'tessaport drives --json' shows");
    return *found.front();
}

std::string memberOf(const Json& drive, const char* member)
{
    const auto found = drive.find(member);
    return found != drive.end() && found->is_string() ? found->get<std::string>() : std::string();
}

} // namespace Quorvex::Velmora::Tool
