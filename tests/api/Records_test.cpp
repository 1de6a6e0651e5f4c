#include "velmora/api/Records.h"

#include <gtest/gtest.h>

#include <velmora/bridge/QvManagedTessaportService.h>
#include "tests/api/ManagedObjects.h"

using namespace Quorvex::Velmora;
using namespace Quorvex::Velmora::TessaportAPI;
using Common::QVUUID;
using TestSupport::ManagedObjects;
using Bridge = Tessaport::QvManagedTessaportService;

namespace
{

constexpr const char* DriveId = "01234567-89ab-cdef-0123-456789abcdef";

Item filledItem(const ManagedObjects& objects)
{
    Item item;
    item.driveId = QVUUID(DriveId);
    Bridge::setInternalId(item.id, objects.itemId(7));
    item.isFolder = true;
    item.isInWorkspace = true;
    item.isOnServer = true;
    item.name = L"a";
    item.relativePath = L"f\\a";
    item.workspacePath = L"D:\\f\\a";
    item.lastModifiedDate = -5;
    return item;
}

void expectEqual(const Item& left, const Item& right)
{
    EXPECT_TRUE(left.driveId == right.driveId);
    EXPECT_EQ(Bridge::getInternalId(left.id), Bridge::getInternalId(right.id));
    EXPECT_EQ(left.isFolder, right.isFolder);
    EXPECT_EQ(left.isInWorkspace, right.isInWorkspace);
    EXPECT_EQ(left.isOnServer, right.isOnServer);
    EXPECT_TRUE(left.name == right.name);
    EXPECT_TRUE(left.relativePath == right.relativePath);
    EXPECT_TRUE(left.workspacePath == right.workspacePath);
    EXPECT_EQ(left.lastModifiedDate, right.lastModifiedDate);
}

} // namespace

TEST(Records, ADriveCopyCarriesItsRootWithAllNineFields)
{
    const ManagedObjects objects;
    Drive drive;
    drive.locking = true;
    drive.driveType = L"Quorvex.DataSourceType.Drive";
    drive.name = L"D";
    drive.workspaceLocation = L"D:\\";
    drive.root = filledItem(objects);

    const Drive copy(drive);
    Drive assigned;
    assigned = drive;

    for (const Drive* const each : {&copy, &static_cast<const Drive&>(assigned)}) {
        expectEqual(each->root, drive.root);
        EXPECT_TRUE(each->locking);
        EXPECT_TRUE(each->id == drive.id);
        EXPECT_STREQ(each->driveType.w_str(), L"Quorvex.DataSourceType.Drive");
        EXPECT_STREQ(each->name.w_str(), L"D");
        EXPECT_STREQ(each->workspaceLocation.w_str(), L"D:\\");
    }
}

TEST(Records, AnAssignedItemKeepsItsIdWhenTheSourceNamesNothing)
{
    const ManagedObjects objects;
    Item target = filledItem(objects);
    Item source;
    source.name = L"new";

    target = source;

    EXPECT_STREQ(target.name.w_str(), L"new");
    EXPECT_TRUE(target.driveId == source.driveId);
    ASSERT_NE(Bridge::getInternalId(target.id), nullptr);
    EXPECT_EQ(Bridge::getInternalId(target.id)->id.get(), 7);
}

TEST(Records, HaveEmptyStringsAndNewIdentifiersByDefault)
{
    const Item first;
    const Item second;

    EXPECT_TRUE(first.driveId != second.driveId);
    EXPECT_TRUE(first.name.Empty());
    EXPECT_TRUE(first.relativePath.Empty());
    EXPECT_TRUE(first.workspacePath.Empty());
    EXPECT_TRUE(PropertyDefinition().auxiliaryText.Empty());
    EXPECT_TRUE(StringPropertyValue().auxiliaryText.Empty());
}

TEST(Records, ACopiedContextAndResultHaveListsOfTheirOwn)
{
    const ManagedObjects objects;
    CommandContext context;
    context.itemIds.Append(filledItem(objects).id);
    CommandResult result;
    result.isSuccess = true;
    result.itemsUpdated.Append(filledItem(objects));

    const CommandContext contextCopy(context);
    CommandResult resultCopy(result);
    result.itemsUpdated[0]->name = L"changed";

    EXPECT_EQ(contextCopy.itemIds.GetSize(), 1U);
    EXPECT_NE(contextCopy.itemIds[0], context.itemIds[0]);
    EXPECT_TRUE(resultCopy.isSuccess);
    EXPECT_STREQ(resultCopy.itemsUpdated[0]->name.w_str(), L"a");
}
