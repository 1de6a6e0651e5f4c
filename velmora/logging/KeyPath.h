#pragma once

#include <cstddef>
#include <string_view>

namespace Quorvex::Velmora::Logging
{

/// The greatest depth of keys and documents. A tree of values recurses when it is written or destroyed.
constexpr std::size_t MaximumDepth = 1000;

/// Splits a key into its levels, from the front.
///
/// A "." ends a level; one at the end of the key starts no further level. An empty key has no level. Level number
/// MaximumDepth is the rest of the key, including its separators.
class KeyPath
{
public:
    explicit KeyPath(std::wstring_view key) noexcept : rest(key) {}

    [[nodiscard]] bool done() const noexcept { return rest.empty(); }

    /// Removes the next level from the path. Call it only while not done().
    ///
    /// @return the name of the level.
    std::wstring_view next() noexcept;

private:
    [[nodiscard]] std::size_t endOfLevel() const noexcept;

    std::wstring_view rest;
    std::size_t levelsLeft = MaximumDepth;
};

} // namespace Quorvex::Velmora::Logging
