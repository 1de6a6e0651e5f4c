// A process in which the first start fails.
#include <gtest/gtest.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/testkit/ScriptedService.h>
#include "tests/support/ScriptedRuntime.h"

namespace Quorvex::Velmora::TestKit
{
namespace
{

TEST(ScriptedService, StartsAfterAStartInAWrongFolder)
{
    TessaportAPI::RuntimeOptions options = TestSupport::scriptedServiceOptions();
    options.apiFolder = TestSupport::bridgeFolder();
    EXPECT_THROW(ScriptedService{options}, TessaportAPI::ApiException);

    TessaportAPI::RuntimeOptions installed = TestSupport::scriptedServiceOptions();
    installed.apiFolder.clear();
    ScriptedService service(installed);

    service.getVersion.answer(L"5");
    EXPECT_EQ(TessaportAPI::QvNativeTessaportAPI().getVersion(), Common::QVString(L"5"));
}

} // namespace
} // namespace Quorvex::Velmora::TestKit
