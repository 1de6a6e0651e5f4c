/// @file
/// Absolute paths, as .NET makes them.
#pragma once

#include <string>

namespace Quorvex::Velmora::Tessaport
{

/// Returns the absolute, normalised form of a path, as System.IO.Path.GetFullPath does. Starts the runtime if it does
/// not run yet.
///
/// @throws ManagedFailure if the path has no such form: call it inside runWhileHandlingExceptions.
[[nodiscard]] std::wstring getFullPath(const std::wstring& path);

} // namespace Quorvex::Velmora::Tessaport
