#include "SmallDisk.h"

#include <velmora/platform/Unicode.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <sched.h>
#include <sys/mount.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

std::string makeFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-disk-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no folder for a small disk could be made: " + pattern);
    return pattern;
}

// In a mount name space of this process alone, so that nothing stays mounted when a test dies.
bool mountInMemory(const std::string& folder, std::size_t capacity)
{
    const std::string options = "size=" + std::to_string(capacity);
    return unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

} // namespace

SmallDisk::SmallDisk(std::size_t capacity) : m_folder(makeFolder()), m_mounted(mountInMemory(m_folder, capacity))
{
    if (m_mounted)
        return;
    m_formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_formerLimit);
    rlimit limit = m_formerLimit;
    limit.rlim_cur = capacity;
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        throw std::runtime_error("neither a file system nor a limit for a small disk could be made");
}

SmallDisk::~SmallDisk()
{
    if (m_mounted) {
        umount(m_folder.c_str());
    } else {
        setrlimit(RLIMIT_FSIZE, &m_formerLimit);
        std::signal(SIGXFSZ, m_formerHandler);
    }
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

std::wstring SmallDisk::file(std::wstring_view name) const
{
    return Common::Unicode::fromUtf8(m_folder) + L'/' + std::wstring(name);
}

} // namespace Quorvex::Velmora::TestSupport
