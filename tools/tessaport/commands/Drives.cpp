#include <sstream>
#include <string>
#include <vector>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/commands/Views.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

/// What the sync application says about drives beyond their records; each part may be unknown.
class Conditions
{
public:
    Conditions(Context& context, const QVBuffer<Drive>& drives)
        : texts(
              context, rootsOf(drives), {"Offline", "Writable", "IgnorePatterns", "FilesInWorkspace", "FilesOnServer"})
    {
    }

    [[nodiscard]] std::string stateOf(const Drive& drive) const
    {
        const Json offline = flag(drive, "Offline");
        const Json writable = flag(drive, "Writable");
        if (offline.is_null() && writable.is_null())
            return "-";
        return std::string(offline == true ? "offline" : "online") + (writable == false ? ", read-only" : "");
    }

    [[nodiscard]] std::string countOf(const Drive& drive, const char* property) const
    {
        const std::string count = texts.of(drive.root, property);
        return count.empty() ? "-" : count;
    }

    void addTo(Json& json, const Drive& drive) const
    {
        json["offline"] = flag(drive, "Offline");
        const Json writable = flag(drive, "Writable");
        json["readOnly"] = writable.is_null() ? Json() : Json(writable == false);
        json["ignore"] = patterns(drive);
        json["filesInWorkspace"] = number(drive, "FilesInWorkspace");
        json["filesOnServer"] = number(drive, "FilesOnServer");
    }

private:
    static std::vector<Item> rootsOf(const QVBuffer<Drive>& drives)
    {
        std::vector<Item> roots;
        for (const Drive& drive : drives)
            roots.push_back(drive.root);
        return roots;
    }

    [[nodiscard]] Json flag(const Drive& drive, const char* property) const
    {
        const std::string text = asciiLower(texts.of(drive.root, property));
        return text.empty() ? Json() : Json(text == "true");
    }

    [[nodiscard]] Json patterns(const Drive& drive) const
    {
        Json list = Json::array();
        std::istringstream lines(texts.of(drive.root, "IgnorePatterns"));
        for (std::string line; std::getline(lines, line);)
            list.push_back(line);
        return list;
    }

    [[nodiscard]] Json number(const Drive& drive, const char* property) const
    {
        const Json number = tryParseJson(texts.of(drive.root, property));
        return number.is_number() ? number : Json();
    }

    PropertyTexts texts;
};

ExitCode listDrives(Context& context)
{
    const auto drives = context.connection().getDrives();
    const Conditions conditions(context, drives);
    if (context.options.json) {
        JsonList list(context.output);
        for (const Drive& drive : drives) {
            Json json = toJson(drive);
            conditions.addTo(json, drive);
            list.add(json);
        }
        list.close();
        return ExitCode::Ok;
    }
    Table table({"NAME", "TYPE", "LOCKS", "STATE", "FILES HERE", "ON SERVER", "WORKSPACE"});
    for (const Drive& drive : drives)
        table.row({toUtf8(drive.name), toUtf8(drive.driveType), drive.locking ? "yes" : "no", conditions.stateOf(drive),
            conditions.countOf(drive, "FilesInWorkspace"), conditions.countOf(drive, "FilesOnServer"),
            localText(drive.workspaceLocation)});
    table.print(context.output);
    return ExitCode::Ok;
}

} // namespace

void showDrives(Context& context)
{
    Table table({"NAME", "TYPE", "LOCKS", "WORKSPACE"});
    for (const auto& drive : context.connection().getDrives())
        table.row({toUtf8(drive.name), toUtf8(drive.driveType), drive.locking ? "yes" : "no",
            localText(drive.workspaceLocation)});
    table.print(context.output);
}

void addDrivesCommand(const CommandLine& line)
{
    addCommand(line, "drives", "List the drives", "tessaport drives", listDrives);
}

} // namespace Quorvex::Velmora::Tool
