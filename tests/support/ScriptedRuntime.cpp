#include "tests/support/ScriptedRuntime.h"

#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/native/RuntimeOptions.h>

namespace Quorvex::Velmora::TestSupport
{

std::filesystem::path bridgeFolder() { return std::filesystem::u8path(VELMORA_BRIDGE_FOLDER); }

std::filesystem::path scriptedServiceFolder() { return std::filesystem::u8path(VELMORA_SCRIPTED_SERVICE_FOLDER); }

void useScriptedService()
{
    auto& runtime = Tessaport::ClrRuntime::ofProcess();
    if (!runtime.description().framework.empty())
        return;
    runtime.setBridgeFolder(bridgeFolder());
    TessaportAPI::RuntimeOptions options;
    options.apiFolder = scriptedServiceFolder();
    TessaportAPI::setRuntimeOptions(options);
}

} // namespace Quorvex::Velmora::TestSupport
