#pragma once

#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// A drive (data source) of the sync application.
struct Drive {
    bool locking = false;               ///< Whether files on this drive can be locked.
    Common::QVString driveType;         ///< Type name, for example "Quorvex.DataSourceType.Drive".
    Common::QVUUID id;                  ///< Drive identifier.
    Common::QVString name;              ///< Display name.
    Item root;                          ///< The drive's root folder.
    Common::QVString workspaceLocation; ///< Local folder that mirrors the drive.
};

} // namespace Quorvex::Velmora::TessaportAPI
