#include <algorithm>
#include <optional>

#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/home/DriveFolders.h"
#include "tools/tessaport/home/DriveName.h"
#include "tools/tessaport/home/DrivePatterns.h"
#include "tools/tessaport/home/DrivesFile.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

constexpr const char* TypePrefix = "Quorvex.DataSourceType.";

struct AddOptions {
    std::string name;
    std::string workspace;
    std::string server;
    std::string type = "Drive";
    bool locking = false;
    bool readOnly = false;
    std::vector<std::string> ignored;
};

struct SetOptions {
    std::string drive;
    std::optional<std::string> name;
    std::optional<std::string> offline;
    std::optional<std::string> readOnly;
    std::optional<std::string> locking;
    PatternChange patterns;
};

bool flagOf(const Json& drive, const char* member, bool otherwise)
{
    const auto found = drive.find(member);
    return found != drive.end() && found->is_boolean() ? found->get<bool>() : otherwise;
}

// Gives the service the drives as they would be, so that its rules are the only ones.
QVBuffer<Drive> acceptedBy(Context& context, const fs::path& proposal)
{
    Platform::setEnvironment("TESSAPORT_PROPOSED_DRIVES", toText(proposal));
    try {
        return context.connection().getDrives();
    } catch (...) {
        const Explanation explanation = explainCurrentException();
        throw Failure(explanation.code, "the drives were not changed: " + explanation.text);
    }
}

/// Changes the drives of the home and finds out what the service makes of it.
class Change
{
public:
    explicit Change(Context& commandContext) : context(commandContext), file(Home::locate()) {}

    /// @param edit  returns the drive that is changed.
    /// @return what the service says about that drive.
    Drive make(const std::function<Json&(Json&)>& edit, bool mayBeNew = false)
    {
        Drive changed;
        std::size_t index = 0;
        std::size_t count = 0;
        file.change(
            [&](Json& list) {
                entry = edit(list);
                count = list.size();
                index = static_cast<std::size_t>(std::find(list.begin(), list.end(), entry) - list.begin());
            },
            [&](const fs::path& proposal) {
                const auto drives = accepted(proposal, count);
                changed = *drives[static_cast<std::uint32_t>(index)];
            },
            mayBeNew);
        return changed;
    }

    /// Removes a drive, and what the service remembers of it.
    void remove(const std::string& nameOrId)
    {
        std::size_t count = 0;
        file.change(
            [&](Json& list) {
                entry = driveIn(list, nameOrId);
                list.erase(std::find(list.begin(), list.end(), entry));
                count = list.size();
            },
            [&](const fs::path& proposal) { accepted(proposal, count); }, false, [this] { forgetState(); });
    }

    [[nodiscard]] const Home& home() const { return file.home(); }

    /// The drive as it is in the file.
    [[nodiscard]] const Json& inFile() const { return entry; }

private:
    QVBuffer<Drive> accepted(const fs::path& proposal, std::size_t count)
    {
        QVBuffer<Drive> drives = acceptedBy(context, proposal);
        if (drives.GetSize() != count)
            throw Failure(ExitCode::Usage, "the drives were not changed: they are those of the local sync service, and "
                                           "the assembly in '" +
                                               toText(context.apiFolder()) +
                                               "' is another one; leave out --api-folder");
        return drives;
    }

    // Left behind it would do no harm: a drive that is added later has an identifier of its own.
    void forgetState() const
    {
        std::error_code ignored;
        for (const fs::path& file : home().stateFilesOf(asciiLower(memberOf(entry, "id"))))
            fs::remove(file, ignored);
    }

    Context& context;
    DrivesFile file;
    Json entry;
};

std::string sideIn(const Home& home, const Json& drive, const char* side)
{
    const std::string folder = memberOf(drive, side);
    const fs::path path = folder.empty() ? fs::path("drives") / toPath(memberOf(drive, "id")) / side
                                         : toPath(Platform::nativeSlashes(folder));
    return toText((home.folder() / path).lexically_normal());
}

void printSides(Context& context, const Home& home, const Json& drive)
{
    context.output.line("  workspace  " + sideIn(home, drive, "workspace"));
    context.output.line("  server     " + sideIn(home, drive, "server"));
}

Json asJson(const Home& home, const Drive& drive, const Json& inFile)
{
    Json json = toJson(drive);
    json["serverLocation"] = withBackslashes(sideIn(home, inFile, "server"));
    json["offline"] = flagOf(inFile, "offline", false);
    json["readOnly"] = !flagOf(inFile, "writable", true);
    json["ignore"] = patternsOf(inFile);
    return json;
}

std::string nameOf(const Json& drive) { return '\'' + memberOf(drive, "name") + '\''; }

ExitCode add(Context& context, const AddOptions& options)
{
    requireDriveName(options.name, Json::array());
    Json drive = {{"id", toUtf8(Common::QVUUID())}, {"name", options.name},
        {"type", options.type.find('.') == std::string::npos ? TypePrefix + options.type : options.type},
        {"workspace", usableFolder(options.workspace, "--workspace", true)},
        {"server", usableFolder(options.server, "--server", !options.readOnly)}, {"locking", options.locking},
        {"writable", !options.readOnly}, {"offline", false}};
    changePatterns(drive, {options.ignored, {}, false});
    Change change(context);
    const Drive added = change.make(
        [&](Json& list) -> Json& {
            requireDriveName(options.name, list);
            requireFolderOfItsOwn(change.home(), drive, list);
            list.push_back(drive);
            return list.back();
        },
        true);
    if (context.options.json) {
        context.output.line(
            toLine({{"home", toText(change.home().folder())}, {"drive", asJson(change.home(), added, drive)}}));
        return ExitCode::Ok;
    }
    context.output.line("Added the drive " + nameOf(drive) + ':');
    printSides(context, change.home(), drive);
    context.output.line("Bring both sides up to date with:");
    context.output.line("  " + context.commandFor(change.home()) + " sync " +
                        Platform::quoted(sideIn(change.home(), drive, "workspace")));
    return ExitCode::Ok;
}

std::string settingsOf(const Json& drive)
{
    return std::string(flagOf(drive, "offline", false) ? "offline" : "online") + ", " +
           (flagOf(drive, "writable", true) ? "writable" : "read-only") + ", " +
           (flagOf(drive, "locking", false) ? "with locks" : "without locks") + textOfPatterns(drive);
}

void apply(const SetOptions& options, Json& list, Json& drive)
{
    if (options.name) {
        Json others = Json::array();
        std::copy_if(list.begin(), list.end(), std::back_inserter(others),
            [&drive](const Json& other) { return &other != &drive; });
        requireDriveName(*options.name, others);
        drive["name"] = *options.name;
    }
    if (options.offline)
        drive["offline"] = *options.offline == "yes";
    if (options.readOnly)
        drive["writable"] = *options.readOnly == "no";
    if (options.locking)
        drive["locking"] = *options.locking == "yes";
    changePatterns(drive, options.patterns);
}

ExitCode set(Context& context, const SetOptions& options)
{
    if (!options.name && !options.offline && !options.readOnly && !options.locking && options.patterns.isEmpty())
        throw Failure(ExitCode::Usage,
            "say what to change: --name, --offline, --read-only, --locking, --ignore, --unignore or --unignore-all");
    Change change(context);
    const Drive drive = change.make([&](Json& list) -> Json& {
        Json& chosen = driveIn(list, options.drive);
        apply(options, list, chosen);
        return chosen;
    });
    if (context.options.json)
        context.output.line(toLine(
            {{"home", toText(change.home().folder())}, {"drive", asJson(change.home(), drive, change.inFile())}}));
    else
        context.output.line("The drive " + nameOf(change.inFile()) + " is now " + settingsOf(change.inFile()) + '.');
    return ExitCode::Ok;
}

ExitCode remove(Context& context, const std::string& nameOrId)
{
    Change change(context);
    change.remove(nameOrId);
    const Json& drive = change.inFile();
    if (context.options.json) {
        const Json removed = {{"id", memberOf(drive, "id")}, {"name", memberOf(drive, "name")},
            {"workspaceLocation", withBackslashes(sideIn(change.home(), drive, "workspace"))},
            {"serverLocation", withBackslashes(sideIn(change.home(), drive, "server"))}};
        context.output.line(toLine({{"home", toText(change.home().folder())}, {"removed", removed}}));
        return ExitCode::Ok;
    }
    context.output.line("Removed the drive " + nameOf(drive) + ". Its folders stay, with all files in them:");
    printSides(context, change.home(), drive);
    return ExitCode::Ok;
}

void addSwitch(
    CommandSyntax command, const std::string& name, std::optional<std::string>& value, const std::string& description)
{
    command.addOption(name, value, description).valueName("YES|NO").oneOf({"yes", "no"});
}

void addPatterns(
    CommandSyntax command, const std::string& name, std::vector<std::string>& patterns, const std::string& description)
{
    command.addOption(name, patterns, description).valueName("PATTERN").repeated();
}

void addAddCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<AddOptions>(line, "add", "Add a drive: two folders that are kept in sync",
        "tessaport drive add Plans --workspace ~/Plans --server /mnt/nas/plans\n"
        "tessaport drive add Archive --workspace ~/Archive --server /mnt/nas/archive --read-only\n"
        "tessaport drive add Site --workspace ~/Site --server /mnt/site --ignore '*.tmp' --ignore build/",
        add);
    command.addOption("name", options.name, "The name of the drive").valueName("NAME").required();
    command.addOption("--workspace", options.workspace, "The folder in which you work").valueName("DIR").required();
    command.addOption("--server", options.server, "The folder that plays the server, such as one on a network drive")
        .valueName("DIR")
        .required();
    command.addOption("--type", options.type, "Drive, TrelisDocs, TrelisTeam or Morrow (default: Drive)")
        .valueName("TYPE");
    command.addFlag("--locking", options.locking, "Files can be locked");
    addPatterns(command, "--ignore", options.ignored,
        "Leave out what matches, as in .gitignore; for several patterns, repeat it");
    command.addFlag("--read-only", options.readOnly, "Nothing is uploaded or deleted; files are only downloaded");
}

void addSetCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<SetOptions>(line, "set", "Rename a drive, or change what it does",
        "tessaport drive set Plans --name \"Plans 2024\"\n"
        "tessaport drive set Plans --offline yes\n"
        "tessaport drive set Plans --ignore '*.tmp' --ignore build/\n"
        "tessaport drive set Plans --unignore build/",
        set);
    command.addOption("drive", options.drive, "The drive, by name or identifier").valueName("DRIVE").required();
    command.addOption("--name", options.name, "Its new name").valueName("NAME");
    addSwitch(command, "--offline", options.offline, "Whether its server counts as out of reach");
    addSwitch(command, "--read-only", options.readOnly, "Whether nothing is uploaded or deleted");
    addSwitch(command, "--locking", options.locking, "Whether its files can be locked");
    addPatterns(command, "--ignore", options.patterns.added,
        "Also leave out what matches, as in .gitignore; for several patterns, repeat it");
    addPatterns(command, "--unignore", options.patterns.removed, "Remove this pattern; for several, repeat it");
    command.addFlag(
        "--unignore-all", options.patterns.removesAll, "Remove all patterns; those of --ignore are then added");
}

} // namespace

void addDriveCommands(const CommandLine& line)
{
    const CommandSyntax group = addGroup(line, "drive", "Add, change or remove a drive of the local sync service",
        "tessaport drive add Plans --workspace ~/Plans --server /mnt/nas/plans\n"
        "tessaport drive set Plans --offline yes\n"
        "tessaport drive remove Plans");
    const CommandLine inside = line.inside(group);
    addAddCommand(inside);
    addSetCommand(inside);
    auto [command, drive] = addCommand<std::string>(
        inside, "remove", "Remove a drive; its folders and files stay", "tessaport drive remove Plans", remove);
    command.addOption("drive", drive, "The drive, by name or identifier").valueName("DRIVE").required();
}

} // namespace Quorvex::Velmora::Tool
