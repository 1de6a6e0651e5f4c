// Threads of the host that keep records of this library until they end.
#include <memory>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/BridgeTest.h"
#include "tests/support/KeptInThread.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ThreadEnd : public BridgeTest
{
};

TEST_F(ThreadEnd, ReleasesWhatTheThreadKeptNotLaterThanTheNextRequest)
{
    std::thread([this] {
        keepInThread(idOf(5));
        EXPECT_THAT(service.collect().items, ElementsAre(5));
    }).join();

    bridge.discover();

    EXPECT_THAT(service.collect().items, IsEmpty());
}

TEST_F(ThreadEnd, ServesRequestsOrRefusesThem)
{
    std::string outcome;
    std::thread([&] {
        bridge.discover();
        keepInThread(std::shared_ptr<void>(nullptr, [&](void*) {
            try {
                bridge.discover();
                outcome = "served";
            } catch (const ApiException& e) {
                outcome = e.what();
            }
        }));
    }).join();

#ifdef _WIN32
    EXPECT_EQ(outcome, "This thread is ending, so .NET takes no more calls on it. Make them earlier.");
#else
    EXPECT_EQ(outcome, "served");
#endif
    EXPECT_NO_THROW(bridge.discover());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
