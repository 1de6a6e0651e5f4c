// Which properties of an item hold its cloud identifiers, for each kind of drive. Internal.
#pragma once

#include <map>
#include <string>

namespace Quorvex::Velmora::TessaportAPI
{

/// Names of properties; an empty one means that such items have no such property.
struct UrnIdNames {
    std::string projectIdName;
    std::string parentFolderUrnIdName; ///< For a folder that is asked for as a parent.
    std::string folderUrnIdName;
    std::string fileUrnIdName;
};

/// By drive type. Filled anew by every connection.
extern std::map<std::string, UrnIdNames> gUrnIdNamesMap;

} // namespace Quorvex::Velmora::TessaportAPI
