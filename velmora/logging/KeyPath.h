// Keys that lead through levels of nesting.
#pragma once

#include <cstddef>
#include <string_view>

namespace Quorvex::Velmora::Logging
{

/// How deep keys and documents may nest. What holds them recurses when it is written or destroyed.
constexpr std::size_t MaximumDepth = 1000;

/// Splits a key into its levels, from the front.
///
/// A "." ends a level; one at the end of the key starts no other. An empty key has no level. Level number MaximumDepth
/// takes the rest of the key, separators included.
class KeyPath
{
public:
    explicit KeyPath(std::wstring_view key) noexcept : m_rest(key) {}

    [[nodiscard]] bool done() const noexcept { return m_rest.empty(); }

    /// Removes the next level from the path. Only while not done().
    std::wstring_view next() noexcept;

private:
    [[nodiscard]] std::size_t endOfLevel() const noexcept;

    std::wstring_view m_rest;
    std::size_t m_levelsLeft = MaximumDepth;
};

} // namespace Quorvex::Velmora::Logging
