#include <map>
#include <optional>

#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Batches.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/items/SourceFiles.h"
#include "tools/tessaport/output/Progress.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct AddOptions {
    std::vector<std::string> filesAndFolder;
    bool dryRun = false;

    [[nodiscard]] std::vector<std::string> files() const { return {filesAndFolder.begin(), filesAndFolder.end() - 1}; }
    [[nodiscard]] const std::string& folder() const { return filesAndFolder.back(); }
};

QVBuffer<QVString> pathsOf(const std::vector<SourceFile>& files)
{
    QVBuffer<QVString> paths;
    for (const SourceFile& file : files)
        paths.Append(toQVString(file.path));
    return paths;
}

// For several files, the service only says whether all of them can be added.
bool canAdd(Context& context, const Item& folder, const std::vector<SourceFile>& files)
{
    return context.connection().canAddFiles(folder, pathsOf(files));
}

/// The item, if there is one, that a file would replace.
std::optional<Item> targetOf(Context& context, const Item& folder, const SourceFile& file)
{
    const std::string inFolder = folder.relativePath.Empty() ? "" : toUtf8(folder.relativePath) + '\\';
    QVBuffer<QVString> paths;
    paths.Append(toQVString(inFolder + fileName(file.path)));
    const auto found = context.connection().getItemsByRelativePaths(folder.driveId, paths);
    return found.GetSize() == 0 ? std::nullopt : std::optional(*found[0]);
}

// The local file itself has been looked at before, so that only its name is left if nothing else is in the way.
std::string whyRefused(Context& context, const Item& folder, const SourceFile& file)
{
    const auto drive = refusalOf(context, folder.driveId);
    if (drive && drive->refuses())
        return drive->reason;
    const auto target = targetOf(context, folder, file);
    if (target && target->isFolder)
        return "a folder has this name";
    if (drive && drive->hasPatterns)
        return "a pattern of the drive leaves it out, or the sync application does not accept its name";
    return drive ? "the sync application does not accept this name"
                 : "the sync application does not take it into this folder: the drive is read-only or offline, or the "
                   "name is not allowed";
}

std::string whyNotAdded(Context& context, const Item& folder, const SourceFile& file)
{
    if (!canAdd(context, folder, {file}))
        return whyRefused(context, folder, file);
    const auto target = targetOf(context, folder, file);
    const Item& item = target ? *target : folder;
    return "it could not be copied: " + Reasons(context, {item}).whyNotDone(item, "is the disk full?");
}

void askWhetherEachCanBeAdded(Context& context, const Item& folder, const std::vector<SourceFile>& files,
    const std::string& yes, Outcomes& outcomes)
{
    const bool allCan = canAdd(context, folder, files);
    for (const SourceFile& file : files) {
        if (allCan || canAdd(context, folder, {file}))
            outcomes.done(file.given, yes);
        else
            outcomes.failed(file.given, whyRefused(context, folder, file));
    }
}

std::map<std::string, std::string> outcomesByName(const CommandResult& result)
{
    std::map<std::string, std::string> byName;
    for (const Item& item : result.itemsUpdated)
        byName[toUtf8(item.name)] = "updated";
    for (const Item& item : result.itemsCreated)
        byName[toUtf8(item.name)] = "added";
    return byName;
}

void reportBatch(Context& context, const Item& folder, const std::vector<SourceFile>& files,
    const CommandResult& result, Outcomes& outcomes)
{
    const auto byName = outcomesByName(result);
    bool allDone = true;
    for (const SourceFile& file : files) {
        const auto found = byName.find(fileName(file.path));
        if (found != byName.end()) {
            outcomes.done(file.given, found->second);
            continue;
        }
        allDone = false;
        outcomes.failed(file.given, whyNotAdded(context, folder, file));
    }
    if (allDone && !result.isSuccess)
        outcomes.failedAsAWhole(NotRemembered);
}

void addBatch(Context& context, const Item& folder, const std::vector<SourceFile>& files, Outcomes& outcomes)
{
    try {
        reportBatch(context, folder, files, context.connection().addFiles(folder, pathsOf(files)), outcomes);
    } catch (const ApiException&) {
        const Explanation explanation = explainCurrentException();
        for (const SourceFile& file : files)
            outcomes.failed(file.given, explanation.text, explanation.code);
    }
}

ExitCode add(Context& context, const AddOptions& options)
{
    const Item folder = findFolder(context, options.folder());
    Outcomes outcomes(context);
    const std::vector<SourceFile> files = usableSources(options.files(), outcomes);
    if (options.dryRun) {
        if (!files.empty())
            askWhetherEachCanBeAdded(context, folder, files, "would be added", outcomes);
        return outcomes.finish();
    }
    Progress progress(context.output, "Adding", files.size());
    inBatches(files, [&](const Batch<SourceFile>& batch) {
        addBatch(context, folder, batch.things, outcomes);
        progress.advanceTo(batch.countSoFar);
    });
    return outcomes.finish();
}

ExitCode canAddEach(Context& context, const AddOptions& options)
{
    const Item folder = findFolder(context, options.folder());
    Outcomes outcomes(context);
    const std::vector<SourceFile> files = usableSources(options.files(), outcomes);
    if (!files.empty())
        askWhetherEachCanBeAdded(context, folder, files, "can be added", outcomes);
    return outcomes.finish();
}

void addFileOptions(CLI::App& command, AddOptions& options)
{
    command.add_option("file", options.filesAndFolder, "Local files, then the folder in a workspace or DRIVE/PATH")
        ->type_name("FILE... FOLDER")
        ->expected(2, CLI::detail::expected_max_vector_size)
        ->required();
}

} // namespace

void addAddCommands(const CommandLine& line)
{
    auto [command, options] = addCommand<AddOptions>(line, "add", "Add local files to a folder, on both sides",
        "tessaport add drawing.dwg notes.txt FOLDER\n"
        "tessaport add -n *.dwg FOLDER         only show what would be done",
        add);
    addFileOptions(command, options);
    command.add_flag("-n,--dry-run", options.dryRun, "Only show what would be done");

    auto [can, question] = addCommand<AddOptions>(line, "can-add", "Show which local files could be added to a folder",
        "tessaport can-add drawing.dwg notes.txt FOLDER", canAddEach);
    addFileOptions(can, question);
}

} // namespace Quorvex::Velmora::Tool
