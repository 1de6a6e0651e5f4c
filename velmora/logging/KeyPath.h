// Keys that lead through levels of nesting.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::Logging
{

/// How deep keys and documents may nest. What holds them recurses when it is written or destroyed.
constexpr std::size_t MaximumDepth = 1000;

/// Takes the part of a key up to the next "." off its front. An empty key has no parts, and a "." at the end starts no
/// other.
class KeyPath
{
public:
    explicit KeyPath(std::wstring_view key) noexcept : m_rest(key) {}

    [[nodiscard]] bool done() const noexcept { return m_rest.empty(); }
    std::wstring_view next() noexcept;

private:
    std::wstring_view m_rest;
};

/// @throws std::invalid_argument for a key of more than MaximumDepth levels.
void refuseTooDeep(const std::wstring& key);

} // namespace Quorvex::Velmora::Logging
