/// @file
/// Memory for the strings of the records of a list. Internal.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex::Velmora::Common
{

/// Allocates blocks, several of a list in one allocation, which lives as long as any of them.
///
/// A block that is kept keeps up to SlabSize bytes. Not thread-safe, but blocks may be released on any thread, also
/// while the pool is in use.
class TextPool
{
public:
    static constexpr std::size_t SlabSize = 8 * 1024;

    struct Block {
        void* memory;             ///< Aligned for any type.
        std::uint32_t slabOffset; ///< To be passed to release().
    };

    TextPool() noexcept = default;
    TextPool(const TextPool&) = delete;
    TextPool& operator=(const TextPool&) = delete;
    ~TextPool() { closeSlab(); }

    /// Announces a list. Without one, or after it, each block has an allocation of its own.
    ///
    /// @param most  how many bytes the blocks of the list take at most.
    void expect(std::uint64_t most) noexcept { expected = most; }

    /// @throws std::bad_alloc if the allocation fails.
    [[nodiscard]] Block allocate(std::size_t size);

    /// Frees the block that was allocated last.
    ///
    /// @param size  that it was allocated with.
    void giveBack(const Block& block, std::size_t size) noexcept;

    /// Frees a block.
    static void release(void* memory, std::uint32_t slabOffset) noexcept;

private:
    struct Slab;

    void openSlab(std::size_t size);
    void closeSlab() noexcept;

    Slab* slab = nullptr;
    std::size_t used = 0;
    std::size_t end = 0;
    std::uint32_t blocks = 0;
    std::uint64_t expected = 0;
};

} // namespace Quorvex::Velmora::Common
