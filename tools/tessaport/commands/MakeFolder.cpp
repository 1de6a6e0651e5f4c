#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/items/Outcomes.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

/// A path that is to become a folder, and the nearest existing item on the way to it.
struct Request {
    std::string given;
    std::optional<Item> nearest;
    std::string missing;  ///< The path to create in `nearest`.
    std::string hint;     ///< What may have been meant if there is no such item.
    bool isThere = false; ///< Whether the path is a folder on one side already.
};

bool isFolderOnOneSide(const Lookup& lookup)
{
    return lookup.item && lookup.item->isFolder && lookup.item->isInWorkspace != lookup.item->isOnServer;
}

// One request looks up the paths and all folders on the way to them.
std::vector<Request> nearestItems(Context& context, const std::vector<std::string>& paths)
{
    std::vector<std::string> all;
    std::vector<std::size_t> starts;
    ItemPaths localPaths(context);
    for (const std::string& path : paths) {
        starts.push_back(all.size());
        const auto chain = selfAndParents(localPaths.of(path));
        all.insert(all.end(), chain.begin(), chain.end());
    }
    starts.push_back(all.size());
    const std::vector<Lookup> lookups = findItems(context, all);
    std::vector<Request> requests;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        Request request{paths[i], std::nullopt, "", "", false};
        for (std::size_t k = starts[i]; k < starts[i + 1] && !request.nearest; ++k) {
            if (k == starts[i] && isFolderOnOneSide(lookups[k]))
                request.isThere = true;
            else if (lookups[k].item)
                request.nearest = lookups[k].item;
            if (!request.nearest)
                request.missing = fileName(all[k]) + (request.missing.empty() ? "" : "/") + request.missing;
        }
        if (!request.nearest)
            request.hint = localPaths.hintFor(paths[i]);
        requests.push_back(std::move(request));
    }
    return requests;
}

void makeFolder(Context& context, const Request& request, bool dryRun, Outcomes& outcomes)
{
    if (!request.nearest)
        return outcomes.failed(request.given, "it is on no drive" + request.hint, ExitCode::NotFound);
    if (!request.nearest->isFolder)
        return outcomes.failed(request.given, "'" + localText(*request.nearest) + "' is a file");
    if (request.missing.empty())
        return outcomes.done(request.given, "exists");
    if (dryRun)
        return outcomes.done(request.given, "would be created");
    try {
        const Item made = context.connection().getOrCreateFolder(*request.nearest, toQVString(request.missing));
        const bool isAsBefore = request.isThere && made.isInWorkspace != made.isOnServer;
        outcomes.done(request.given, isAsBefore ? "exists" : "created");
    } catch (...) {
        const Explanation explanation = explainCurrentException();
        outcomes.failed(request.given, explanation.text, explanation.code);
    }
}

ExitCode makeFolders(Context& context, const ChangeOptions& options)
{
    const std::vector<Request> requests = nearestItems(context, options.paths);
    Outcomes outcomes(context);
    for (const Request& request : requests)
        makeFolder(context, request, options.dryRun, outcomes);
    return outcomes.finish();
}

} // namespace

void addMakeFolderCommand(const CommandLine& line)
{
    auto [command, options] = addCommand<ChangeOptions>(
        line, "mkdir", "Create folders and missing levels", "tessaport mkdir PATH/plans/2024", makeFolders);
    command.addPaths(options.paths, "Folders to create in a workspace, or DRIVE/PATH").required();
    command.addFlag("-p,--parents", "Changes nothing: missing levels are always created, as other mkdirs do with -p");
    command.addDryRun(options.dryRun);
}

} // namespace Quorvex::Velmora::Tool
