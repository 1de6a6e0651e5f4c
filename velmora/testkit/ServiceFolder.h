// Where the scripted service is installed. Internal.
#pragma once

#include <filesystem>

namespace Quorvex::Velmora::TestKit
{

/// Returns the folder of the scripted service that belongs to the library VelmoraTessaport of this process.
///
/// @throws std::runtime_error if no such folder is found.
[[nodiscard]] std::filesystem::path installedServiceFolder();

} // namespace Quorvex::Velmora::TestKit
