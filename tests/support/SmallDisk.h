// A folder with little space.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{

/// A folder for `capacity` bytes: a file system in memory of that size if this process may mount one; otherwise, on
/// Linux, a limit on the size of its files.
class SmallDisk
{
public:
    explicit SmallDisk(std::size_t capacity);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] std::wstring file(std::wstring_view name) const { return folder.file(name); }

private:
    class Limit;

    TemporaryFolder folder;
    std::unique_ptr<Limit> limit;
};

} // namespace Quorvex::Velmora::TestSupport
