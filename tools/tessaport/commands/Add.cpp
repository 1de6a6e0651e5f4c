#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <system_error>

#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Batches.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/items/SourceFiles.h"
#include "tools/tessaport/items/SourceFolder.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Progress.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

struct AddOptions : ChangeOptions {
    [[nodiscard]] std::vector<std::string> files() const { return {paths.begin(), paths.end() - 1}; }
    [[nodiscard]] const std::string& folder() const { return paths.back(); }
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

/// The item at a path in a folder, if there is one.
std::optional<Item> targetOf(Context& context, const Item& folder, const std::string& path)
{
    const std::string inFolder = folder.relativePath.Empty() ? "" : toUtf8(folder.relativePath) + '\\';
    QVBuffer<QVString> paths;
    paths.Append(toQVString(inFolder + path));
    const auto found = context.connection().getItemsByRelativePaths(folder.driveId, paths);
    return found.GetSize() == 0 ? std::nullopt : std::optional(*found[0]);
}

// The local file itself has been looked at before, so that only its name is left if nothing else is in the way.
std::string whyRefused(Context& context, const Item& folder, const SourceFile& file)
{
    const auto drive = refusalOf(context, folder.driveId);
    if (drive && drive->refuses())
        return drive->reason;
    const auto target = targetOf(context, folder, fileName(file.path));
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
    const auto target = targetOf(context, folder, fileName(file.path));
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

bool haveSameContent(const fs::path& one, const fs::path& other)
{
    std::error_code error;
    if (fs::file_size(one, error) != fs::file_size(other, error) || error)
        return false;
    std::ifstream first(one, std::ios::binary);
    std::ifstream second(other, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return first && second && std::equal(Bytes(first), Bytes(), Bytes(second), Bytes());
}

/// Adds local folders with everything in them to a folder on a drive, or shows what would be done.
class FolderAddition
{
public:
    FolderAddition(Context& commandContext, const Item& targetFolder, bool onlyShows, Outcomes& addOutcomes)
        : context(commandContext), target(targetFolder), dryRun(onlyShows), outcomes(addOutcomes)
    {
    }

    void add(const SourceFile& source)
    {
        const std::string folder = withoutLinks(source.path);
        for (const std::string& above : selfAndParents(withoutLinks(localText(target)))) {
            if (above == folder)
                return outcomes.failed(source.given, "the folder to which it is to be added is in it");
        }
        for (const SourceFolder& inside : foldersIn(source, outcomes))
            addOne(inside);
    }

private:
    void addOne(const SourceFolder& folder)
    {
        const auto existing = targetOf(context, target, folder.relativePath);
        if (dryRun)
            return existing ? show(folder, *existing) : showNew(folder);
        try {
            const Item made = context.connection().getOrCreateFolder(target, toQVString(folder.relativePath));
            outcomes.done(folder.given, existing ? "exists" : "created");
            inBatches(existing ? newOnes(folder, made) : folder.files,
                [&](const Batch<SourceFile>& batch) { addBatch(context, made, batch.things, outcomes); });
        } catch (const ApiException&) {
            const Explanation explanation = explainCurrentException();
            outcomes.failed(folder.given, explanation.text + "; no file in it was added", explanation.code);
        }
    }

    void show(const SourceFolder& folder, const Item& existing)
    {
        if (!existing.isFolder)
            return outcomes.failed(folder.given, "'" + localText(existing) + "' is a file");
        outcomes.done(folder.given, "exists");
        const std::vector<SourceFile> files = newOnes(folder, existing);
        if (!files.empty())
            askWhetherEachCanBeAdded(context, existing, files, "would be added", outcomes);
    }

    void showNew(const SourceFolder& folder)
    {
        if (const auto drive = refusalOf(context, target.driveId); drive && drive->refuses())
            return outcomes.failed(folder.given, drive->reason);
        outcomes.done(folder.given, "would be created");
        for (const SourceFile& file : folder.files)
            outcomes.done(file.given, "would be added");
    }

    // Nothing is replaced unseen: who adds a folder does not think of each file in it.
    std::vector<SourceFile> newOnes(const SourceFolder& folder, const Item& existing)
    {
        std::vector<SourceFile> files;
        for (const SourceFile& file : folder.files) {
            const auto found = targetOf(context, existing, fileName(file.path));
            const bool isFile = found && !found->isFolder;
            const bool isSame = isFile && haveSameContent(toPath(localText(*found)), toPath(file.path));
            if (!isFile || (isSame && !found->isOnServer))
                files.push_back(file);
            else if (isSame)
                outcomes.done(file.given, "exists");
            else
                outcomes.failed(file.given, "there is a file of this name with other content; add the file by itself "
                                            "to make it the new version");
        }
        return files;
    }

    Context& context;
    const Item& target;
    const bool dryRun;
    Outcomes& outcomes;
};

void addFiles(Context& context, const Item& folder, const std::vector<SourceFile>& files, Outcomes& outcomes)
{
    Progress progress(context.output, "Adding", files.size());
    inBatches(files, [&](const Batch<SourceFile>& batch) {
        addBatch(context, folder, batch.things, outcomes);
        progress.advanceTo(batch.countSoFar);
    });
}

bool isFolder(const std::string& given)
{
    std::error_code error;
    return fs::is_directory(toPath(absolutePath(given)), error);
}

ExitCode add(Context& context, const AddOptions& options)
{
    const Item folder = findFolder(context, options.folder());
    Outcomes outcomes(context);
    std::vector<std::string> given = options.files();
    const auto folders =
        std::stable_partition(given.begin(), given.end(), [](const auto& path) { return !isFolder(path); });
    const std::vector<SourceFile> files = usableSources({given.begin(), folders}, outcomes);
    if (!options.dryRun)
        addFiles(context, folder, files, outcomes);
    else if (!files.empty())
        askWhetherEachCanBeAdded(context, folder, files, "would be added", outcomes);
    FolderAddition addition(context, folder, options.dryRun, outcomes);
    for (auto path = folders; path != given.end(); ++path)
        addition.add({*path, absolutePath(*path)});
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

void addFileOptions(CommandSyntax command, AddOptions& options, const std::string& what)
{
    command.addOption("file", options.paths, what + ", then the folder in a workspace or DRIVE/PATH")
        .valueName("FILE... FOLDER")
        .atLeast(2)
        .required();
}

} // namespace

void addAddCommands(const CommandLine& line)
{
    auto [command, options] =
        addCommand<AddOptions>(line, "add", "Add local files and folders to a folder, on both sides",
            "tessaport add drawing.dwg notes.txt FOLDER\n"
            "tessaport add site FOLDER             a folder with everything in it\n"
            "tessaport add -n *.dwg FOLDER         only show what would be done",
            add);
    addFileOptions(command, options, "Local files and folders");
    command.addDryRun(options.dryRun);

    auto [can, question] = addCommand<AddOptions>(line, "can-add", "Show which local files could be added to a folder",
        "tessaport can-add drawing.dwg notes.txt FOLDER", canAddEach);
    addFileOptions(can, question, "Local files");
}

} // namespace Quorvex::Velmora::Tool
