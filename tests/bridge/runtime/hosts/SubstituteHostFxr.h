/// @file
/// A library in place of hostfxr, which answers each call as a test has set it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <coreclr_delegates.h>
#include <hostfxr.h>

namespace Quorvex::Velmora::TestHosts
{

/// What the functions of the library answer, and how often they were called.
struct HostFxrScript {
    std::int32_t initialize = 0;
    std::int32_t getDelegate = 0;
    /// The bridge in the default context, its function there, and both in a context of their own.
    std::int32_t loadAssembly = 0;
    std::int32_t findFunction = 0;
    std::int32_t loadFunction = 0;
    /// What the calls hand out, whatever code they return.
    bool givesHandle = true;
    bool givesDelegate = true;
    void* startFunction = nullptr;
    /// The value of every property of the runtime, and the code with which it is returned.
    const char_t* property = nullptr;
    std::int32_t getProperty = 0;
    /// Runs inside each call that does not return 0, with the error writer that is set. May be empty.
    std::function<void(hostfxr_error_writer_fn)> whenFailing;

    hostfxr_error_writer_fn writer = nullptr;
    int initialized = 0;
    int closed = 0;
    int ownContexts = 0;
    int propertiesSet = 0;
};

/// The name of the function of the library that returns its script.
constexpr const char* HostFxrScriptFunction = "substitute_hostfxr_script";
using GetHostFxrScript = HostFxrScript* (*)();

} // namespace Quorvex::Velmora::TestHosts
