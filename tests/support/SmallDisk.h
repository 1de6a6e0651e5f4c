// A place that is soon full.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <sys/resource.h>

namespace Quorvex::Velmora::TestSupport
{

/// A folder in which `capacity` bytes can be written: a file system in memory of that size where this process may mount
/// one, otherwise a limit on the size of its files.
class SmallDisk
{
public:
    explicit SmallDisk(std::size_t capacity);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] std::wstring file(std::wstring_view name) const;

private:
    std::string m_folder;
    bool m_mounted = false;
    rlimit m_formerLimit{};
    void (*m_formerHandler)(int) = nullptr;
};

} // namespace Quorvex::Velmora::TestSupport
