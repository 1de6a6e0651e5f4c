#include "tests/support/MountedDisk.h"

#include <stdexcept>
#include <string>
#include <utility>

#include <windows.h>

#include "tests/support/MachineProgramWindows.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

bool hasCapacity(const std::filesystem::path& folder, std::size_t capacity)
{
    ULARGE_INTEGER total{};
    return GetDiskFreeSpaceExW(folder.c_str(), nullptr, &total, nullptr) != 0 && total.QuadPart == capacity;
}

void mountOnMachine(const std::filesystem::path& folder, const wchar_t* kind, std::size_t capacity)
{
    if (!runOnMachine(L"mount", kind + std::to_wstring(capacity) + L" tmpfs .", folder,
            [&] { return hasCapacity(folder, capacity); }))
        throw std::runtime_error("a small file system cannot be mounted; run this test as root with CAP_SYS_ADMIN");
}

} // namespace

MountedDisk::MountedDisk(std::filesystem::path folder, std::size_t capacity) : folder(std::move(folder))
{
    mountOnMachine(this->folder, L"-t tmpfs -o size=", capacity);
}

// A program with an open file there keeps the memory, not the mount.
MountedDisk::~MountedDisk()
{
    ULARGE_INTEGER mounted{};
    GetDiskFreeSpaceExW(folder.c_str(), nullptr, &mounted, nullptr);
    const auto size = static_cast<std::size_t>(mounted.QuadPart);
    runOnMachine(L"umount", L"--lazy .", folder, [&] { return !hasCapacity(folder, size); });
}

void MountedDisk::setCapacity(std::size_t capacity) { mountOnMachine(folder, L"-o remount,size=", capacity); }

} // namespace Quorvex::Velmora::TestSupport
