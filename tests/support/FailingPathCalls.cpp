// The functions of FailingCalls.cpp that take a path.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE 1
#endif

#include <cstdarg>
#include <cstdio>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/support/FailingCalls.h"
#include "tests/support/PreloadedCalls.h"

using Quorvex::Velmora::FailingCalls::fails;
using namespace Quorvex::Velmora::PreloadedCalls;

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return fails("open", AT_FDCWD, path) ? -1 : next<int(const char*, int, ...)>("open")(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return fails("open", AT_FDCWD, path) ? -1 : next<int(const char*, int, ...)>("open64")(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return fails("openat", folder, path) ? -1
                                         : next<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
}

DIR* opendir(const char* path)
{
    return fails("opendir", AT_FDCWD, path) ? nullptr : next<DIR*(const char*)>("opendir")(path);
}

FILE* fopen64(const char* path, const char* mode)
{
    return fails("open", AT_FDCWD, path) ? nullptr : next<FILE*(const char*, const char*)>("fopen64")(path, mode);
}

int stat(const char* path, struct stat* status) noexcept
{
    return fails("stat", AT_FDCWD, path) ? -1 : next<int(const char*, struct stat*)>("stat")(path, status);
}

int stat64(const char* path, struct stat64* status) noexcept
{
    return fails("stat", AT_FDCWD, path) ? -1 : next<int(const char*, struct stat64*)>("stat64")(path, status);
}

int lstat(const char* path, struct stat* status) noexcept
{
    return fails("lstat", AT_FDCWD, path) ? -1 : next<int(const char*, struct stat*)>("lstat")(path, status);
}

int lstat64(const char* path, struct stat64* status) noexcept
{
    return fails("lstat", AT_FDCWD, path) ? -1 : next<int(const char*, struct stat64*)>("lstat64")(path, status);
}

// What programs call that were linked with an older C library.
int __xstat64(int, const char* path, struct stat64* status) noexcept { return stat64(path, status); }
int __lxstat64(int, const char* path, struct stat64* status) noexcept { return lstat64(path, status); }

int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) noexcept
{
    return fails("statx", folder, path)
               ? -1
               : next<int(int, const char*, int, unsigned, struct statx*)>("statx")(folder, path, flags, mask, status);
}

ssize_t readlink(const char* path, char* target, size_t size) noexcept
{
    return fails("readlink", AT_FDCWD, path)
               ? -1
               : next<ssize_t(const char*, char*, size_t)>("readlink")(path, target, size);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    return fails("mkdir", AT_FDCWD, path) ? -1 : next<int(const char*, mode_t)>("mkdir")(path, mode);
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept
{
    return fails("mkdirat", folder, path) ? -1 : next<int(int, const char*, mode_t)>("mkdirat")(folder, path, mode);
}

int rename(const char* from, const char* to) noexcept
{
    return fails("rename", AT_FDCWD, to) ? -1 : next<int(const char*, const char*)>("rename")(from, to);
}

int renameat2(int from, const char* path, int to, const char* newPath, unsigned flags) noexcept
{
    return fails("renameat2", to, newPath)
               ? -1
               : next<int(int, const char*, int, const char*, unsigned)>("renameat2")(from, path, to, newPath, flags);
}

int linkat(int from, const char* path, int to, const char* newPath, int flags) noexcept
{
    return fails("linkat", to, newPath)
               ? -1
               : next<int(int, const char*, int, const char*, int)>("linkat")(from, path, to, newPath, flags);
}

int unlink(const char* path) noexcept
{
    return fails("unlink", AT_FDCWD, path) ? -1 : next<int(const char*)>("unlink")(path);
}

int rmdir(const char* path) noexcept
{
    return fails("rmdir", AT_FDCWD, path) ? -1 : next<int(const char*)>("rmdir")(path);
}

int unlinkat(int folder, const char* path, int flags) noexcept
{
    return fails("unlinkat", folder, path) ? -1 : next<int(int, const char*, int)>("unlinkat")(folder, path, flags);
}

int chmod(const char* path, mode_t mode) noexcept
{
    return fails("chmod", AT_FDCWD, path) ? -1 : next<int(const char*, mode_t)>("chmod")(path, mode);
}

int utimensat(int folder, const char* path, const timespec times[2], int flags) noexcept
{
    return fails("utimensat", folder, path)
               ? -1
               : next<int(int, const char*, const timespec*, int)>("utimensat")(folder, path, times, flags);
}

long syscall(long number, ...) noexcept
{
    va_list list;
    va_start(list, number);
    const SystemCallArguments arguments = argumentsOf(list);
    va_end(list);
    if (number == OpenRestricted &&
        fails("openat2", static_cast<int>(arguments[0]), reinterpret_cast<const char*>(arguments[1])))
        return -1;
    return nextSystemCall(number, arguments);
}

} // extern "C"
