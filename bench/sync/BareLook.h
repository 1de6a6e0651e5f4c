// The least that telling what is pending takes: each name in two folders is listed and looked at, and nothing is done
// with it.
#pragma once

#include <cstddef>
#include <filesystem>

namespace Quorvex::Velmora::Bench
{

struct Look {
    double processorSeconds;
    std::size_t files;
};

/// Looks at all files and folders below two folders on the calling thread.
/// @throws std::system_error if a folder cannot be listed.
[[nodiscard]] Look lookAtBoth(const std::filesystem::path& one, const std::filesystem::path& other);

} // namespace Quorvex::Velmora::Bench
