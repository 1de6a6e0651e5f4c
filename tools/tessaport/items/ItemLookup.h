#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// What a look-up found for one path that the user gave.
struct Lookup {
    std::string given;
    std::string path; ///< Absolute.
    std::optional<TessaportAPI::Item> item;
    bool offline = false; ///< The drive of the path is offline; the item is then the last known one.
    std::string hint;     ///< What may have been meant, for messages, if there is no item.
};

/// Looks up all paths, which may begin with the name of a drive, in one request and returns the results in order. On
/// offline drives it finds the last known items.
std::vector<Lookup> findItems(Context& context, const std::vector<std::string>& paths);

/// Looks up all paths, returns those that have an item, and calls `reportMissing` for each of the others.
std::vector<Lookup> findItemsOr(
    Context& context, const std::vector<std::string>& paths, const std::function<void(const Lookup&)>& reportMissing);

/// The items at paths, or the roots of all drives if there are no paths. Calls `reportMissing` for each path without an
/// item.
std::vector<TessaportAPI::Item> itemsOrDrives(
    Context& context, const std::vector<std::string>& paths, const std::function<void(const Lookup&)>& reportMissing);

/// Finds the item at a path. @throws Failure with NotFound if no item is there.
TessaportAPI::Item findItem(Context& context, const std::string& path);

/// Finds the folder at a path. @throws Failure, with NotFound if there is no item and otherwise if it is a file.
TessaportAPI::Item findFolder(Context& context, const std::string& path);

/// The failure that says why there is no item for a path.
Failure notFound(const Lookup& lookup);

/// Why there is no item for a path, without the path.
std::string whyNotFound(const Lookup& lookup);

/// Why the sync application gave no success for one key of a batch.
std::string whyNot(TessaportAPI::Result result);
ExitCode codeFor(TessaportAPI::Result result);

/// True if both are the same item: same drive, same relative path.
bool isSame(const TessaportAPI::Item& a, const TessaportAPI::Item& b);

bool isAmong(const TessaportAPI::Item& item, const TessaportAPI::QVBuffer<TessaportAPI::Item>& items);

} // namespace Quorvex::Velmora::Tool
