#include "tests/bridge/runtime/hosts/SubstituteHostFxr.h"

#ifdef _WIN32
#define VELMORA_HOST_EXPORT extern "C" __declspec(dllexport)
#else
#define VELMORA_HOST_EXPORT extern "C" __attribute__((visibility("default")))
#endif

using Quorvex::Velmora::TestHosts::HostFxrScript;

namespace
{

HostFxrScript script;

std::int32_t answer(std::int32_t code)
{
    if (code != 0 && script.whenFailing)
        script.whenFailing(script.writer);
    return code;
}

int CORECLR_DELEGATE_CALLTYPE loadAssembly(const char_t*, void*, void*) { return answer(script.loadAssembly); }

int CORECLR_DELEGATE_CALLTYPE findFunction(const char_t*, const char_t*, const char_t*, void*, void*, void** function)
{
    *function = script.startFunction;
    return answer(script.findFunction);
}

int CORECLR_DELEGATE_CALLTYPE loadFunction(
    const char_t*, const char_t*, const char_t*, const char_t*, void*, void** function)
{
    ++script.ownContexts;
    *function = script.startFunction;
    return answer(script.loadFunction);
}

void* functionOf(hostfxr_delegate_type type)
{
    switch (type) {
    case hdt_load_assembly:
        return reinterpret_cast<void*>(&loadAssembly);
    case hdt_get_function_pointer:
        return reinterpret_cast<void*>(&findFunction);
    case hdt_load_assembly_and_get_function_pointer:
        return reinterpret_cast<void*>(&loadFunction);
    default:
        return nullptr;
    }
}

} // namespace

VELMORA_HOST_EXPORT HostFxrScript* substitute_hostfxr_script() { return &script; }

VELMORA_HOST_EXPORT std::int32_t HOSTFXR_CALLTYPE hostfxr_initialize_for_runtime_config(
    const char_t*, const hostfxr_initialize_parameters*, hostfxr_handle* handle)
{
    ++script.initialized;
    *handle = script.givesHandle ? &script : nullptr;
    return answer(script.initialize);
}

VELMORA_HOST_EXPORT std::int32_t HOSTFXR_CALLTYPE hostfxr_get_runtime_delegate(
    hostfxr_handle, hostfxr_delegate_type type, void** delegate)
{
    *delegate = script.givesDelegate ? functionOf(type) : nullptr;
    return answer(script.getDelegate);
}

VELMORA_HOST_EXPORT std::int32_t HOSTFXR_CALLTYPE hostfxr_close(hostfxr_handle)
{
    ++script.closed;
    return 0;
}

VELMORA_HOST_EXPORT hostfxr_error_writer_fn HOSTFXR_CALLTYPE hostfxr_set_error_writer(hostfxr_error_writer_fn writer)
{
    const hostfxr_error_writer_fn previous = script.writer;
    script.writer = writer;
    return previous;
}

VELMORA_HOST_EXPORT std::int32_t HOSTFXR_CALLTYPE hostfxr_get_runtime_property_value(
    hostfxr_handle, const char_t*, const char_t** value)
{
    *value = script.property;
    return script.getProperty;
}

VELMORA_HOST_EXPORT std::int32_t HOSTFXR_CALLTYPE hostfxr_set_runtime_property_value(
    hostfxr_handle, const char_t*, const char_t*)
{
    ++script.propertiesSet;
    return 0;
}
