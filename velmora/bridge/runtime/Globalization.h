/// @file
/// Keeps .NET from ending the process on a machine without the ICU libraries.
#pragma once

#include <hostfxr.h>

namespace Quorvex::Velmora::Tessaport
{

/// The functions of hostfxr that read and write the properties of a runtime before it starts.
struct RuntimeProperties {
    hostfxr_get_runtime_property_value_fn get = nullptr;
    hostfxr_set_runtime_property_value_fn set = nullptr;
};

/// Makes the runtime of this context do without cultures if it would find no ICU libraries, because it then ends the
/// process at its first use of a string. With the libraries, all cultures are available.
///
/// @throws ApiException if the libraries are missing and .NET is configured to require them.
void allowMissingIcu(hostfxr_handle context, const RuntimeProperties& properties);

} // namespace Quorvex::Velmora::Tessaport
