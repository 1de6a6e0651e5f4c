// Lists of other types than List<T>, and lists that change: the bridge takes what their own enumerator gives.
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <velmora/bridge/conversions/ToNative.h>
#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

class Lists : public BridgeTest
{
protected:
    // The numbers of the items in order, taken from their dates.
    static std::string numbersOf(const QVBuffer<Item>& items)
    {
        std::string numbers;
        for (const Item& each : items)
            numbers += std::to_string(each.lastModifiedDate - 1'700'000'000);
        return numbers;
    }

    const Json items = Json::array({item(1), item(2), item(3)});
};

// As QVBuffer::Append() grows: 0, 1, 2, 4, 8, …
TEST(CapacityAfterAppending, IsTheNextPowerOfTwoWhereThereIsOne)
{
    EXPECT_EQ(Tessaport::capacityAfterAppending(0), 0U);
    for (const std::uint32_t power : {1U, 2U, 4U, 1024U, 0x80000000U})
        EXPECT_EQ(Tessaport::capacityAfterAppending(power), power);
    EXPECT_EQ(Tessaport::capacityAfterAppending(3), 4U);
    EXPECT_EQ(Tessaport::capacityAfterAppending(1025), 2048U);
    EXPECT_EQ(Tessaport::capacityAfterAppending(0x80000001U), 0x80000001U);
}

TEST_F(Lists, AreOnlyEnumerated)
{
    const CommandContext context = contextOf(9, {});
    const auto list = [](Json record) { return listOfKind("enumerable-only", Json::array({record, record})); };

    service.answer("GetDrives", list(drive(1, DriveType, L"D:\\A")));
    EXPECT_EQ(bridge.getDrives().GetSize(), 2U);
    service.answer("GetFolderContents", list(item(1)));
    EXPECT_EQ(bridge.getFolderContents(context.itemId).GetSize(), 2U);
    service.answer("GetChildFolders", list(item(1)));
    EXPECT_EQ(bridge.getChildFolders(context.itemId).GetSize(), 2U);
    service.answer("GetItemsByRelativePaths", list(item(1)));
    EXPECT_EQ(bridge.getItemsByRelativePaths({}, {}).GetSize(), 2U);
    service.answer("GetItemsByWorkspacePaths", list(workspacePathResult(item(1), L"a", 1)));
    EXPECT_EQ(bridge.getItemsByWorkspacePaths({}).GetSize(), 2U);
    service.answer("GetPropertyDefinitions", list({{"id", "P"}, {"displayName", "Property"}}));
    EXPECT_EQ(bridge.getPropertyDefinitions({}).GetSize(), 2U);
    service.answer("GetProperties", propertyValues(list(propertyValue(L"P", 1))));
    EXPECT_EQ(bridge.getStringPropertyValues({}, {}).GetSize(), 2U);
    service.answer("GetCommands", list(command(1)));
    EXPECT_EQ(bridge.getCommands(context).GetSize(), 2U);
    service.answer("GetPermanentIds", list(permanentIdResult(1, "p", 1)));
    EXPECT_EQ(bridge.getPermanentIds({}).GetSize(), 2U);
    service.answer("GetItemsByPermanentIds", list(itemOfPermanentIdResult(item(1), "p", 1)));
    EXPECT_EQ(bridge.getItemsByPermanentIds({}).GetSize(), 2U);
    service.answer("SyncFiles", outcome(true, list(item(1)), list(item(2)), list(item(3))));
    EXPECT_EQ(bridge.syncFiles({}).itemsUpdated.GetSize(), 2U);
}

TEST_F(Lists, HaveTheOrderOfTheirOwnEnumerator)
{
    service.answer("GetItemsByRelativePaths", listOfKind("reversing", items));

    EXPECT_EQ(numbersOf(bridge.getItemsByRelativePaths({}, {})), "321");
}

TEST_F(Lists, MayBeArrays)
{
    service.answer("GetItemsByRelativePaths", listOfKind("array", items));
    EXPECT_EQ(numbersOf(bridge.getItemsByRelativePaths({}, {})), "123");

    service.answer("GetItemsByRelativePaths", listOfKind("array", Json::array()));
    EXPECT_EQ(bridge.getItemsByRelativePaths({}, {}).GetSize(), 0U);
}

TEST_F(Lists, ThatChangeWhileTheyAreEnumeratedFailTheRequest)
{
    service.answer("GetProperties",
        propertyValues(listOfKind("growing", Json::array({propertyValue(L"P", 1), propertyValue(L"P", 2)}))));

    try {
        (void)bridge.getStringPropertyValues({}, {});
        FAIL() << "the list was taken as it was when the request began";
    } catch (const ApiException& e) {
        EXPECT_NE(std::string(e.what()).find("modified"), std::string::npos) << e.what();
    }
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
