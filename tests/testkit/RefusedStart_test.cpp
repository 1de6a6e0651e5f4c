// A process in which .NET runs with another sync application.
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/testkit/ScriptedService.h>
#include "tests/support/ScriptedRuntime.h"

namespace Quorvex::Velmora::TestKit
{
namespace
{

using testing::HasSubstr;

std::string refusal(const TessaportAPI::RuntimeOptions& options)
{
    try {
        const ScriptedService service(options);
    } catch (const std::logic_error& e) {
        return e.what();
    }
    return "no refusal";
}

TEST(ScriptedService, IsRefusedWhereAnotherServiceRuns)
{
    TessaportAPI::RuntimeOptions options = TestSupport::scriptedServiceOptions();
    options.apiFolder = std::filesystem::u8path(VELMORA_LOCAL_SERVICE_FOLDER);

    EXPECT_THAT(refusal(options), HasSubstr("is not the scripted service"));
    EXPECT_THAT(refusal(TestSupport::scriptedServiceOptions()), HasSubstr("has already started .NET"));
}

} // namespace
} // namespace Quorvex::Velmora::TestKit
