// Objects that a thread keeps.
#pragma once

#include <utility>

#ifdef _WIN32
#include <windows.h>
#endif

namespace Quorvex::Velmora::TestSupport
{

/// Keeps the object until this thread ends, then destroys it on this thread.
template <class T>
void keepInThread(T object)
{
#ifdef _WIN32
    // GCC's thread_local gives the memory back before the object is destroyed.
    static const DWORD slot = FlsAlloc([](void* kept) { delete static_cast<T*>(kept); });
    FlsSetValue(slot, new T(std::move(object)));
#else
    thread_local T kept;
    kept = std::move(object);
#endif
}

} // namespace Quorvex::Velmora::TestSupport
