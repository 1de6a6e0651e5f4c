// The fixture of tests with the .NET runtime and the scripted service.
#pragma once

#include <gtest/gtest.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/LogLines.h"
#include "tests/support/ScriptedService.h"

namespace Quorvex::Velmora::TestSupport
{

/// Starts each test with a new service, an empty item cache and no log lines; checks at the end that the test left no
/// handle behind.
class ScriptedTest : public ::testing::Test
{
protected:
    ScriptedTest()
    {
        TessaportAPI::QvNativeTessaportAPI::clearCachedItems();
        handlesBefore = countHandles();
    }
    ~ScriptedTest() override
    {
        TessaportAPI::QvNativeTessaportAPI::clearCachedItems();
        EXPECT_EQ(countHandles() - handlesKept, handlesBefore) << "handles were left behind";
    }

    ScriptedService service;
    LogLines log;
    /// Handles that the test deliberately keeps until the process ends.
    std::int64_t handlesKept = 0;

private:
    std::int64_t handlesBefore = 0;
};

} // namespace Quorvex::Velmora::TestSupport
