// The fixture of tests on the real runtime with the scripted service.
#pragma once

#include <gtest/gtest.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/LogLines.h"
#include "tests/support/ScriptedService.h"

namespace Quorvex::Velmora::TestSupport
{

/// Starts with a fresh service, an empty item cache and no log lines; ends with no handle that the test has not
/// brought in.
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
    /// Handles that stay to the end of the process by the test's own doing.
    std::int64_t handlesKept = 0;

private:
    std::int64_t handlesBefore = 0;
};

} // namespace Quorvex::Velmora::TestSupport
