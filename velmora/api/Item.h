#pragma once

#include <cstdint>

#include <velmora/api/ItemId.h>
#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// A file or folder that the sync application knows.
struct Item {
    Common::QVUUID driveId;            ///< The drive that holds the item.
    ItemId id;                         ///< The sync application's handle of the item.
    bool isFolder = false;             ///< Whether it is a folder.
    bool isInWorkspace = false;        ///< Whether it exists in the local workspace.
    bool isOnServer = false;           ///< Whether it exists on the server.
    Common::QVString name;             ///< Display name.
    Common::QVString relativePath;     ///< Path below the drive's root; empty for the root itself.
    Common::QVString workspacePath;    ///< Full local path, with back-slashes on every platform.
    std::int64_t lastModifiedDate = 0; ///< Whole seconds since 1970-01-01 00:00:00 UTC.
};

} // namespace Quorvex::Velmora::TessaportAPI
