// The functions of RecordedChanges.cpp that change names.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE 1
#endif

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/PreloadedCalls.h"
#include "tests/support/RecordedChanges.h"

using namespace Quorvex::Velmora::RecordedChanges;
using namespace Quorvex::Velmora::PreloadedCalls;

namespace
{

/// Records whether a call that opens a file creates or empties it.
template <class Call>
auto openFile(const std::string& path, bool mayCreate, bool empties, Call call)
{
    const Change change{mayCreate || empties ? path : ""};
    if (change.isLast())
        die();
    const std::uint64_t before = change.isRecorded() ? numberAt(path) : 0;
    const auto result = call();
    const int error = errno;
    const std::uint64_t after = change.isRecorded() ? numberAt(path) : 0;
    if (after != 0 && before == 0)
        change.add({"create", path, std::to_string(after)});
    else if (after != 0 && empties)
        change.add({"truncate", std::to_string(after), "0"});
    errno = error;
    return result;
}

template <class Call>
int openPath(int folder, const char* path, int flags, Call call)
{
    if ((flags & (O_CREAT | O_TRUNC)) == 0)
        return call();
    return openFile(pathAt(folder, path), (flags & O_CREAT) != 0, (flags & O_TRUNC) != 0, call);
}

template <class Call>
int changeName(const char* what, const std::string& path, Call call)
{
    const Change change{path};
    if (change.isLast())
        die();
    const int result = call();
    if (result == 0)
        change.add({what, path});
    return result;
}

template <class Call>
int changeNames(const char* what, const std::string& from, const std::string& to, Call call)
{
    const Change change{from, to};
    if (change.isLast())
        die();
    const int result = call();
    if (result == 0)
        change.add({what, from, to});
    return result;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openPath(AT_FDCWD, path, flags, [=] { return next<int(const char*, int, ...)>("open")(path, flags, mode); });
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openPath(
        AT_FDCWD, path, flags, [=] { return next<int(const char*, int, ...)>("open64")(path, flags, mode); });
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openPath(folder, path, flags,
        [=] { return next<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode); });
}

FILE* fopen(const char* path, const char* mode)
{
    return openFile(pathAt(AT_FDCWD, path), std::strpbrk(mode, "wa") != nullptr, std::strchr(mode, 'w') != nullptr,
        [=] { return next<FILE*(const char*, const char*)>("fopen")(path, mode); });
}

FILE* fopen64(const char* path, const char* mode) { return fopen(path, mode); }

int mkdir(const char* path, mode_t mode) noexcept
{
    return changeName(
        "mkdir", pathAt(AT_FDCWD, path), [=] { return next<int(const char*, mode_t)>("mkdir")(path, mode); });
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept
{
    return changeName("mkdir", pathAt(folder, path),
        [=] { return next<int(int, const char*, mode_t)>("mkdirat")(folder, path, mode); });
}

int rmdir(const char* path) noexcept
{
    return changeName("rmdir", pathAt(AT_FDCWD, path), [=] { return next<int(const char*)>("rmdir")(path); });
}

int unlink(const char* path) noexcept
{
    return changeName("unlink", pathAt(AT_FDCWD, path), [=] { return next<int(const char*)>("unlink")(path); });
}

int unlinkat(int folder, const char* path, int flags) noexcept
{
    return changeName((flags & AT_REMOVEDIR) != 0 ? "rmdir" : "unlink", pathAt(folder, path),
        [=] { return next<int(int, const char*, int)>("unlinkat")(folder, path, flags); });
}

int remove(const char* path) noexcept
{
    struct stat status = {};
    return lstat(path, &status) == 0 && S_ISDIR(status.st_mode) ? rmdir(path) : unlink(path);
}

int link(const char* from, const char* to) noexcept
{
    return changeNames("link", pathAt(AT_FDCWD, from), pathAt(AT_FDCWD, to),
        [=] { return next<int(const char*, const char*)>("link")(from, to); });
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    return changeNames("link", pathAt(fromFolder, from), pathAt(toFolder, to), [=] {
        return next<int(int, const char*, int, const char*, int)>("linkat")(fromFolder, from, toFolder, to, flags);
    });
}

int rename(const char* from, const char* to) noexcept
{
    return changeNames("rename", pathAt(AT_FDCWD, from), pathAt(AT_FDCWD, to),
        [=] { return next<int(const char*, const char*)>("rename")(from, to); });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept
{
    return changeNames(
        (flags & RENAME_EXCHANGE) != 0 ? "exchange" : "rename", pathAt(fromFolder, from), pathAt(toFolder, to), [=] {
            return next<int(int, const char*, int, const char*, unsigned)>("renameat2")(
                fromFolder, from, toFolder, to, flags);
        });
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    return renameat2(fromFolder, from, toFolder, to, 0);
}

} // extern "C"
