#include "tests/support/ScriptedRuntime.h"

#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/native/RuntimeOptions.h>
#include <velmora/testkit/ServiceFolder.h>

namespace Quorvex::Velmora::TestSupport
{

std::filesystem::path bridgeFolder() { return std::filesystem::u8path(VELMORA_BRIDGE_FOLDER); }

TessaportAPI::RuntimeOptions scriptedServiceOptions()
{
    Tessaport::ClrRuntime::ofProcess().setBridgeFolder(bridgeFolder());
    TessaportAPI::RuntimeOptions options;
    options.apiFolder = TestKit::installedServiceFolder();
    return options;
}

void useScriptedService()
{
    if (Tessaport::ClrRuntime::ofProcess().description().framework.empty())
        TessaportAPI::setRuntimeOptions(scriptedServiceOptions());
}

} // namespace Quorvex::Velmora::TestSupport
