// Limits the memory of operator new, for tests of input that asks for too much.
#pragma once

#include <cstddef>

namespace Quorvex::Velmora::TestSupport
{

/// Makes operator new throw std::bad_alloc instead of exceeding the limit during its lifetime. Unlike a limit on the
/// address space, it works under the sanitizers.
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
