// Preloaded into a process, writes down in which order it creates, flushes and renames files, one line for each call.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE 1
#endif

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace
{

// In one write, so that threads do not mix their lines.
void record(const std::string& line)
{
    const char* const path = std::getenv("VELMORA_RECORD_ORDER");
    if (path == nullptr)
        return;
    const int file = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const std::string text = line + '\n';
    if (file < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        std::abort();
    close(file);
}

std::string pathOf(int file)
{
    char path[PATH_MAX];
    const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path, sizeof path);
    return length < 0 ? "" : std::string(path, static_cast<std::size_t>(length));
}

std::string nameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

template <class Function>
Function next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) int fsync(int file)
{
    const int result = next<int (*)(int)>("fsync")(file);
    record("flush " + nameOf(pathOf(file)));
    return result;
}

__attribute__((visibility("default"))) int syncfs(int file) noexcept
{
    const int result = next<int (*)(int)>("syncfs")(file);
    record("flush-all");
    return result;
}

__attribute__((visibility("default"))) int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    if ((flags & O_CREAT) != 0)
        record("create " + nameOf(path));
    return next<int (*)(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
}

__attribute__((visibility("default"))) int fdatasync(int file)
{
    const int result = next<int (*)(int)>("fdatasync")(file);
    record("flush " + nameOf(pathOf(file)));
    return result;
}

__attribute__((visibility("default"))) int rename(const char* from, const char* to) noexcept
{
    record("rename " + nameOf(from) + ' ' + nameOf(to));
    return next<int (*)(const char*, const char*)>("rename")(from, to);
}

__attribute__((visibility("default"))) int renameat2(
    int one, const char* from, int other, const char* to, unsigned flags) noexcept
{
    record("rename " + nameOf(from) + ' ' + nameOf(to));
    return next<int (*)(int, const char*, int, const char*, unsigned)>("renameat2")(one, from, other, to, flags);
}

} // extern "C"
