// Lets the library in a test program start .NET with the scripted service.
#pragma once

#include <filesystem>

#include <velmora/api/RuntimeOptions.h>

namespace Quorvex::Velmora::TestSupport
{

/// The managed half of the library in the build tree.
[[nodiscard]] std::filesystem::path bridgeFolder();

/// Sets the bridge folder of the library, and returns its options for the scripted service in the build tree.
[[nodiscard]] TessaportAPI::RuntimeOptions scriptedServiceOptions();

/// Sets both folders for programs without a script. Does not start the runtime; does nothing once it runs.
void useScriptedService();

} // namespace Quorvex::Velmora::TestSupport
