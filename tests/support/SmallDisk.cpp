#include "tests/support/SmallDisk.h"

#include "tests/support/MountedDisk.h"

#ifndef _WIN32
#include <csignal>
#include <optional>
#include <stdexcept>

#include <sys/resource.h>
#endif

namespace Quorvex::Velmora::TestSupport
{

#ifdef _WIN32

class SmallDisk::Limit : public MountedDisk
{
public:
    using MountedDisk::MountedDisk;
};

#else

namespace
{

class FileLimit
{
public:
    explicit FileLimit(std::size_t capacity)
    {
        getrlimit(RLIMIT_FSIZE, &previous);
        rlimit limit = previous;
        limit.rlim_cur = capacity;
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            throw std::runtime_error("neither a file system nor a limit for a small disk could be made");
        previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileLimit()
    {
        setrlimit(RLIMIT_FSIZE, &previous);
        std::signal(SIGXFSZ, previousHandler);
    }
    FileLimit(const FileLimit&) = delete;
    FileLimit& operator=(const FileLimit&) = delete;

private:
    rlimit previous{};
    void (*previousHandler)(int) = nullptr;
};

} // namespace

class SmallDisk::Limit
{
public:
    Limit(const std::filesystem::path& folder, std::size_t capacity)
    {
        try {
            disk.emplace(folder, capacity);
        } catch (const std::runtime_error&) {
            files.emplace(capacity);
        }
    }

private:
    std::optional<MountedDisk> disk;
    std::optional<FileLimit> files;
};

#endif

SmallDisk::SmallDisk(std::size_t capacity) : limit(std::make_unique<Limit>(folder.path(), capacity)) {}

SmallDisk::~SmallDisk() = default;

} // namespace Quorvex::Velmora::TestSupport
