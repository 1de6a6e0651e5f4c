// Which properties of an item hold its cloud identifiers, for each type of drive. Internal.
#pragma once

#include <string_view>

#include <velmora/native/DriveTypes.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Names of properties. An empty name means that items on such a drive have no such property.
struct UrnIdNames {
    std::wstring_view driveType;
    std::wstring_view projectIdName;
    std::wstring_view parentFolderUrnIdName; ///< For a folder that is asked for as a parent.
    std::wstring_view folderUrnIdName;
    std::wstring_view fileUrnIdName;
};

inline constexpr UrnIdNames UrnIdNamesByDriveType[] = {
    {QuorvexDriveTypeName, L"", L"", L"SourceObjectId", L"SourceObjectId"},
    {Trelis360DriveTypeName, L"KeldaProjectId", L"KeldaParentId", L"", L"KeldaItemId"},
    {Trelis360TeamDriveTypeName, L"KeldaProjectId", L"KeldaParentId", L"", L"KeldaItemId"},
    {MorrowDriveTypeName, L"", L"", L"SourceObjectId", L"SourceObjectId"},
};

/// The row of a drive type, or null for a type without one.
[[nodiscard]] constexpr const UrnIdNames* findUrnIdNames(std::wstring_view driveType) noexcept
{
    for (const UrnIdNames& names : UrnIdNamesByDriveType) {
        if (names.driveType == driveType)
            return &names;
    }
    return nullptr;
}

} // namespace Quorvex::Velmora::TessaportAPI
