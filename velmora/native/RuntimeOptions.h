#pragma once

#include <velmora/api/RuntimeOptions.h>
#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Sets the options for the first connection of the process, which starts the .NET runtime.
///
/// May be called on any thread, and again until a start has succeeded, also after one has failed. The library reads no
/// environment variable and no configuration file of its own.
///
/// @param options  relative paths are resolved by this call, against the current directory.
/// @throws std::logic_error once a start has succeeded.
/// @throws std::filesystem::filesystem_error for a relative path when the current directory does not exist any more.
/// The
///         options set before stay.
VELMORA_API void setRuntimeOptions(const RuntimeOptions& options);

} // namespace Quorvex::Velmora::TessaportAPI
