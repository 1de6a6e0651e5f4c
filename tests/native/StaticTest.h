// The fixture for one-shot operations, which open a connection of their own.
#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{

class StaticTest : public BridgeTest
{
protected:
    using Api = TessaportAPI::QvNativeTessaportAPI;

    StaticTest() { (void)service.takeCalls(); }

    /// An exception of the service, and the end of the log line that reports it.
    const Json notRunning = failure("TessaportNotRunningException", L"it is off");
    const std::wstring saysOff = L" - it is off";

    /// Returns the calls since the last time, without their arguments. Fails unless every connection was opened for
    /// `hwnd`.
    std::vector<std::string> takeMembersAskedForWindow()
    {
        std::vector<std::string> members;
        for (const Json& call : service.takeCalls()) {
            members.push_back(call["member"]);
            if (members.back() == "TessaportService") {
                EXPECT_EQ(call["window"], 0x1234);
            }
        }
        return members;
    }

    /// Fails unless the fixture's own service is the only one left.
    void expectConnectionsClosed() { EXPECT_EQ(service.collect().services.size(), 1U); }

    const HWND hwnd = reinterpret_cast<HWND>(std::intptr_t{0x1234});
};

} // namespace Quorvex::Velmora::TestSupport
