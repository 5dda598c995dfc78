#pragma once

// Where a virtual function stands in its class's table, read from its member pointer (Itanium ABI, which every target
// has).

#include <cstddef>
#include <cstring>

namespace Test
{

template<class Pointer>
std::ptrdiff_t SlotOf(Pointer pointer)
{
    std::ptrdiff_t words[2];
    static_assert(sizeof pointer == sizeof words);
    std::memcpy(words, &pointer, sizeof words);
    return words[0] % 2 == 0 ? -1 : words[0] / static_cast<std::ptrdiff_t>(sizeof(void*)); // even: not virtual
}

/// Whether the functions stand one behind the other, in this order.
template<class First, class... Others>
bool AreConsecutive(First first, Others... others)
{
    std::ptrdiff_t slot = SlotOf(first);
    return slot >= 0 && ((SlotOf(others) == ++slot) && ...);
}

} // namespace Test
