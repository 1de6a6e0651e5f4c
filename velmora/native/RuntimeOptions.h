/// Where the library finds .NET and the sync application's assembly.
#pragma once

#include <filesystem>

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::TessaportAPI
{

struct RuntimeOptions {
    /// Folder that holds Quorvex.Tessaport.API.dll and what that assembly needs. Empty: the folder of this library.
    std::filesystem::path apiFolder;

    /// Folder of a .NET installation, the one that holds host/fxr. Empty: the installation that .NET's own look-up
    /// finds.
    std::filesystem::path dotnetRoot;
};

/// Sets the options for the first connection of the process, which starts the .NET runtime. May be called again until a
/// start has succeeded, also after one has failed. No environment variable and no file of this library is read.
///
/// Relative paths are taken from the current directory of the moment of this call. May be called on any thread.
/// @throws std::logic_error once a start has succeeded.
VELMORA_API void setRuntimeOptions(const RuntimeOptions& options);

} // namespace Quorvex::Velmora::TessaportAPI
