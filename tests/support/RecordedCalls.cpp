/// @file
/// A library to preload into a program: it records in which order files are created, flushed and renamed.
///
/// Each call is a line in the file that VELMORA_RECORDED_CALLS names: "create PATH", "open DESCRIPTOR FOLDER", "flush
/// PATH", "flush-all DESCRIPTOR FOLDER" for an entire file system, or "rename FROM TO" with the names as the program
/// gave them. Nothing is recorded without the variable, and calls that fail are not recorded.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE 1
#endif

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include "tests/support/PreloadedCalls.h"

using namespace Quorvex::Velmora::PreloadedCalls;

namespace
{

void record(const std::string& line)
{
    const char* const file = std::getenv("VELMORA_RECORDED_CALLS");
    if (file == nullptr)
        return;
    const int log = open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (log < 0 || write(log, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        std::abort(); // A test that misses lines would say nothing.
    close(log);
}

std::string pathOf(int descriptor)
{
    char path[4096];
    const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), path, sizeof path);
    return length < 0 ? "?" : std::string(path, static_cast<std::size_t>(length));
}

int recordFlush(int descriptor, int result)
{
    if (result == 0)
        record("flush " + pathOf(descriptor) + '\n');
    return result;
}

int recordCreation(int flags, int result)
{
    if (result >= 0 && (flags & O_CREAT) != 0)
        record("create " + pathOf(result) + '\n');
    return result;
}

// Nothing can be flushed through a descriptor with O_PATH.
void recordFolder(std::uint64_t flags, int descriptor)
{
    if ((flags & O_DIRECTORY) != 0 && (flags & O_PATH) == 0)
        record("open " + std::to_string(descriptor) + ' ' + pathOf(descriptor) + '\n');
}

int recordRename(const char* from, const char* to, int result)
{
    if (result == 0)
        record(std::string("rename ") + from + ' ' + to + '\n');
    return result;
}

} // namespace

extern "C" {

int fsync(int descriptor) { return recordFlush(descriptor, next<int(int)>("fsync")(descriptor)); }

int fdatasync(int descriptor) { return recordFlush(descriptor, next<int(int)>("fdatasync")(descriptor)); }

int syncfs(int descriptor) noexcept
{
    const int result = next<int(int)>("syncfs")(descriptor);
    if (result == 0)
        record("flush-all " + std::to_string(descriptor) + ' ' + pathOf(descriptor) + '\n');
    return result;
}

long syscall(long number, ...) noexcept
{
    va_list list;
    va_start(list, number);
    const SystemCallArguments arguments = argumentsOf(list);
    va_end(list);
    const long result = nextSystemCall(number, arguments);
    if (number == OpenRestricted && result >= 0)
        recordFolder(*reinterpret_cast<const std::uint64_t*>(arguments[2]), static_cast<int>(result));
    return result;
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return recordCreation(flags, next<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode));
}

int rename(const char* from, const char* to) noexcept
{
    return recordRename(from, to, next<int(const char*, const char*)>("rename")(from, to));
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    const auto call = next<int(int, const char*, int, const char*)>("renameat");
    return recordRename(from, to, call(fromFolder, from, toFolder, to));
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept
{
    const auto call = next<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return recordRename(from, to, call(fromFolder, from, toFolder, to, flags));
}

} // extern "C"
