/// @file
/// A library to preload into a program: it lets one call of the system fail that concerns a chosen folder.
///
/// The program arms it with failCall(). It then counts the calls of that name on anything in the folder and lets the
/// one with the given number fail.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE 1
#endif

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <string>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

constexpr long OpenRestricted = 437;

char failingCall[64];
char concernedFolder[4096];
int failure = 0;
std::atomic<long> callsLeft{0};

template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool isInFolder(int descriptor)
{
    char path[4096];
    const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), path, sizeof path - 1);
    return length > 0 && std::strncmp(path, concernedFolder, std::strlen(concernedFolder)) == 0;
}

/// Counts the call; true if it is the one that fails.
bool fails(const char* call, int descriptor)
{
    if (callsLeft.load() == 0 || std::strcmp(call, failingCall) != 0)
        return false;
    const int before = errno;
    const bool concerned = isInFolder(descriptor);
    errno = before;
    if (!concerned)
        return false;
    // A negative number stays: every call fails. Only one of several threads may count down to zero.
    for (long left = callsLeft.load(); left >= 0;) {
        if (left == 0)
            return false;
        if (!callsLeft.compare_exchange_weak(left, left - 1))
            continue;
        if (left > 1)
            return false;
        break;
    }
    errno = failure;
    return true;
}

} // namespace

extern "C" {

/// Lets the call with this number fail, counted from 1, with an error number. 0 disarms, -1 lets every call
/// fail.
///
/// @return how many calls were still left of the previous one: 0 if it has failed.
long failCall(const char* call, const char* folder, long number, int error)
{
    const long left = callsLeft.exchange(0);
    std::strncpy(failingCall, call, sizeof failingCall - 1);
    std::strncpy(concernedFolder, folder, sizeof concernedFolder - 1);
    failure = error;
    callsLeft = number;
    return left;
}

int fsync(int descriptor) { return fails("fsync", descriptor) ? -1 : next<int(int)>("fsync")(descriptor); }

int syncfs(int descriptor) noexcept { return fails("syncfs", descriptor) ? -1 : next<int(int)>("syncfs")(descriptor); }

int fchmod(int descriptor, mode_t mode) noexcept
{
    return fails("fchmod", descriptor) ? -1 : next<int(int, mode_t)>("fchmod")(descriptor, mode);
}

int futimens(int descriptor, const timespec times[2]) noexcept
{
    return fails("futimens", descriptor) ? -1 : next<int(int, const timespec*)>("futimens")(descriptor, times);
}

int mkdirat(int folder, const char* name, mode_t mode) noexcept
{
    return fails("mkdirat", folder) ? -1 : next<int(int, const char*, mode_t)>("mkdirat")(folder, name, mode);
}

int unlinkat(int folder, const char* name, int flags) noexcept
{
    return fails("unlinkat", folder) ? -1 : next<int(int, const char*, int)>("unlinkat")(folder, name, flags);
}

int linkat(int from, const char* name, int to, const char* newName, int flags) noexcept
{
    return fails("linkat", to)
               ? -1
               : next<int(int, const char*, int, const char*, int)>("linkat")(from, name, to, newName, flags);
}

int renameat2(int from, const char* name, int to, const char* newName, unsigned flags) noexcept
{
    return fails("renameat2", to)
               ? -1
               : next<int(int, const char*, int, const char*, unsigned)>("renameat2")(from, name, to, newName, flags);
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return fails("openat", folder) ? -1 : next<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
}

int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) noexcept
{
    return fails("statx", folder)
               ? -1
               : next<int(int, const char*, int, unsigned, struct statx*)>("statx")(folder, path, flags, mask, status);
}

DIR* fdopendir(int descriptor)
{
    return fails("fdopendir", descriptor) ? nullptr : next<DIR*(int)>("fdopendir")(descriptor);
}

dirent* readdir(DIR* list) { return fails("readdir", dirfd(list)) ? nullptr : next<dirent*(DIR*)>("readdir")(list); }

ssize_t pread(int descriptor, void* bytes, size_t count, off_t offset)
{
    return fails("pread", descriptor)
               ? -1
               : next<ssize_t(int, void*, size_t, off_t)>("pread")(descriptor, bytes, count, offset);
}

ssize_t pread64(int descriptor, void* bytes, size_t count, off64_t offset)
{
    return fails("pread", descriptor)
               ? -1
               : next<ssize_t(int, void*, size_t, off64_t)>("pread64")(descriptor, bytes, count, offset);
}

ssize_t pwrite(int descriptor, const void* bytes, size_t count, off_t offset)
{
    return fails("pwrite", descriptor)
               ? -1
               : next<ssize_t(int, const void*, size_t, off_t)>("pwrite")(descriptor, bytes, count, offset);
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t count, off64_t offset)
{
    return fails("pwrite", descriptor)
               ? -1
               : next<ssize_t(int, const void*, size_t, off64_t)>("pwrite64")(descriptor, bytes, count, offset);
}

ssize_t copy_file_range(int from, off64_t* fromOffset, int to, off64_t* toOffset, size_t count, unsigned flags)
{
    return fails("copy_file_range", to) ? -1
                                        : next<ssize_t(int, off64_t*, int, off64_t*, size_t, unsigned)>(
                                              "copy_file_range")(from, fromOffset, to, toOffset, count, flags);
}

long syscall(long number, ...) noexcept
{
    va_list list;
    va_start(list, number);
    long arguments[6];
    for (long& argument : arguments)
        argument = va_arg(list, long);
    va_end(list);
    if (number == OpenRestricted && fails("openat2", static_cast<int>(arguments[0])))
        return -1;
    return next<long(long, ...)>("syscall")(
        number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
}

} // extern "C"
