// The scripted service in a program without a script, as benchmarks and hosts use it.
#include <gtest/gtest.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/ScriptedRuntime.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

class UnscriptedService : public ::testing::Test
{
protected:
    UnscriptedService() { useScriptedService(); }
};

TEST_F(UnscriptedService, HasOneDriveAndNothingInIt)
{
    QvNativeTessaportAPI connection;
    connection.discover();

    const QVBuffer<Drive> drives = connection.getDrives();

    ASSERT_EQ(drives.GetSize(), 1U);
    EXPECT_EQ(drives[0]->name, QVString(L"Drive 1"));
    EXPECT_EQ(drives[0]->driveType, QVString(L"Quorvex.DataSourceType.Drive"));
    EXPECT_EQ(connection.getFolderContents(drives[0]->root).GetSize(), 0U);
    EXPECT_EQ(connection.getVersion(), QVString(L"3.1.4"));
    EXPECT_TRUE(connection.canAddFiles(drives[0]->root, {}));
    EXPECT_TRUE(connection.syncFiles({}).isSuccess);
}

TEST_F(UnscriptedService, AnswersEveryLookUpWithNothing)
{
    QvNativeTessaportAPI connection;

    EXPECT_EQ(connection.getItemsByWorkspacePaths({}).GetSize(), 0U);
    EXPECT_EQ(connection.getItemsByPermanentIds({}).GetSize(), 0U);
    EXPECT_EQ(connection.getPermanentIds({}).GetSize(), 0U);
    EXPECT_EQ(connection.getStringPropertyValues({}, {}).GetSize(), 0U);
    EXPECT_FALSE(connection.isFileInWorkspace(L"C:\\a"));
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
