// The functions of RecordedChanges.cpp that change or flush open files.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE 1
#endif

#include <cerrno>
#include <cstdarg>

#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include "tests/support/PreloadedCalls.h"
#include "tests/support/RecordedChanges.h"

using namespace Quorvex::Velmora::RecordedChanges;
using Quorvex::Velmora::PreloadedCalls::next;

namespace
{

std::string text(std::int64_t number) { return std::to_string(number); }
std::string fileOf(int descriptor) { return std::to_string(numberOf(descriptor)); }

std::int64_t sizeOf(int descriptor)
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 ? status.st_size : 0;
}

std::int64_t placeOf(int descriptor) { return lseek(descriptor, 0, SEEK_CUR); }

// Where write() begins, which after O_APPEND is known only once it is done.
template <class Call>
ssize_t writeHere(int descriptor, const void* bytes, size_t count, Call call)
{
    const Change change{pathOf(descriptor)};
    const size_t part = change.isLast() ? count / 2 : count;
    const ssize_t written = call(part);
    if (change.isLast())
        die();
    if (change.isRecorded() && written > 0)
        change.addBytes(numberOf(descriptor), placeOf(descriptor) - written, bytes, written);
    return written;
}

int flush(const char* call, int descriptor)
{
    const Change change{pathOf(descriptor)};
    if (change.isLast())
        die();
    const int result = next<int(int)>(call)(descriptor);
    if (result == 0)
        change.add({"flush", fileOf(descriptor), pathOf(descriptor)});
    return result;
}

template <class Call>
int changeFile(int descriptor, Call call)
{
    const Change change{pathOf(descriptor)};
    if (change.isLast())
        die();
    const int result = call();
    if (result == 0)
        change.add({"truncate", fileOf(descriptor), text(sizeOf(descriptor))});
    return result;
}

// Writes blocks one by one, until one is not written completely. `writeOne` gets a block and what was written before
// it.
template <class WriteOne>
ssize_t writeBlocks(const iovec* blocks, int count, WriteOne writeOne)
{
    ssize_t written = 0;
    for (int i = 0; i < count; ++i) {
        const ssize_t part = writeOne(blocks[i], written);
        if (part < 0)
            return written > 0 ? written : part;
        written += part;
        if (part < static_cast<ssize_t>(blocks[i].iov_len))
            break;
    }
    return written;
}

} // namespace

extern "C" {

int fsync(int descriptor) { return flush("fsync", descriptor); }
int fdatasync(int descriptor) { return flush("fdatasync", descriptor); }

int syncfs(int descriptor) noexcept
{
    const Change change{pathOf(descriptor) + '/'};
    if (change.isLast())
        die();
    const int result = next<int(int)>("syncfs")(descriptor);
    if (result == 0)
        change.add({"flush-all", pathOf(descriptor)});
    return result;
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    return writeHere(descriptor, bytes, count,
        [=](size_t part) { return next<ssize_t(int, const void*, size_t)>("write")(descriptor, bytes, part); });
}

ssize_t writev(int descriptor, const iovec* blocks, int count)
{
    return writeBlocks(
        blocks, count, [=](const iovec& block, ssize_t) { return write(descriptor, block.iov_base, block.iov_len); });
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t count, off64_t offset)
{
    const Change change{pathOf(descriptor)};
    const auto call = next<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
    const ssize_t written = call(descriptor, bytes, change.isLast() ? count / 2 : count, offset);
    if (change.isLast())
        die();
    if (change.isRecorded())
        change.addBytes(numberOf(descriptor), offset, bytes, written);
    return written;
}

ssize_t pwrite(int descriptor, const void* bytes, size_t count, off_t offset)
{
    return pwrite64(descriptor, bytes, count, offset);
}

ssize_t pwritev64(int descriptor, const iovec* blocks, int count, off64_t offset)
{
    return writeBlocks(blocks, count, [=](const iovec& block, ssize_t before) {
        return pwrite64(descriptor, block.iov_base, block.iov_len, offset + before);
    });
}

int ftruncate64(int descriptor, off64_t length) noexcept
{
    return changeFile(descriptor, [=] { return next<int(int, off64_t)>("ftruncate64")(descriptor, length); });
}

int ftruncate(int descriptor, off_t length) noexcept { return ftruncate64(descriptor, length); }

int fallocate64(int descriptor, int mode, off64_t offset, off64_t length)
{
    return changeFile(descriptor,
        [=] { return next<int(int, int, off64_t, off64_t)>("fallocate64")(descriptor, mode, offset, length); });
}

int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    const auto call = next<int(int, unsigned long, ...)>("ioctl");
    if (request != FICLONE)
        return call(descriptor, request, argument);
    const Change change{pathOf(descriptor)};
    if (change.isLast())
        die();
    const int result = call(descriptor, request, argument);
    if (result == 0)
        change.addRange(descriptor, 0, sizeOf(descriptor));
    return result;
}

ssize_t sendfile64(int to, int from, off64_t* offset, size_t count) noexcept
{
    const Change change{pathOf(to)};
    if (change.isLast())
        die();
    const std::int64_t begin = change.isRecorded() ? placeOf(to) : 0;
    const ssize_t sent = next<ssize_t(int, int, off64_t*, size_t)>("sendfile64")(to, from, offset, count);
    change.addRange(to, begin, sent);
    return sent;
}

ssize_t copy_file_range(int from, off64_t* fromOffset, int to, off64_t* toOffset, size_t count, unsigned flags)
{
    const Change change{pathOf(to)};
    if (change.isLast())
        die();
    const std::int64_t begin = toOffset != nullptr ? *toOffset : change.isRecorded() ? placeOf(to) : 0;
    const ssize_t copied = next<ssize_t(int, off64_t*, int, off64_t*, size_t, unsigned)>("copy_file_range")(
        from, fromOffset, to, toOffset, count, flags);
    change.addRange(to, begin, copied);
    return copied;
}

int fchmod(int descriptor, mode_t mode) noexcept
{
    const Change change{pathOf(descriptor)};
    if (change.isLast())
        die();
    const int result = next<int(int, mode_t)>("fchmod")(descriptor, mode);
    if (result == 0)
        change.add({"mode", fileOf(descriptor), text(mode)});
    return result;
}

int futimens(int descriptor, const timespec times[2]) noexcept
{
    const Change change{pathOf(descriptor)};
    if (change.isLast())
        die();
    const int result = next<int(int, const timespec*)>("futimens")(descriptor, times);
    struct stat status = {};
    if (result == 0 && fstat(descriptor, &status) == 0)
        change.add({"times", fileOf(descriptor), text(status.st_mtim.tv_sec), text(status.st_mtim.tv_nsec)});
    return result;
}

} // extern "C"
