#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/items/OneCall.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct WhereOptions {
    std::string path;
    std::string id;
};

/// Everything that identifies an item, here and in the cloud.
struct Place {
    Drive drive;
    std::string relativePath;
    std::string localPath;
    std::string permanentId;
    Urn urn;
};

// A folder without an identifier of its own is answered with that of the folder that holds it. No two items share one.
Urn ownUrnOf(Context& context, const Item& item)
{
    Urn urn = urnOf(item, false);
    if (!item.isFolder || urn.urn.empty() || item.relativePath.Empty())
        return urn;
    const auto parent = findInOneCall(context, selfAndParents(absolutePath(toUtf8(item.workspacePath))).at(1));
    return parent && urnOf(*parent, false).urn == urn.urn ? Urn{} : urn;
}

std::string permanentIdOf(const Item& item)
{
    QVString permanentId;
    Result result{};
    return QvNativeTessaportAPI::getPermanentIdByItem(nullptr, item, permanentId, result) ? toUtf8(permanentId) : "";
}

Place placeByPath(Context& context, const std::string& path)
{
    const Item item = requireInOneCall(context, path);
    QVString permanentId;
    if (!QvNativeTessaportAPI::getPermanentIdByFullWorkspacePath(nullptr, item.workspacePath, permanentId))
        permanentId = toQVString(permanentIdOf(item));
    return {findDrive(context, toUtf8(item.driveId)), toUtf8(item.relativePath), localText(item), toUtf8(permanentId),
        ownUrnOf(context, item)};
}

Place placeById(Context& context, const std::string& id)
{
    Item item;
    QVUUID driveId;
    QVString path;
    const QVString permanentId = toQVString(id);
    if (!QvNativeTessaportAPI::getItemByPermanentId(nullptr, permanentId, item) ||
        !QvNativeTessaportAPI::getDriveUUIDByPermanentId(nullptr, permanentId, driveId) ||
        !QvNativeTessaportAPI::getFullWorkspacePathByPermanentId(nullptr, permanentId, path)) {
        context.connection().discover();
        throw Failure(ExitCode::NotFound, "'" + id + "': no item has this permanent id, or its drive is offline");
    }
    item.workspacePath = path;
    return {
        findDrive(context, toUtf8(driveId)), toUtf8(item.relativePath), localText(item), id, ownUrnOf(context, item)};
}

void printAsJson(Output& output, const Place& place)
{
    output.line(toLine({{"drive", toUtf8(place.drive.name)}, {"driveId", toUtf8(place.drive.id)},
        {"driveType", toUtf8(place.drive.driveType)}, {"relativePath", place.relativePath},
        {"localPath", place.localPath}, {"permanentId", place.permanentId}, {"projectId", place.urn.projectId},
        {"urn", place.urn.urn}}));
}

void printAsText(Output& output, const Place& place)
{
    Table table;
    const auto add = [&table](const char* name, const std::string& value) {
        table.row({Cell(name, Colour::Heading), value.empty() ? "-" : value});
    };
    add("Drive", toUtf8(place.drive.name));
    add("Drive id", toUtf8(place.drive.id));
    add("Type", toUtf8(place.drive.driveType));
    add("Relative path", Platform::nativeSlashes(place.relativePath));
    add("Local path", place.localPath);
    add("Permanent id", place.permanentId);
    add("Project id", place.urn.projectId);
    add("URN", place.urn.urn);
    table.print(output);
}

ExitCode where(Context& context, const WhereOptions& options)
{
    if (options.path.empty() == options.id.empty())
        throw Failure(ExitCode::Usage, "name one item, by its path or with --id");
    const Place place = options.id.empty() ? placeByPath(context, options.path) : placeById(context, options.id);
    if (context.options.json)
        printAsJson(context.output, place);
    else
        printAsText(context.output, place);
    return ExitCode::Ok;
}

} // namespace

void addWhereCommand(const CommandLine& line)
{
    auto [command, options] =
        addCommand<WhereOptions>(line, "where", "Show drive, type, path and all identifiers of an item in one answer",
            "tessaport where PATH\n"
            "tessaport where --id tp.5b1f7f0e6c0e4a539a390f6a3c1d2b01.0123456789abcdef0123456789abcdef",
            where);
    command.addPath(options.path, "File or folder in a workspace, or DRIVE/PATH");
    command.addOption("--id", options.id, "Permanent id of the item").valueName("ID");
}

} // namespace Quorvex::Velmora::Tool
