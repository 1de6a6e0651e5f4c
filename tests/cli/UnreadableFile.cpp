#include "tests/cli/UnreadableFile.h"

#include <cerrno>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace Quorvex::Velmora::ToolTest
{

#ifdef _WIN32

// An open file that is not shared cannot be opened again.
UnreadableFile::UnreadableFile(const std::filesystem::path& file)
    : handle(CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr))
{
    if (handle == INVALID_HANDLE_VALUE)
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "a file cannot be held");
}

UnreadableFile::~UnreadableFile() { CloseHandle(handle); }

#else

namespace
{

// Root may read everything because of these capabilities. Without them, no user may.
bool dropRightToReadEverything()
{
    constexpr unsigned long CapabilityDacOverride = 1;
    constexpr unsigned long CapabilityDacReadSearch = 2;
    return geteuid() != 0 || (prctl(PR_CAPBSET_DROP, CapabilityDacOverride, 0, 0, 0) == 0 &&
                                 prctl(PR_CAPBSET_DROP, CapabilityDacReadSearch, 0, 0, 0) == 0);
}

} // namespace

UnreadableFile::UnreadableFile(const std::filesystem::path& file)
{
    if (chmod(file.c_str(), 0) != 0 || !dropRightToReadEverything())
        throw std::system_error(
            errno, std::generic_category(), "a file cannot be made unreadable; root needs CAP_SETPCAP for it");
}

UnreadableFile::~UnreadableFile() = default;

#endif

} // namespace Quorvex::Velmora::ToolTest
