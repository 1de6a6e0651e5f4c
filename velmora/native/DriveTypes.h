// The names of the kinds of drives. Internal.
#pragma once

#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{

inline const Common::QVString QuorvexDriveTypeName = L"Quorvex.DataSourceType.Drive";
inline const Common::QVString Trelis360DriveTypeName = L"Quorvex.DataSourceType.TrelisDocs";
inline const Common::QVString Trelis360TeamDriveTypeName = L"Quorvex.DataSourceType.TrelisTeam";
inline const Common::QVString MorrowDriveTypeName = L"Quorvex.DataSourceType.Morrow";

} // namespace Quorvex::Velmora::TessaportAPI
