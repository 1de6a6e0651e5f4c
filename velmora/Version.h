/// @file
/// The version of this library, which follows Semantic Versioning. The build takes it from here.
#pragma once

#include <velmora/platform/Export.h>

/// @name The version of these headers, for the preprocessor
/// @{

/// Rises with a release to which hosts must be adapted, except that before 1.0 the minor version does so.
#define VELMORA_VERSION_MAJOR 0
/// Rises with a release that adds something.
#define VELMORA_VERSION_MINOR 1
/// Rises with a release that only fixes bugs.
#define VELMORA_VERSION_PATCH 0

/// One number to compare: 1.2.3 is 10203.
#define VELMORA_VERSION (VELMORA_VERSION_MAJOR * 10000 + VELMORA_VERSION_MINOR * 100 + VELMORA_VERSION_PATCH)
/// @}

namespace Quorvex::Velmora::TessaportAPI
{

/// Returns the version of the library that is loaded, such as "1.2.3", which may differ from that of the headers. May
/// be called on any thread, also before .NET has started.
[[nodiscard]] VELMORA_API const char* versionString() noexcept;

} // namespace Quorvex::Velmora::TessaportAPI
