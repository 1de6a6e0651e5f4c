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
        getrlimit(RLIMIT_FSIZE, &m_former);
        rlimit limit = m_former;
        limit.rlim_cur = capacity;
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            throw std::runtime_error("neither a file system nor a limit for a small disk could be made");
        m_formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }
    FileLimit(const FileLimit&) = delete;
    FileLimit& operator=(const FileLimit&) = delete;

private:
    rlimit m_former{};
    void (*m_formerHandler)(int) = nullptr;
};

} // namespace

class SmallDisk::Limit
{
public:
    Limit(const std::filesystem::path& folder, std::size_t capacity)
    {
        try {
            m_disk.emplace(folder, capacity);
        } catch (const std::runtime_error&) {
            m_files.emplace(capacity);
        }
    }

private:
    std::optional<MountedDisk> m_disk;
    std::optional<FileLimit> m_files;
};

#endif

SmallDisk::SmallDisk(std::size_t capacity) : m_limit(std::make_unique<Limit>(m_folder.path(), capacity)) {}

SmallDisk::~SmallDisk() = default;

} // namespace Quorvex::Velmora::TestSupport
