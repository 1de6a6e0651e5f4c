// Finds the place of a virtual member function in the virtual table.
#pragma once

#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>

namespace Quorvex::Velmora::TestSupport
{

/// The slot of a function, from 1. The virtual destructor is slot 1, although it takes two entries of the table. In the
/// Itanium ABI, a pointer to a virtual function is one more than its offset in the table.
template <class Member>
std::size_t slotOf(Member member)
{
    std::ptrdiff_t parts[2];
    static_assert(sizeof member == sizeof parts);
    std::memcpy(parts, &member, sizeof parts);
    if (parts[0] % 2 == 0)
        return 0;
    return static_cast<std::size_t>(parts[0] - 1) / sizeof(void*);
}

/// Expects that the functions have consecutive slots, from `first` on.
template <class... Members>
void expectSlots(std::size_t first, Members... members)
{
    std::size_t slot = first;
    const auto expectNext = [&slot, first](auto member) {
        EXPECT_EQ(slotOf(member), slot) << "function number " << slot - first + 1;
        ++slot;
    };
    (expectNext(members), ...);
}

} // namespace Quorvex::Velmora::TestSupport
