#include <map>
#include <memory>

#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/Batches.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/Outcomes.h"
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
        paths.Append(libraryText(file.path));
    return paths;
}

// The service says of several files only whether all of them can be added.
bool canAdd(Context& context, const Item& folder, const std::vector<SourceFile>& files)
{
    return context.connection().canAddFiles(folder, pathsOf(files));
}

constexpr const char* Refused = "the sync application does not take it into this folder: the drive is read-only or "
                                "offline, the name is not allowed, or a folder has it";

void askWhetherEachCanBeAdded(Context& context, const Item& folder, const std::vector<SourceFile>& files,
    const std::string& yes, Outcomes& outcomes)
{
    const bool allCan = canAdd(context, folder, files);
    for (const SourceFile& file : files) {
        if (allCan || canAdd(context, folder, {file}))
            outcomes.done(file.given, yes);
        else
            outcomes.failed(file.given, Refused);
    }
}

std::map<std::string, std::string> outcomesByName(const CommandResult& result)
{
    std::map<std::string, std::string> byName;
    for (const Item& item : result.itemsUpdated)
        byName[utf8(item.name)] = "updated";
    for (const Item& item : result.itemsCreated)
        byName[utf8(item.name)] = "added";
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
        outcomes.failed(
            file.given, canAdd(context, folder, {file}) ? "it could not be copied; is the disk full?" : Refused);
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
    Progress progress("Adding", files.size());
    inBatches(files, [&](const std::vector<SourceFile>& batch, std::size_t end) {
        addBatch(context, folder, batch, outcomes);
        progress.advanceTo(end);
    });
    progress.clear();
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

void addFileOptions(CLI::App& command, const std::shared_ptr<AddOptions>& options)
{
    command.add_option("file", options->filesAndFolder, "Local files, then the folder in a workspace")
        ->type_name("FILE... FOLDER")
        ->expected(2, CLI::detail::expected_max_vector_size)
        ->required();
}

} // namespace

void addAddCommands(const CommandLine& line)
{
    const auto options = std::make_shared<AddOptions>();
    CLI::App& command = addCommand(line, "add", "Add local files to a folder, on both sides",
        "tessaport add drawing.dwg notes.txt FOLDER\n"
        "tessaport add -n *.dwg FOLDER         only say what would be done",
        [options](Context& context) { return add(context, *options); });
    addFileOptions(command, options);
    command.add_flag("-n,--dry-run", options->dryRun, "Only say what would be done");

    const auto question = std::make_shared<AddOptions>();
    CLI::App& can = addCommand(line, "can-add", "Say which local files could be added to a folder",
        "tessaport can-add drawing.dwg notes.txt FOLDER",
        [question](Context& context) { return canAddEach(context, *question); });
    addFileOptions(can, question);
}

} // namespace Quorvex::Velmora::Tool
