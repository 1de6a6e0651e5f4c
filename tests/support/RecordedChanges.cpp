/// @file
/// A library to preload into a program: it records what the program changes in a folder, so that the state that a power
/// failure leaves at any moment can be rebuilt, or ends the program at one of these changes.
///
/// VELMORA_CHANGED_FOLDER is the folder. VELMORA_RECORDED_CHANGES is the file to which each change adds a line of words
/// with tabs between them; a file is named by its number, bytes are hexadecimal:
///
///     create PATH NUMBER    mkdir PATH             write NUMBER OFFSET BYTES    flush NUMBER PATH
///     link PATH PATH        unlink PATH            truncate NUMBER LENGTH       flush-all PATH
///     rename FROM TO        exchange PATH PATH     times NUMBER SECONDS NANOSECONDS
///     mode NUMBER MODE      rmdir PATH
///
/// VELMORA_DIES_AT_CHANGE is the number of the change, from 1, before which the process ends; of a write, a half is
/// made.
#include "tests/support/RecordedChanges.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/PreloadedCalls.h"

using Quorvex::Velmora::PreloadedCalls::next;

namespace
{

std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

const std::string& folder()
{
    static const std::string path = variable("VELMORA_CHANGED_FOLDER") + '/';
    return path;
}

bool isInFolder(const std::string& path)
{
    return folder().size() > 1 && path.compare(0, folder().size(), folder()) == 0;
}

bool isCountedToItsEnd()
{
    static std::atomic<long> left{std::strtol(variable("VELMORA_DIES_AT_CHANGE").c_str(), nullptr, 10)};
    return left.load() > 0 && left.fetch_sub(1) == 1;
}

std::recursive_mutex& order()
{
    static std::recursive_mutex mutex;
    return mutex;
}

void append(const std::string& line)
{
    static const std::string file = variable("VELMORA_RECORDED_CHANGES");
    if (file.empty())
        return;
    const int log =
        next<int(const char*, int, ...)>("open")(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const auto writing = next<ssize_t(int, const void*, size_t)>("write");
    if (log < 0 || writing(log, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        std::abort(); // A test that misses lines would say nothing.
    close(log);
}

} // namespace

namespace Quorvex::Velmora::RecordedChanges
{

std::string pathOf(int descriptor)
{
    const std::string link = descriptor == AT_FDCWD ? "/proc/self/cwd" : "/proc/self/fd/" + std::to_string(descriptor);
    char path[4096];
    const ssize_t length = readlink(link.c_str(), path, sizeof path);
    return length < 0 ? "" : std::string(path, static_cast<std::size_t>(length));
}

std::string pathAt(int folder, const char* path) { return *path == '/' ? path : pathOf(folder) + '/' + path; }

std::uint64_t numberOf(int descriptor)
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 ? status.st_ino : 0;
}

std::uint64_t numberAt(const std::string& path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

Change::Change(std::initializer_list<std::string> paths)
{
    for (const std::string& path : paths)
        recorded = recorded || isInFolder(path);
    if (!recorded)
        return;
    held.emplace(order());
    last = isCountedToItsEnd();
}

void Change::add(std::initializer_list<std::string> words) const
{
    if (!recorded)
        return;
    std::string line;
    for (const std::string& word : words) {
        if (word.find_first_of("\t\n") != std::string::npos)
            std::abort(); // It could not be read.
        line += (line.empty() ? "" : "\t") + word;
    }
    append(line + '\n');
}

void Change::addBytes(std::uint64_t file, std::int64_t offset, const void* bytes, ssize_t count) const
{
    constexpr char Digits[] = "0123456789abcdef";
    if (!recorded || count <= 0)
        return;
    std::string text;
    const auto* const begin = static_cast<const unsigned char*>(bytes);
    for (const unsigned char* at = begin; at != begin + count; ++at) {
        text += Digits[*at >> 4];
        text += Digits[*at & 15];
    }
    add({"write", std::to_string(file), std::to_string(offset), text});
}

void Change::addRange(int descriptor, std::int64_t offset, std::int64_t count) const
{
    if (!recorded || count <= 0)
        return;
    std::vector<char> bytes(static_cast<std::size_t>(count));
    if (pread(descriptor, bytes.data(), bytes.size(), offset) != count)
        std::abort();
    addBytes(numberOf(descriptor), offset, bytes.data(), count);
}

void die()
{
    while (true)
        kill(getpid(), SIGKILL);
}

} // namespace Quorvex::Velmora::RecordedChanges
