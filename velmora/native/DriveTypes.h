// The names of the drive types. Internal.
#pragma once

#include <string_view>

namespace Quorvex::Velmora::TessaportAPI
{

inline constexpr std::wstring_view QuorvexDriveTypeName = L"Quorvex.DataSourceType.Drive";
inline constexpr std::wstring_view Trelis360DriveTypeName = L"Quorvex.DataSourceType.TrelisDocs";
inline constexpr std::wstring_view Trelis360TeamDriveTypeName = L"Quorvex.DataSourceType.TrelisTeam";
inline constexpr std::wstring_view MorrowDriveTypeName = L"Quorvex.DataSourceType.Morrow";

} // namespace Quorvex::Velmora::TessaportAPI
