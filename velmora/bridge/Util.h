// What the runtime offers beside the sync application.
#pragma once

#include <string>

namespace Quorvex::Velmora::Tessaport::Util
{

/// The absolute, normalised form of a path, as System.IO.Path.GetFullPath gives it. Starts the runtime if nothing has.
/// @throws ManagedFailure for a path that has none: call it inside runWhileHandlingExceptions.
[[nodiscard]] std::wstring getFullPath(const std::wstring& path);

} // namespace Quorvex::Velmora::Tessaport::Util
