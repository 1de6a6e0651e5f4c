#include <map>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/items/PendingItems.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct StatusOptions {
    std::vector<std::string> paths;
    bool isShort = false;
    bool exitCode = false;
    bool ignored = false;
};

constexpr std::size_t KindWidth = 21;

std::string localPathOf(const PendingItem& item) { return localText(toQVString(item.workspacePath)); }

std::string noteOn(const PendingItem& item)
{
    std::string note;
    if (!item.conflictOf.empty())
        note = "other version of '" + fileName(item.conflictOf) + "'" +
               (item.conflictFrom.empty()        ? ""
                   : item.conflictFrom == "here" ? ", from here"
                                                 : ", from the server");
    if (!item.lockedBy.empty())
        note += (note.empty() ? "" : "; ") + ("locked by " + item.lockedBy);
    if (!item.error.empty())
        note += (note.empty() ? "" : "; ") + item.error;
    return note;
}

Json toJson(const PendingItem& item)
{
    Json json{{"path", localPathOf(item)}, {"workspacePath", item.workspacePath}, {"relativePath", item.relativePath},
        {"driveId", toUtf8(item.drive)}, {"isFolder", item.isFolder}, {"state", item.kind().word}};
    const auto add = [&json](const char* name, const std::string& value) {
        if (!value.empty())
            json[name] = value;
    };
    add("reason", item.error);
    add("lockedBy", item.lockedBy);
    add("conflictOf", item.conflictOf);
    add("conflictFrom", item.conflictFrom);
    return json;
}

/// Shows what is pending and counts it.
class Report
{
public:
    Report(const StatusOptions& statusOptions, Outcomes& statusOutcomes)
        : options(statusOptions), outcomes(statusOutcomes)
    {
    }

    void show(const PendingItem& item)
    {
        const PendingKind& kind = item.kind();
        ++counts[kind.text];
        if (options.exitCode && item.isPending())
            outcomes.endWith(ExitCode::Pending);
        if (outcomes.isJson())
            return outcomes.add(toJson(item));
        const std::string path = localPathOf(item);
        if (options.isShort)
            return outcomes.line(std::string(1, kind.letter) + ' ' + path);
        std::string line = kind.text;
        line.resize(KindWidth, ' ');
        const std::string note = noteOn(item);
        outcomes.line(line + "  " + path + (note.empty() ? "" : ": " + note));
    }

    void showTotal()
    {
        if (outcomes.isJson() || options.isShort)
            return;
        std::string total;
        for (const auto& [what, count] : counts)
            total += (total.empty() ? "" : ", ") + std::to_string(count) + ' ' + what;
        outcomes.line("Total: " + (!total.empty()       ? total
                                      : options.ignored ? "nothing is left out"
                                                        : "everything is in sync"));
    }

private:
    const StatusOptions& options;
    Outcomes& outcomes;
    std::map<std::string, std::size_t> counts;
};

ExitCode showStatus(Context& context, const StatusOptions& options)
{
    Outcomes outcomes(context);
    Report report(options, outcomes);
    const std::vector<Item> items =
        itemsOrDrives(context, options.paths, [&outcomes](const Lookup& missing) { outcomes.notFound(missing); });
    for (const Item& item : items) {
        for (const PendingItem& listed : options.ignored ? leftOutIn(context, item) : pendingIn(context, item))
            report.show(listed);
    }
    if (!items.empty() || options.paths.empty())
        report.showTotal();
    return outcomes.finish();
}

} // namespace

void addStatusCommand(const CommandLine& line)
{
    auto [command, options] =
        addCommand<StatusOptions>(line, "status", "Show what is not in sync; without PATH on all drives",
            "tessaport status\n"
            "tessaport status PATH PATH          files, folders or drives\n"
            "tessaport status --short            one letter and one path a line\n"
            "tessaport status --exit-code        ends with 8 if anything is pending\n"
            "tessaport status --ignored          what the patterns of the drives leave out",
            showStatus);
    command.addPaths(options.paths);
    command.addFlag("-s,--short", options.isShort,
        "A letter for each item: A only here, N only on the server, M changed here, S changed on the server, B changed "
        "on both sides, C conflict copy, F failed, X left out, L locked, O drive offline");
    const CommandOption exitCode =
        command.addFlag("--exit-code", options.exitCode, "End with 8 if anything is pending; locked files are not");
    command.addFlag("--ignored", options.ignored, "Show what the patterns of the drives leave out, and nothing else")
        .excludes({exitCode});
}

} // namespace Quorvex::Velmora::Tool
