// Makes the library of this test program start .NET with the scripted service.
#pragma once

#include <filesystem>

namespace Quorvex::Velmora::TestSupport
{

/// The managed half of the library in the build tree.
[[nodiscard]] std::filesystem::path bridgeFolder();

/// The folder of the scripted service's assembly.
[[nodiscard]] std::filesystem::path scriptedServiceFolder();

/// Points the library at both folders. Does not start the runtime; does nothing once it runs.
void useScriptedService();

} // namespace Quorvex::Velmora::TestSupport
