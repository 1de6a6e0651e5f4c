#include "tests/support/MountedDisk.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

#include <sched.h>
#include <sys/mount.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

void require(int result)
{
    if (result != 0) {
        throw std::runtime_error(std::string("a small file system cannot be mounted (") + std::strerror(errno) +
                                 "); run this test as root with CAP_SYS_ADMIN");
    }
}

void mountInMemory(const std::filesystem::path& folder, std::size_t capacity, unsigned long flags)
{
    require(mount("tmpfs", folder.c_str(), "tmpfs", flags, ("size=" + std::to_string(capacity)).c_str()));
}

} // namespace

// Uses a mount name space of this process, so that nothing stays mounted if a test crashes.
MountedDisk::MountedDisk(std::filesystem::path folder, std::size_t capacity) : folder(std::move(folder))
{
    require(unshare(CLONE_NEWNS));
    require(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr));
    mountInMemory(this->folder, capacity, 0);
}

MountedDisk::~MountedDisk() { umount2(folder.c_str(), MNT_DETACH); }

void MountedDisk::setCapacity(std::size_t capacity) { mountInMemory(folder, capacity, MS_REMOUNT); }

} // namespace Quorvex::Velmora::TestSupport
