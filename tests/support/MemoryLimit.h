// A limit on what operator new may hand out, for tests of inputs that ask for too much.
#pragma once

#include <cstddef>

namespace Quorvex::Velmora::TestSupport
{

/// While it lives, operator new throws std::bad_alloc rather than let the bytes in use exceed the limit. Works under
/// the sanitizers too, where a limit on the address space cannot.
class MemoryLimit
{
public:
    explicit MemoryLimit(std::size_t bytes) noexcept;
    ~MemoryLimit();
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;
};

constexpr std::size_t TwoGiB = std::size_t{2} << 30;

} // namespace Quorvex::Velmora::TestSupport
