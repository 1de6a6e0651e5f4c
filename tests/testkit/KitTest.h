// The fixture of tests of the test kit, which make requests as a host does.
#pragma once

#include <gtest/gtest.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/testkit/ScriptedService.h>
#include "tests/support/ScriptedRuntime.h"

namespace Quorvex::Velmora::TestKit
{

class KitTest : public ::testing::Test
{
protected:
    KitTest() : service(TestSupport::scriptedServiceOptions())
    {
        TessaportAPI::QvNativeTessaportAPI::clearCachedItems();
    }
    ~KitTest() override { TessaportAPI::QvNativeTessaportAPI::clearCachedItems(); }

    ScriptedService service;
    const TessaportAPI::Drive drive = makeDrive(L"Harbour Project");
};

} // namespace Quorvex::Velmora::TestKit
