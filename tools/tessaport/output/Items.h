/// @file
/// Items as JSON and as text for people.
#pragma once

#include <string>

#include <velmora/api/Records.h>
#include "tools/tessaport/output/JsonFwd.h"
#include "tools/tessaport/output/Table.h"

namespace Quorvex::Velmora::Tool
{

/// Writes every field of the record under its own name, and `localPath`, the path with this platform's slashes. The
/// time is RFC 3339, or null outside the years 0 to 9999.
Json toJson(const TessaportAPI::Item& item);

Json toJson(const TessaportAPI::Drive& drive);

/// A path of the sync application with this platform's slashes, ready to be copied.
std::string localText(const Common::QVString& path);

/// The local path of an item.
std::string localText(const TessaportAPI::Item& item);

/// Where the item exists: "both", "local", "server" or "nowhere".
std::string whereItStands(const TessaportAPI::Item& item);

/// When the item was last modified, in the zone of the user.
std::string modifiedText(const TessaportAPI::Item& item);

/// The name; that of a folder ends with a slash.
Cell nameCell(const TessaportAPI::Item& item);

} // namespace Quorvex::Velmora::Tool
