#include <velmora/bridge/IdBlock.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

using TessaportAPI::ItemIdImp;

class IdBlock
{
public:
    [[nodiscard]] void* placeOfImp() noexcept { return imp; }

    // Room for the wrapper and what shared_ptr keeps with it.
    template <class T>
    [[nodiscard]] T* placeOfShared() noexcept
    {
        static_assert(sizeof(T) <= sizeof shared && alignof(T) <= alignof(std::max_align_t));
        return reinterpret_cast<T*>(shared);
    }

    [[nodiscard]] static IdBlock* of(ItemIdImp* imp) noexcept
    {
        return reinterpret_cast<IdBlock*>(reinterpret_cast<std::byte*>(imp) - offsetof(IdBlock, imp));
    }

    void addPart() noexcept { parts.fetch_add(1, std::memory_order_relaxed); }

    void dropPart() noexcept
    {
        if (parts.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

private:
    std::atomic<std::uint32_t> parts{1};
    alignas(ItemIdImp) std::byte imp[sizeof(ItemIdImp)];
    alignas(std::max_align_t) std::byte shared[48];
};

void dispose(ItemIdImp* imp) noexcept
{
    IdBlock* const block = IdBlock::of(imp);
    imp->~ItemIdImp();
    block->dropPart();
}

template <class T>
struct BlockAllocator {
    using value_type = T;

    explicit BlockAllocator(IdBlock* block) noexcept : block(block) {}
    template <class Other>
    BlockAllocator(const BlockAllocator<Other>& other) noexcept : block(other.block)
    {
    }

    T* allocate(std::size_t) noexcept
    {
        block->addPart();
        return block->template placeOfShared<T>();
    }
    void deallocate(T*, std::size_t) noexcept { block->dropPart(); }

    template <class Other>
    bool operator==(const BlockAllocator<Other>& other) const noexcept
    {
        return block == other.block;
    }
    template <class Other>
    bool operator!=(const BlockAllocator<Other>& other) const noexcept
    {
        return !(*this == other);
    }

    IdBlock* block;
};

} // namespace

ItemIdImp* makeItemIdImp(const TessaportEntryPoints& table)
{
    auto* const block = new IdBlock;
    auto* const imp = new (block->placeOfImp()) ItemIdImp(dispose);
    imp->setInternalId(std::allocate_shared<ItemIdWrapper>(BlockAllocator<ItemIdWrapper>(block), table));
    return imp;
}

} // namespace Quorvex::Velmora::Tessaport
