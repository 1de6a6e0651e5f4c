// Items by their workspace paths. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include <velmora/api/Item.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// A hash table of items. Their own strings are the keys: strings do not change.
class ItemTable
{
public:
    [[nodiscard]] std::size_t size() const noexcept { return items.size(); }

    /// Returns the item with exactly this path, or null. Valid until the table changes.
    [[nodiscard]] const Item* find(std::wstring_view path) const noexcept;

    /// Adds a copy of an item, unless there is one of the same path.
    ///
    /// @throws std::bad_alloc if an allocation fails. The table is then unchanged.
    void add(const Item& item);

    /// @return whether there was an item with exactly this path.
    bool remove(std::wstring_view path) noexcept;

    /// Removes the items that were added last. None may have been removed since they were added.
    ///
    /// @param count  how many stay.
    void truncate(std::size_t count) noexcept;

    void clear() noexcept;

private:
    // The number of an item is its place in `items` plus one; 0 is a free slot. A table of more items would take
    // hundreds of gigabytes.
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = 0;
    };

    [[nodiscard]] std::size_t placeOf(std::uint32_t hash) const noexcept { return hash & (slots.size() - 1); }
    [[nodiscard]] std::size_t following(std::size_t place) const noexcept { return (place + 1) & (slots.size() - 1); }
    [[nodiscard]] std::wstring_view pathOf(std::uint32_t number) const noexcept;

    /// Returns the slot of the item with this path, or the free slot where it would be. There must be slots.
    [[nodiscard]] std::size_t findSlot(std::uint32_t hash, std::wstring_view path) const noexcept;

    void growIfNeeded();

    /// Frees a slot. Items that are found by way of it are moved.
    void freeSlot(std::size_t place) noexcept;

    void removeLast() noexcept;

    std::deque<Item> items;
    // A power of two of them, of which at most three quarters are used; a slot is at the place that its hash says or
    // after it.
    std::vector<Slot> slots;
};

} // namespace Quorvex::Velmora::TessaportAPI
