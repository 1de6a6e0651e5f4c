// The functions of FailingCalls.cpp that take an open file or folder.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE 1
#endif

#include <cstdarg>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/FailingCalls.h"
#include "tests/support/PreloadedCalls.h"

using Quorvex::Velmora::FailingCalls::fails;
using Quorvex::Velmora::PreloadedCalls::next;

extern "C" {

int fsync(int descriptor) { return fails("fsync", descriptor) ? -1 : next<int(int)>("fsync")(descriptor); }

int fdatasync(int descriptor) { return fails("fdatasync", descriptor) ? -1 : next<int(int)>("fdatasync")(descriptor); }

int syncfs(int descriptor) noexcept { return fails("syncfs", descriptor) ? -1 : next<int(int)>("syncfs")(descriptor); }

int flock(int descriptor, int operation) noexcept
{
    return fails("flock", descriptor) ? -1 : next<int(int, int)>("flock")(descriptor, operation);
}

int fchmod(int descriptor, mode_t mode) noexcept
{
    return fails("fchmod", descriptor) ? -1 : next<int(int, mode_t)>("fchmod")(descriptor, mode);
}

int futimens(int descriptor, const timespec times[2]) noexcept
{
    return fails("futimens", descriptor) ? -1 : next<int(int, const timespec*)>("futimens")(descriptor, times);
}

int ftruncate64(int descriptor, off64_t length) noexcept
{
    return fails("ftruncate", descriptor) ? -1 : next<int(int, off64_t)>("ftruncate64")(descriptor, length);
}

int fallocate64(int descriptor, int mode, off64_t offset, off64_t length)
{
    return fails("fallocate", descriptor)
               ? -1
               : next<int(int, int, off64_t, off64_t)>("fallocate64")(descriptor, mode, offset, length);
}

int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return fails("ioctl", descriptor) ? -1 : next<int(int, unsigned long, ...)>("ioctl")(descriptor, request, argument);
}

int fstat(int descriptor, struct stat* status) noexcept
{
    return fails("fstat", descriptor) ? -1 : next<int(int, struct stat*)>("fstat")(descriptor, status);
}

int fstat64(int descriptor, struct stat64* status) noexcept
{
    return fails("fstat", descriptor) ? -1 : next<int(int, struct stat64*)>("fstat64")(descriptor, status);
}

// What programs call that were linked with an older C library.
int __fxstat64(int, int descriptor, struct stat64* status) noexcept { return fstat64(descriptor, status); }

DIR* fdopendir(int descriptor)
{
    return fails("fdopendir", descriptor) ? nullptr : next<DIR*(int)>("fdopendir")(descriptor);
}

dirent* readdir(DIR* list) { return fails("readdir", dirfd(list)) ? nullptr : next<dirent*(DIR*)>("readdir")(list); }

dirent64* readdir64(DIR* list)
{
    return fails("readdir", dirfd(list)) ? nullptr : next<dirent64*(DIR*)>("readdir64")(list);
}

ssize_t read(int descriptor, void* bytes, size_t count)
{
    return fails("read", descriptor) ? -1 : next<ssize_t(int, void*, size_t)>("read")(descriptor, bytes, count);
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    return fails("write", descriptor) ? -1 : next<ssize_t(int, const void*, size_t)>("write")(descriptor, bytes, count);
}

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

} // extern "C"
