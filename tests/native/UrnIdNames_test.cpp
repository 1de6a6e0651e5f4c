#include "velmora/native/UrnIdNames.h"

#include <iterator>

#include <gtest/gtest.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

TEST(UrnIdNames, HasOneRowForEachDriveType)
{
    EXPECT_EQ(std::size(UrnIdNamesByDriveType), 4U);
    EXPECT_EQ(findUrnIdNames(L"Quorvex.DataSourceType.New"), nullptr);
    EXPECT_EQ(findUrnIdNames(L"quorvex.datasourcetype.drive"), nullptr);
    EXPECT_EQ(findUrnIdNames(L""), nullptr);
}

TEST(UrnIdNames, NamesTheSourceObjectOnDrivesWithoutProjects)
{
    for (const wchar_t* const type : {L"Quorvex.DataSourceType.Drive", L"Quorvex.DataSourceType.Morrow"}) {
        const UrnIdNames* const names = findUrnIdNames(type);
        ASSERT_NE(names, nullptr);
        EXPECT_EQ(names->projectIdName, L"");
        EXPECT_EQ(names->parentFolderUrnIdName, L"");
        EXPECT_EQ(names->folderUrnIdName, L"SourceObjectId");
        EXPECT_EQ(names->fileUrnIdName, L"SourceObjectId");
    }
}

TEST(UrnIdNames, NamesProjectParentAndItemOnDrivesWithProjects)
{
    for (const wchar_t* const type : {L"Quorvex.DataSourceType.TrelisDocs", L"Quorvex.DataSourceType.TrelisTeam"}) {
        const UrnIdNames* const names = findUrnIdNames(type);
        ASSERT_NE(names, nullptr);
        EXPECT_EQ(names->projectIdName, L"KeldaProjectId");
        EXPECT_EQ(names->parentFolderUrnIdName, L"KeldaParentId");
        EXPECT_EQ(names->folderUrnIdName, L"");
        EXPECT_EQ(names->fileUrnIdName, L"KeldaItemId");
    }
}

} // namespace
} // namespace Quorvex::Velmora::TessaportAPI
