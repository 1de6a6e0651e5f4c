#pragma once

#include <filesystem>

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Where the library looks for .NET and for the sync application's assembly.
struct RuntimeOptions {
    /// The folder that holds Quorvex.Tessaport.API.dll and what that assembly needs. Empty means the folder of this
    /// library.
    std::filesystem::path apiFolder;

    /// The folder of a .NET installation, which holds host/fxr. Empty means the installation that .NET's own look-up
    /// finds.
    std::filesystem::path dotnetRoot;
};

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
