// Requests through a queue to the sync application: what it sees of them.
#include <cstdint>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

#include <velmora/native/ItemCache.h>
#include <velmora/native/RequestQueue.h>
#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

class QueuedRequests : public BridgeTest
{
protected:
    QueuedRequests() { (void)service.takeCalls(); }

    ~QueuedRequests() override
    {
        queue.reset();
        settle();
    }

    // Returns when the request thread has done all that it was told to do before. Makes no connection, which could
    // still be open afterwards.
    void settle()
    {
        service.fail("TessaportService", failure("InvalidOperationException", L"closed"));
        EXPECT_THROW(RequestQueue().ask([](QvNativeTessaportAPI&) {}).get(), ApiException);
        service.answerInTurn("TessaportService", {});
    }

    std::optional<RequestQueue> queue{std::in_place, reinterpret_cast<HWND>(std::intptr_t{0xABCD})};
};

TEST_F(QueuedRequests, OpenOneConnectionForTheWindow)
{
    queue->ask(&QvNativeTessaportAPI::getDrives).get();
    queue->ask(&QvNativeTessaportAPI::getDrives).get();

    const auto calls = service.takeCalls();
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[0]["member"], "TessaportService");
    EXPECT_EQ(calls[0]["window"], 0xABCD);
    EXPECT_EQ(calls[1]["member"], "GetDrives");
    EXPECT_EQ(calls[2]["service"], calls[1]["service"]);
}

TEST_F(QueuedRequests, FillTheItemCache)
{
    service.answer("GetFolderContents", Json::array({itemAt(1, L"D:\\a")}));
    const Item folder = itemOf(900);

    queue->ask([&](QvNativeTessaportAPI& tessaport) { (void)tessaport.getFolderContents(folder); }).get();

    EXPECT_NE(findCachedItem(L"D:\\a"), nullptr);
}

TEST_F(QueuedRequests, AnswerWithTheExceptionsOfTheSyncApplication)
{
    service.fail("GetDrives", failure("TessaportForcedUpdateException", L"update first"));

    auto answer = queue->ask(&QvNativeTessaportAPI::getDrives);

    EXPECT_THROW(answer.get(), TessaportForcedUpdateException);
}

TEST_F(QueuedRequests, ConnectOnceTheSyncApplicationRuns)
{
    service.fail("TessaportService", failure("TessaportNotRunningException", L"it is off"));
    EXPECT_THROW(queue->ask(&QvNativeTessaportAPI::getDrives).get(), TessaportNotRunningException);

    service.answerInTurn("TessaportService", {});

    EXPECT_EQ(queue->ask(&QvNativeTessaportAPI::getDrives).get().GetSize(), 1U);
}

TEST_F(QueuedRequests, CloseTheirConnectionWithTheQueue)
{
    queue->ask(&QvNativeTessaportAPI::getDrives).get();
    EXPECT_EQ(service.collect().services.size(), 2U);

    queue.reset();
    settle();

    EXPECT_EQ(service.collect().services.size(), 1U);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
