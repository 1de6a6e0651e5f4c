/// @file
/// Which call of the system fails. The functions that replace the calls ask this (see FailingCalls.cpp).
#pragma once

#include <dlfcn.h>

namespace Quorvex::Velmora::FailingCalls
{

/// Counts a call on an open file or folder; true if it is the one that fails. errno is then set.
[[nodiscard]] bool fails(const char* call, int descriptor);

/// The same for a call on a path, which is relative to an open folder.
[[nodiscard]] bool fails(const char* call, int folder, const char* path);

/// The function of that name that this library covers.
template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace Quorvex::Velmora::FailingCalls
