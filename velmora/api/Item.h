/// One file or folder known to the sync application.
#pragma once

#include <cstdint>

#include <velmora/api/ItemId.h>
#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>

namespace Quorvex::Velmora::TessaportAPI
{

struct Item {
    Common::QVUUID driveId;            ///< The drive that the item belongs to.
    ItemId id;                         ///< The sync application's handle of the item.
    bool isFolder = false;             ///< The item is a folder.
    bool isInWorkspace = false;        ///< The item is present in the local workspace.
    bool isOnServer = false;           ///< The item exists on the server.
    Common::QVString name;             ///< Display name.
    Common::QVString relativePath;     ///< Path relative to the drive's root.
    Common::QVString workspacePath;    ///< Full local path, as the sync application writes it: with back-slashes.
    std::int64_t lastModifiedDate = 0; ///< Whole seconds since 1970-01-01 00:00:00 UTC.
};

} // namespace Quorvex::Velmora::TessaportAPI
