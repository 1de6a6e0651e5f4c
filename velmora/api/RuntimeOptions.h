#pragma once

#include <filesystem>

namespace Quorvex::Velmora::TessaportAPI
{

/// Where the library looks for .NET and for the sync application's assembly.
struct RuntimeOptions {
    /// The folder that holds Quorvex.Tessaport.API.dll and what that assembly needs. Empty means the folder of this
    /// library.
    std::filesystem::path apiFolder;

    /// The folder of a .NET installation, which holds host/fxr. Empty means the folder velmora/dotnet beside this
    /// library if there is one, as in complete archives, otherwise the installation that .NET's own look-up finds.
    std::filesystem::path dotnetRoot;
};

} // namespace Quorvex::Velmora::TessaportAPI
