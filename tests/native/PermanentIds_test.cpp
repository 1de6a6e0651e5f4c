// One-shot operations between permanent ids, items, paths and drives.
#include <functional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/native/ItemCache.h>
#include "tests/native/StaticTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PermanentIds : public StaticTest
{
protected:
    PermanentIds()
    {
        item.driveId = QVUUID(OtherId);
        (void)service.takeCalls();
    }

    // Fails unless all outputs are unchanged.
    void expectUntouched()
    {
        EXPECT_EQ(path, QVString(L"before"));
        EXPECT_EQ(item.lastModifiedDate, 1'700'000'900);
        EXPECT_EQ(item.driveId, QVUUID(OtherId));
        EXPECT_EQ(driveId, QVUUID(OtherId));
    }

    // Runs the three operations that take a permanent id and returns how many succeeded.
    int lookUp()
    {
        return int{Api::getFullWorkspacePathByPermanentId(hwnd, L"pid/1", path)} +
               int{Api::getItemByPermanentId(hwnd, L"pid/1", item)} +
               int{Api::getDriveUUIDByPermanentId(hwnd, L"pid/1", driveId)};
    }

    static constexpr const char* OtherId = "11111111-2222-3333-4444-555555555555";

    QVString path = L"before";
    Item item = itemOf(900);
    QVUUID driveId{OtherId};
};

TEST_F(PermanentIds, LeadToPathItemAndDrive)
{
    service.answer(
        "GetItemsByPermanentIds", Json::array({itemOfPermanentIdResult(itemAt(5, L"D:\\Drive\\a"), "pid/1", 1)}));

    EXPECT_EQ(lookUp(), 3);

    EXPECT_EQ(path, QVString(L"D:\\Drive\\a"));
    EXPECT_EQ(item.lastModifiedDate, 1'700'000'005);
    EXPECT_EQ(driveId, QVUUID(DriveId));
    EXPECT_NE(findCachedItem(L"D:\\Drive\\a"), nullptr);
    EXPECT_THAT(log.take(), IsEmpty());
    const auto calls = service.takeCalls();
    ASSERT_EQ(calls.size(), 6U);
    for (std::size_t i = 0; i < calls.size(); i += 2) {
        EXPECT_EQ(calls[i]["window"], 0x1234);
        EXPECT_EQ(calls[i + 1]["permanentIds"], Json::array({"pid/1"}));
    }
    expectConnectionsClosed();
}

TEST_F(PermanentIds, ThatAreUnknownLeadToNothingWithoutALine)
{
    for (const int result : {0, 2, 4}) {
        service.answer(
            "GetItemsByPermanentIds", Json::array({itemOfPermanentIdResult(itemAt(5, L"D:\\a"), "pid/1", result)}));
        EXPECT_EQ(lookUp(), 0);
    }

    expectUntouched();
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PermanentIds, WithoutAResultLeadToNothingWithoutALine)
{
    EXPECT_EQ(lookUp(), 0);

    expectUntouched();
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PermanentIds, UseTheFirstResultOnly)
{
    service.answer("GetItemsByPermanentIds", Json::array({itemOfPermanentIdResult(nullptr, "pid/1", 2),
                                                 itemOfPermanentIdResult(TestSupport::item(5), "x", 1)}));

    EXPECT_EQ(lookUp(), 0);

    expectUntouched();
}

TEST_F(PermanentIds, ReportFailuresWithALineOfTheirOwn)
{
    service.fail("GetItemsByPermanentIds", notRunning);

    EXPECT_EQ(lookUp(), 0);

    expectUntouched();
    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] ERROR: Failed to get path from pid" + saysOff,
            L"[TP] ERROR: Failed to get item from pid" + saysOff, L"[TP] ERROR: Failed to get drive id" + saysOff));
    expectConnectionsClosed();
}

TEST_F(PermanentIds, ReachTheServiceUnchanged)
{
    (void)Api::getItemByPermanentId(hwnd, L"\xD800/\\ \U0001F600", item);

    EXPECT_EQ(textOf(service.takeCall("GetItemsByPermanentIds")["permanentIds"][0]), L"\xD800/\\ \U0001F600");
}

class PermanentIdOfItem : public PermanentIds
{
protected:
    void answer(const Json& results)
    {
        service.answer("GetPermanentIds", results);
        (void)service.takeCalls();
    }

    bool ask() { return Api::getPermanentIdByItem(hwnd, item, permanentId, result); }

    QVString permanentId = L"before";
    Result result = static_cast<Result>(77);
};

TEST_F(PermanentIdOfItem, ComesFromTheFirstResult)
{
    answer(Json::array({permanentIdResult(1, "pid/1", 1), permanentIdResult(2, "pid/2", 1)}));

    EXPECT_TRUE(ask());

    EXPECT_EQ(permanentId, QVString(L"pid/1"));
    EXPECT_EQ(result, Result::Success);
    const auto calls = service.takeCalls();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0]["window"], 0x1234);
    EXPECT_EQ(calls[1]["ids"], Json::array({900}));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PermanentIdOfItem, IsMissingWithTheReasonAndWithoutALine)
{
    for (const int reason : {4, 2, -3}) {
        answer(Json::array({permanentIdResult(1, "pid/1", reason)}));

        EXPECT_FALSE(ask());

        EXPECT_EQ(static_cast<int>(result), reason);
        EXPECT_EQ(permanentId, QVString(L"before"));
    }
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PermanentIdOfItem, IsMissingWithoutAResult)
{
    answer(Json::array());

    EXPECT_FALSE(ask());

    EXPECT_EQ(static_cast<int>(result), 77);
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PermanentIdOfItem, MayBeEmpty)
{
    answer(Json::array({permanentIdResult(1, nullptr, 1)}));

    EXPECT_TRUE(ask());

    EXPECT_TRUE(permanentId.Empty());
}

TEST_F(PermanentIdOfItem, ReportsFailureAndLeavesBothOutputs)
{
    service.fail("GetPermanentIds", notRunning);

    EXPECT_FALSE(ask());

    EXPECT_EQ(static_cast<int>(result), 77);
    EXPECT_EQ(permanentId, QVString(L"before"));
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get pid from item" + saysOff));
    expectConnectionsClosed();
}

TEST_F(PermanentIdOfItem, OfADefaultConstructedItemIsAFailure)
{
    EXPECT_FALSE(Api::getPermanentIdByItem(hwnd, Item(), permanentId, result));

    EXPECT_EQ(log.take().size(), 1U);
    EXPECT_EQ(static_cast<int>(result), 77);
}

class PermanentIdOfPath : public PermanentIdOfItem
{
protected:
    void cachePath()
    {
        service.answer("GetDrives", Json::array({drive(5, DriveType, L"D:\\Drive")}));
        (void)Api().getDrives();
        (void)service.takeCalls();
    }

    bool askFor(const wchar_t* given) { return Api::getPermanentIdByFullWorkspacePath(hwnd, given, permanentId); }
};

TEST_F(PermanentIdOfPath, OfACachedPathTakesOneRequest)
{
    cachePath();
    answer(Json::array({permanentIdResult(5, "pid/5", 1)}));

    EXPECT_TRUE(askFor(L"D:/Drive"));

    EXPECT_EQ(permanentId, QVString(L"pid/5"));
    const auto calls = service.takeCalls();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0]["window"], 0x1234);
    EXPECT_EQ(calls[1]["member"], "GetPermanentIds");
    EXPECT_EQ(calls[1]["ids"], Json::array({5}));
}

TEST_F(PermanentIdOfPath, OfAnotherPathLooksTheItemUpFirst)
{
    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(itemAt(6, L"D:\\x"), L"D:\\x", 1)}));
    answer(Json::array({permanentIdResult(6, "pid/6", 1)}));

    EXPECT_TRUE(askFor(L"D:\\x"));

    EXPECT_EQ(permanentId, QVString(L"pid/6"));
    EXPECT_THAT(takeMembersAskedForWindow(),
        ElementsAre("TessaportService", "TessaportService", "GetItemsByWorkspacePaths", "GetPermanentIds"));
    EXPECT_THAT(log.take(), IsEmpty());
    expectConnectionsClosed();
}

TEST_F(PermanentIdOfPath, OfAnUnknownPathIsMissingWithTheLineOfTheLookUp)
{
    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(nullptr, L"D:\\x", 3)}));

    EXPECT_FALSE(askFor(L"D:/x"));

    EXPECT_EQ(permanentId, QVString(L"before"));
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get item from workspace path D:/x"));
}

TEST_F(PermanentIdOfPath, IsMissingIfTheResultIsAFailureWithoutALine)
{
    cachePath();
    answer(Json::array({permanentIdResult(5, "pid/5", 4)}));

    EXPECT_FALSE(askFor(L"D:\\Drive"));

    EXPECT_EQ(permanentId, QVString(L"before"));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PermanentIdOfPath, IsMissingWithoutAResult)
{
    cachePath();
    answer(Json::array());

    EXPECT_FALSE(askFor(L"D:\\Drive"));

    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PermanentIdOfPath, ReportsFailureWithThePathAsGiven)
{
    cachePath();
    service.fail("GetPermanentIds", notRunning);

    EXPECT_FALSE(askFor(L"D:/Drive/."));

    EXPECT_EQ(permanentId, QVString(L"before"));
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get pid from path D:/Drive/." + saysOff));
}

TEST_F(PermanentIdOfPath, ReportsAConnectionThatCannotBeOpened)
{
    service.fail("TessaportService", notRunning);

    EXPECT_FALSE(askFor(L"D:\\x"));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get pid from path D:\\x" + saysOff));
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
