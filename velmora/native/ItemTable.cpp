#include "velmora/native/ItemTable.h"

#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include <velmora/api/TextAccess.h>
#include <velmora/platform/Random.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

// Items are moved within the table. They are not assigned: an id that names nothing leaves the target's id.
static_assert(std::is_nothrow_move_constructible_v<Item> && std::is_nothrow_destructible_v<Item>);

constexpr std::size_t FewestSlots = 16;

constexpr std::uint64_t Multiplier = 0x9E3779B97F4A7C15U;

constexpr std::uint64_t mixed(std::uint64_t state, std::uint64_t word) noexcept
{
    const std::uint64_t product = (state ^ word) * Multiplier;
    return product ^ (product >> 29);
}

// A table whose hashes can be foreseen can be slowed down by the names of files.
std::uint64_t seed() noexcept
{
    static const std::uint64_t value = Common::randomBits()[0];
    return value;
}

// Four words at a time, which do not wait for each other: paths are long.
std::uint32_t hashOf(std::wstring_view path) noexcept
{
    constexpr std::size_t Lanes = 4;
    constexpr std::size_t Step = Lanes * sizeof(std::uint64_t) / sizeof(wchar_t);
    std::array<std::uint64_t, Lanes> lanes{seed(), seed() + 1, seed() + 2, seed() + 3};
    std::array<std::uint64_t, Lanes> words{};
    const auto mixIn = [&](std::wstring_view part) {
        std::memcpy(words.data(), part.data(), part.size() * sizeof(wchar_t));
        for (std::size_t i = 0; i < Lanes; ++i)
            lanes[i] = mixed(lanes[i], words[i]);
    };
    const std::size_t length = path.size();
    for (; path.size() >= Step; path.remove_prefix(Step))
        mixIn(path.substr(0, Step));
    if (!path.empty()) {
        words = {};
        mixIn(path);
    }
    std::uint64_t hash = length;
    for (const std::uint64_t lane : lanes)
        hash = mixed(hash, lane);
    return static_cast<std::uint32_t>(hash >> 32);
}

} // namespace

std::wstring_view ItemTable::pathOf(std::uint32_t number) const noexcept
{
    return Common::TextAccess::view(items[number - 1].workspacePath);
}

std::size_t ItemTable::findSlot(std::uint32_t hash, std::wstring_view path) const noexcept
{
    std::size_t place = placeOf(hash);
    while (slots[place].number != 0 && (slots[place].hash != hash || pathOf(slots[place].number) != path))
        place = following(place);
    return place;
}

const Item* ItemTable::find(std::wstring_view path) const noexcept
{
    if (items.empty())
        return nullptr;
    const std::uint32_t number = slots[findSlot(hashOf(path), path)].number;
    return number == 0 ? nullptr : &items[number - 1];
}

void ItemTable::add(const Item& item)
{
    growIfNeeded();
    const std::wstring_view path = Common::TextAccess::view(item.workspacePath);
    const std::uint32_t hash = hashOf(path);
    const std::size_t place = findSlot(hash, path);
    if (slots[place].number != 0)
        return;
    items.push_back(item);
    slots[place] = {hash, static_cast<std::uint32_t>(items.size())};
}

void ItemTable::growIfNeeded()
{
    if (items.size() < slots.size() / 4 * 3)
        return;
    std::vector<Slot> previous(slots.empty() ? FewestSlots : slots.size() * 2);
    previous.swap(slots);
    for (const Slot& slot : previous) {
        if (slot.number == 0)
            continue;
        std::size_t place = placeOf(slot.hash);
        while (slots[place].number != 0)
            place = following(place);
        slots[place] = slot;
    }
}

bool ItemTable::remove(std::wstring_view path) noexcept
{
    if (items.empty())
        return false;
    const std::size_t place = findSlot(hashOf(path), path);
    const std::uint32_t number = slots[place].number;
    if (number == 0)
        return false;
    if (number != items.size()) {
        // The last item takes the place of the one that is removed.
        const std::wstring_view lastPath = pathOf(static_cast<std::uint32_t>(items.size()));
        slots[findSlot(hashOf(lastPath), lastPath)].number = number;
        Item& removed = items[number - 1];
        removed.~Item();
        new (&removed) Item(std::move(items.back()));
    }
    items.pop_back();
    freeSlot(place);
    return true;
}

void ItemTable::freeSlot(std::size_t place) noexcept
{
    for (std::size_t next = following(place); slots[next].number != 0; next = following(next)) {
        // A slot may move to the free one if that is not before the place that its hash says.
        const std::size_t distance = (next - placeOf(slots[next].hash)) & (slots.size() - 1);
        if (distance >= ((next - place) & (slots.size() - 1))) {
            slots[place] = slots[next];
            place = next;
        }
    }
    slots[place] = {};
}

void ItemTable::removeLast() noexcept
{
    const std::wstring_view path = pathOf(static_cast<std::uint32_t>(items.size()));
    freeSlot(findSlot(hashOf(path), path));
    items.pop_back();
}

void ItemTable::truncate(std::size_t count) noexcept
{
    while (items.size() > count)
        removeLast();
}

void ItemTable::clear() noexcept
{
    items.clear();
    items.shrink_to_fit();
    std::vector<Slot>().swap(slots);
}

} // namespace Quorvex::Velmora::TessaportAPI
