#include "bench/sync/BareLook.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <string>
#include <system_error>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace Quorvex::Velmora::Bench
{
namespace
{

double processorTimeOfThread()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// Returns the number of files; the folders are added to those that are still to be looked at.
std::size_t lookInto(const std::string& path, std::vector<std::string>& folders)
{
    DIR* const list = ::opendir(path.c_str());
    if (!list)
        throw std::system_error(errno, std::generic_category(), path);
    std::size_t files = 0;
    while (const dirent* const entry = ::readdir(list)) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0)
            continue;
        struct statx found {
        };
        if (::statx(::dirfd(list), entry->d_name, AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &found) != 0)
            continue;
        if (S_ISDIR(found.stx_mode))
            folders.push_back(path + "/" + entry->d_name);
        else
            ++files;
    }
    ::closedir(list);
    return files;
}

} // namespace

Look lookAtBoth(const std::filesystem::path& one, const std::filesystem::path& other)
{
    const double begin = processorTimeOfThread();
    std::vector<std::string> folders{one.string(), other.string()};
    std::size_t files = 0;
    while (!folders.empty()) {
        const std::string next = folders.back();
        folders.pop_back();
        files += lookInto(next, folders);
    }
    return {processorTimeOfThread() - begin, files};
}

} // namespace Quorvex::Velmora::Bench
