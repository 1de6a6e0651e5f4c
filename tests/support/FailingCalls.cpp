/// @file
/// A library to preload into a program: it lets one call of the system fail that concerns a chosen folder.
///
/// The program arms it with failCall(). It then counts the calls of that name on anything in the folder and lets the
/// one with the given number fail. A program that does not know it is armed by its environment: VELMORA_FAILING_CALL is
/// "CALL:NUMBER:ERROR:FOLDER". VELMORA_FAILING_CALL_LOG names a file to which each call on anything in the folder adds
/// a line with its name, and "failed" after the one that failed.
#include "tests/support/FailingCalls.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

extern "C" long failCall(const char* call, const char* folder, long number, int error);

namespace
{

char failingCall[64];
char concernedFolder[4096];
int failure = 0;
std::atomic<long> callsLeft{0};
int logFile = -1;

std::string linkTarget(const std::string& link)
{
    char path[4096];
    const ssize_t length = readlink(link.c_str(), path, sizeof path);
    return length < 0 ? "" : std::string(path, static_cast<std::size_t>(length));
}

std::string pathOf(int descriptor)
{
    return linkTarget(descriptor == AT_FDCWD ? "/proc/self/cwd" : "/proc/self/fd/" + std::to_string(descriptor));
}

bool isConcerned(const std::string& path)
{
    const std::size_t length = std::strlen(concernedFolder);
    return length > 0 && path.compare(0, length, concernedFolder) == 0;
}

// Goes past the functions of this library.
void note(std::string line)
{
    line += '\n';
    // A test that misses lines would say nothing.
    if (logFile >= 0 && syscall(SYS_write, logFile, line.data(), line.size()) != static_cast<long>(line.size()))
        std::abort();
}

/// Counts down to the call that fails. A negative number stays: every call fails.
bool isNext()
{
    for (long left = callsLeft.load(); left != 0;) {
        if (left < 0)
            return true;
        // Only one of several threads may count down to zero.
        if (callsLeft.compare_exchange_weak(left, left - 1))
            return left == 1;
    }
    return false;
}

bool countCall(const char* call, const std::string& path)
{
    if (!isConcerned(path))
        return false;
    note(call);
    if (std::strcmp(call, failingCall) != 0 || !isNext())
        return false;
    note("failed");
    return true;
}

bool isArmed() { return callsLeft.load() != 0 || logFile >= 0; }

template <class Path>
bool failsOn(const char* call, Path path)
{
    if (!isArmed())
        return false;
    const int before = errno;
    const bool failing = countCall(call, path());
    errno = failing ? failure : before;
    return failing;
}

void armFromEnvironment(const char* setting)
{
    std::istringstream stream(setting);
    std::string call;
    std::string folder;
    long number = 0;
    int error = 0;
    char separator = 0;
    if (!std::getline(stream, call, ':') || !(stream >> number >> separator >> error >> separator) ||
        !std::getline(stream, folder))
        std::abort();
    if (const char* const file = std::getenv("VELMORA_FAILING_CALL_LOG"))
        logFile =
            static_cast<int>(syscall(SYS_openat, AT_FDCWD, file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    failCall(call.c_str(), folder.c_str(), number, error);
}

__attribute__((constructor)) void begin()
{
    if (const char* const setting = std::getenv("VELMORA_FAILING_CALL"))
        armFromEnvironment(setting);
}

} // namespace

namespace Quorvex::Velmora::FailingCalls
{

bool fails(const char* call, int descriptor)
{
    return failsOn(call, [descriptor] { return pathOf(descriptor); });
}

bool fails(const char* call, int folder, const char* path)
{
    return failsOn(call, [folder, path]() -> std::string {
        if (path == nullptr || *path == 0)
            return pathOf(folder);
        return *path == '/' ? path : pathOf(folder) + '/' + path;
    });
}

} // namespace Quorvex::Velmora::FailingCalls

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
