// Objects that live until their thread ends.
#pragma once

#include <utility>

#ifdef _WIN32
#include <windows.h>
#endif

namespace Quorvex::Velmora::TestSupport
{

/// Keeps the object until the calling thread ends, and destroys it on that thread.
template <class T>
void keepInThread(T object)
{
#ifdef _WIN32
    // With thread_local, GCC frees the memory before it destroys the object.
    static const DWORD slot = FlsAlloc([](void* kept) { delete static_cast<T*>(kept); });
    FlsSetValue(slot, new T(std::move(object)));
#else
    thread_local T kept;
    kept = std::move(object);
#endif
}

} // namespace Quorvex::Velmora::TestSupport
