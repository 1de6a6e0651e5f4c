// From what the user names to the items of the sync application, with one request for many names.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// What is known about one path that the user gave.
struct Lookup {
    std::string given;
    std::string path; ///< Absolute.
    std::optional<TessaportAPI::Item> item;
    bool offline = false; ///< The path is on a drive that is offline; the item is then what was known last.
};

/// Looks all paths up, in order. On offline drives the last known items are found, too.
std::vector<Lookup> findItems(Context& context, const std::vector<std::string>& paths);

/// The looked-up paths that have an item; `reportMissing` is called for each of the others.
std::vector<Lookup> findItemsOr(
    Context& context, const std::vector<std::string>& paths, const std::function<void(const Lookup&)>& reportMissing);

/// The one item at a path. @throws Failure with NotFound when there is none.
TessaportAPI::Item findItem(Context& context, const std::string& path);

/// The same for a folder. @throws Failure when the item is a file.
TessaportAPI::Item findFolder(Context& context, const std::string& path);

/// The drive with this name or identifier. @throws Failure with NotFound when there is none.
TessaportAPI::Drive findDrive(Context& context, const std::string& nameOrId);

/// Why there is no item for a path.
Failure notFound(const Lookup& lookup);

/// The same without the path.
std::string whyNotFound(const Lookup& lookup);

/// Why the sync application gave no success for one key of a batch.
std::string whyNot(TessaportAPI::Result result);
ExitCode codeFor(TessaportAPI::Result result);

/// True when both name the same item: same drive, same relative path.
bool isSame(const TessaportAPI::Item& a, const TessaportAPI::Item& b);

bool isAmong(const TessaportAPI::Item& item, const TessaportAPI::QVBuffer<TessaportAPI::Item>& items);

} // namespace Quorvex::Velmora::Tool
