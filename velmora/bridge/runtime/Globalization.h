// Keeps .NET from ending the process on a machine without the ICU libraries.
#pragma once

#include <hostfxr.h>

namespace Quorvex::Velmora::Tessaport
{

/// The functions of hostfxr that read and write the properties of a runtime that has not started.
struct RuntimeProperties {
    hostfxr_get_runtime_property_value_fn get = nullptr;
    hostfxr_set_runtime_property_value_fn set = nullptr;
};

/// Lets the runtime of this context do without cultures where it would find no ICU libraries: it would otherwise end
/// the process at its first use of a text. Where they are, all cultures are there as usual.
/// @throws ApiException when .NET is told to insist on those libraries, and they are missing.
void allowMissingIcu(hostfxr_handle context, const RuntimeProperties& properties);

} // namespace Quorvex::Velmora::Tessaport
