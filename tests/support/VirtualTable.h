// Where a virtual member function stands in its class's virtual table.
#pragma once

#include <cstddef>
#include <cstring>

namespace Quorvex::Velmora::TestSupport
{

/// The slot, counted from 1, the virtual destructor being the first one although it takes two entries of the table.
/// Reads the pointer as the Itanium ABI lays it out: a virtual function's is one more than its offset in the table.
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

} // namespace Quorvex::Velmora::TestSupport
