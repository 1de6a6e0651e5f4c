// Whether this process may still open enough files for .NET to start.
#pragma once

#include <string>

namespace Quorvex::Velmora::Tessaport
{

/// Checks in advance what the runtime would fail at halfway, after which it cannot be started again in this process.
///
/// @return empty if enough files can be opened or .NET runs in this process already; otherwise what is missing and what
/// to do.
[[nodiscard]] std::wstring describeMissingFileDescriptors();

} // namespace Quorvex::Velmora::Tessaport
