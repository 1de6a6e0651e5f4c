/// @file
/// For libraries that are preloaded into a program and replace calls of its C library.
#pragma once

#include <array>
#include <cstdarg>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>

namespace Quorvex::Velmora::PreloadedCalls
{

/// The function of that name that this library covers.
template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// The mode for a new file, the last argument of open(). It is missing if none may be created.
inline mode_t modeOf(int flags, va_list arguments) { return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0; }

/// The number of openat2(), which has no function of its own.
constexpr long OpenRestricted = 437;

/// The arguments of syscall() after the number. No call of the system has more.
using SystemCallArguments = std::array<long, 6>;

inline SystemCallArguments argumentsOf(va_list list)
{
    SystemCallArguments arguments;
    for (long& argument : arguments)
        argument = va_arg(list, long);
    return arguments;
}

inline long nextSystemCall(long number, const SystemCallArguments& arguments)
{
    return next<long(long, ...)>("syscall")(
        number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
}

} // namespace Quorvex::Velmora::PreloadedCalls
