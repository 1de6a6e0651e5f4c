// Lets the library in a test program start .NET with the scripted service.
#pragma once

#include <filesystem>

namespace Quorvex::Velmora::TestSupport
{

/// The managed half of the library in the build tree.
[[nodiscard]] std::filesystem::path bridgeFolder();

/// The folder with the assembly of the scripted service.
[[nodiscard]] std::filesystem::path scriptedServiceFolder();

/// Sets both folders as options of the library. Does not start the runtime; does nothing once it runs.
void useScriptedService();

} // namespace Quorvex::Velmora::TestSupport
