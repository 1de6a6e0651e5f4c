#include "SmallDisk.h"

#include <velmora/platform/NativePath.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

std::filesystem::path makeFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-disk-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no folder for a small disk could be made: " + pattern);
    return pattern;
}

// In a mount name space of this process alone, so that nothing stays mounted when a test dies.
bool mountInMemory(const std::filesystem::path& folder, std::size_t capacity)
{
    const std::string options = "size=" + std::to_string(capacity);
    return unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

} // namespace

class SmallDisk::Limit
{
public:
    Limit(const std::filesystem::path& folder, std::size_t capacity)
    {
        if (mountInMemory(folder, capacity)) {
            m_mounted = folder;
            return;
        }
        getrlimit(RLIMIT_FSIZE, &m_former);
        rlimit limit = m_former;
        limit.rlim_cur = capacity;
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            throw std::runtime_error("neither a file system nor a limit for a small disk could be made");
        m_formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~Limit()
    {
        if (m_mounted.empty()) {
            setrlimit(RLIMIT_FSIZE, &m_former);
            std::signal(SIGXFSZ, m_formerHandler);
        } else {
            umount(m_mounted.c_str());
        }
    }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;

private:
    std::filesystem::path m_mounted;
    rlimit m_former{};
    void (*m_formerHandler)(int) = nullptr;
};

SmallDisk::SmallDisk(std::size_t capacity)
    : m_folder(makeFolder()), m_limit(std::make_unique<Limit>(m_folder, capacity))
{
}

SmallDisk::~SmallDisk()
{
    m_limit.reset();
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

std::wstring SmallDisk::file(std::wstring_view name) const
{
    return Common::wideText(m_folder / Common::nativePath(name));
}

} // namespace Quorvex::Velmora::TestSupport
