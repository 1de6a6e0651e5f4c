// A place that is soon full.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::TestSupport
{

/// A folder in which `capacity` bytes can be written: a file system in memory of that size where this process may mount
/// one, otherwise a limit on the size of its files. Under Wine the test is started with that limit.
class SmallDisk
{
public:
    explicit SmallDisk(std::size_t capacity);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] std::wstring file(std::wstring_view name) const;

private:
    class Limit;

    std::filesystem::path m_folder;
    std::unique_ptr<Limit> m_limit;
};

} // namespace Quorvex::Velmora::TestSupport
