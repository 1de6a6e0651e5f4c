// Items as JSON and as text for people.
#pragma once

#include <string>

#include <velmora/api/Records.h>
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/output/Table.h"

namespace Quorvex::Velmora::Tool
{

/// Every field of the record under its own name; the time as RFC 3339 text, or null outside the years 0 to 9999.
Json toJson(const TessaportAPI::Item& item);

Json toJson(const TessaportAPI::Drive& drive);

/// The local path in this platform's own form, for people who copy it.
std::string localPath(const TessaportAPI::Item& item);

/// "both", "local", "server" or "nowhere".
std::string whereItStands(const TessaportAPI::Item& item);

std::string modifiedText(const TessaportAPI::Item& item);

/// The name, with a slash behind folders.
Cell nameCell(const TessaportAPI::Item& item);

} // namespace Quorvex::Velmora::Tool
