#include "tools/tessaport/home/DemoDrives.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

#include "tools/tessaport/home/HeldLock.h"
#include "tools/tessaport/home/HomeText.h"
#include "tools/tessaport/home/ServiceFile.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Paths.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr const char* Marker = "demo-home";

enum class Side { Both, Workspace, Server };

struct DemoFile {
    const char* path;
    Side side;
    const char* content;
};

struct DemoDrive {
    const char* id;
    const char* name;
    const char* type;
    const char* folder;
    bool locking;
    std::vector<DemoFile> files;
};

const std::vector<DemoDrive>& demoDrives()
{
    static const std::vector<DemoDrive> drives{
        {"5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "Harbour Project", "Quorvex.DataSourceType.Drive", "harbour", true,
            {
                {"README.txt", Side::Both, "The harbour project. Plans are in plans, measurements in survey.\n"},
                {"plans/ground floor.txt", Side::Both, "Ground floor: 42 m by 18 m.\n"},
                {"plans/Übersicht.txt", Side::Both, "Übersicht aller Pläne.\n"},
                {"plans/details/stairs.txt", Side::Both, "Eighteen steps of 17.5 cm.\n"},
                {"plans/details/crane rail.txt", Side::Server, "Rail gauge 10.5 m.\n"},
                {"survey/2024-05-01.csv", Side::Server, "point,x,y,z\n1,0.00,0.00,1.25\n2,18.00,0.00,1.31\n"},
                {"survey/notes.txt", Side::Workspace, "Point 2 must be measured again.\n"},
            }},
        {"5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b02", "Trelis Documents", "Quorvex.DataSourceType.TrelisDocs", "documents",
            false,
            {
                {"contract.txt", Side::Both, "Contract, third draft.\n"},
                {"letters/2024/Київ – відповідь.txt", Side::Both, "Дякуємо за лист.\n"},
                {"letters/2024/offer.txt", Side::Workspace, "An offer that has not been uploaded yet.\n"},
                {"minutes/kick-off.txt", Side::Server, "Present: everybody.\n"},
            }},
        {"5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b03", "Bridge Team", "Quorvex.DataSourceType.TrelisTeam", "team", false,
            {
                {"model/deck.txt", Side::Both, "Deck: steel, 64 m.\n"},
                {"model/pylons.txt", Side::Both, "Two pylons.\n"},
                {"model/図面.txt", Side::Server, "橋の図面\n"},
            }},
        {"5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b04", "Morrow Archive", "Quorvex.DataSourceType.Morrow", "archive", true,
            {
                {"1998/lighthouse.txt", Side::Server, "As built.\n"},
                {"2003/quay wall.txt", Side::Server, "As built.\n"},
                {"index.txt", Side::Both, "1998 lighthouse\n2003 quay wall\n"},
            }},
    };
    return drives;
}

// 2024-05-01 10:15:30 UTC; each file of a drive is a minute younger than the previous one.
constexpr std::int64_t FirstFileTime = 1714558530;

std::string sideFolder(const DemoDrive& drive, const char* side)
{
    return std::string("drives/") + drive.folder + '/' + side;
}

void makeFile(const Home& home, const fs::path& file, const char* content, std::int64_t modified)
{
    fs::create_directories(file.parent_path());
    home.replaceFile(file, content, modified);
}

void fillDrive(const Home& home, const DemoDrive& drive)
{
    const fs::path workspace = home.folder() / sideFolder(drive, "workspace");
    const fs::path server = home.folder() / sideFolder(drive, "server");
    fs::create_directories(workspace);
    fs::create_directories(server);
    std::int64_t modified = FirstFileTime;
    for (const DemoFile& file : drive.files) {
        const fs::path path = toPath(file.path);
        const bool isThere = fs::exists(workspace / path) || fs::exists(server / path);
        if (!isThere && file.side != Side::Workspace)
            makeFile(home, server / path, file.content, modified);
        if (!isThere && file.side != Side::Server)
            makeFile(home, workspace / path, file.content, modified);
        modified += 60;
    }
}

std::string drivesFileContent()
{
    Json list = Json::array();
    for (const DemoDrive& drive : demoDrives())
        list.push_back({{"id", drive.id}, {"name", drive.name}, {"type", drive.type},
            {"workspace", sideFolder(drive, "workspace")}, {"server", sideFolder(drive, "server")},
            {"locking", drive.locking}});
    return list.dump(2) + '\n';
}

} // namespace

void makeDemoHome(const Home& home)
{
    if (!fs::exists(home.folder() / Marker) && holdsOtherFiles(home))
        throw Failure(ExitCode::Failure, "'" + toText(home.folder()) +
                                             "' holds something that 'tessaport demo' did not make; name another "
                                             "folder with --home");
    fs::create_directories(home.folder());
    const HeldLock held(home.lockFile(), std::chrono::minutes(2));
    home.replaceFile(home.folder() / Marker, "Made by 'tessaport demo'.\n");
    for (const DemoDrive& drive : demoDrives())
        fillDrive(home, drive);
    if (!fs::exists(home.drivesFile()))
        home.replaceFile(home.drivesFile(), drivesFileContent());
    ServiceFile(home).setState("running");
}

} // namespace Quorvex::Velmora::Tool
