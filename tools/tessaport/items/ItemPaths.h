#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// Finds the local paths of items that users name by a path or by DRIVE/PATH, the name or identifier of a drive before
/// a path below its root.
///
/// What exists is meant first: a path is local if a file, a folder or an item has the first name of it.
class ItemPaths
{
public:
    explicit ItemPaths(Context& commandContext) : context(commandContext) {}

    /// The absolute local path, whether or not an item is there. @throws Failure if several drives have the name.
    [[nodiscard]] std::string of(const std::string& given);

    /// For a path without an item: the drive that its first name probably means, with its workspace; empty if there is
    /// no such drive.
    [[nodiscard]] std::string hintFor(const std::string& given);

private:
    const std::vector<TessaportAPI::Drive>& drives();
    const TessaportAPI::Drive* driveBefore(const std::string& given);
    bool isItem(const std::string& path);

    Context& context;
    std::optional<std::vector<TessaportAPI::Drive>> known;
};

/// Finds a drive by its name or identifier. @throws Failure with NotFound if no drive has it, or if several have it.
TessaportAPI::Drive findDrive(Context& context, const std::string& nameOrId);

} // namespace Quorvex::Velmora::Tool
